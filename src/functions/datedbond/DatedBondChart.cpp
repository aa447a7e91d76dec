#include "DatedBondChart.h"

#include "DatedBondModel.h"
#include "store/QVReport.h"

#include <algorithm>
#include <cmath>

DatedBondChart::DatedBondChart(DatedBondModel* model, QObject* parent)
    : QObject(parent), m_model(model)
{}

QList<double> DatedBondChart::yields() const
{
    const double yield = m_model ? m_model->yield : 0;
    const bool known = std::isfinite(yield);
    const double top = known ? std::min(2 * std::max(yield, 10.0), maximumYield) : 20.0;
    const double bottom = known ? std::min(yield, 0.0) : 0.0;
    QList<double> yields;
    for (int k = 0; k <= steps; ++k)
        yields << bottom + (top - bottom) * k / steps;
    return yields;
}

Rgba DatedBondChart::colorForTheLineWithLineNumber(int) const
{
    return QVReport::colorFromHexString(QStringLiteral("#2E86AB"));
}

QString DatedBondChart::nameForTheLineWithLineNumber(int) const
{
    return QStringLiteral("Clean price");
}

QStringList DatedBondChart::dataForXAxisWithLineNumber(int) const
{
    QStringList labels;
    for (double yield : yields())
        labels << DatedBondModel::stringFromDouble(yield) + QLatin1Char('%');
    return labels;
}

QList<std::optional<double>> DatedBondChart::dataForYAxisWithLineNumber(int) const
{
    QList<std::optional<double>> values;
    if (!m_model || !m_model->bondProblem().isEmpty())
        return values;
    const BondMath::Bond bond = m_model->bond();
    for (double yield : yields()) {
        const double price = BondMath::price(bond, yield / 100);
        values << (std::isfinite(price) ? std::optional<double>(price) : std::nullopt);
    }
    return values;
}

MultiLineGraphMarker
DatedBondChart::customViewForLineChartTouchWithXValueAndYValue(const QString& x, double y) const
{
    return {QStringLiteral("Price at %1: %2").arg(x, DatedBondModel::stringFromDouble(y)),
            QSizeF(150, 30)};
}
