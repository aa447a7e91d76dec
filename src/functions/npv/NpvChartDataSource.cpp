#include "NpvChartDataSource.h"

#include "NpvModel.h"
#include "store/QVReport.h"

#include <algorithm>
#include <cmath>

NpvChartDataSource::NpvChartDataSource(NpvModel* model, QObject* parent)
    : QObject(parent), m_model(model)
{}

QList<double> NpvChartDataSource::rates() const
{
    const double rate = m_model ? m_model->discountRate : 0;
    const double top =
        std::isfinite(rate) ? std::min(2 * std::max(rate, 10.0), maximumRate) : 2 * 10.0;
    QList<double> rates;
    for (int k = 0; k <= steps; ++k)
        rates << top * k / steps;
    return rates;
}

Rgba NpvChartDataSource::colorForTheLineWithLineNumber(int) const
{
    return QVReport::colorFromHexString(QStringLiteral("#DB3340"));
}

QString NpvChartDataSource::nameForTheLineWithLineNumber(int) const
{
    return QStringLiteral("NPV");
}

QStringList NpvChartDataSource::dataForXAxisWithLineNumber(int) const
{
    QStringList labels;
    for (double rate : rates())
        labels << NpvModel::stringFromDouble(rate) + QLatin1Char('%');
    return labels;
}

QList<std::optional<double>> NpvChartDataSource::dataForYAxisWithLineNumber(int) const
{
    QList<std::optional<double>> values;
    if (!m_model)
        return values;
    for (double rate : rates()) {
        const double npv = m_model->calculateNpvWithCashFlowsAndRate(m_model->cashArray, rate);
        values << (std::isfinite(npv) ? std::optional<double>(npv) : std::nullopt);
    }
    return values;
}

MultiLineGraphMarker
NpvChartDataSource::customViewForLineChartTouchWithXValueAndYValue(const QString& x, double y) const
{
    return {QStringLiteral("NPV at %1: %2").arg(x, NpvModel::stringFromDouble(y)), QSizeF(150, 30)};
}
