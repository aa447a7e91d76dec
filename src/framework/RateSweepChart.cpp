#include "RateSweepChart.h"

#include "QVFunctionModel.h"
#include "store/QVReport.h"

#include <algorithm>
#include <cmath>

RateSweepChart::RateSweepChart(Line line, std::function<double()> ownRate,
                               std::function<double(double)> valueAt, std::function<bool()> drawn,
                               QObject* parent)
    : QObject(parent), m_line(std::move(line)), m_ownRate(std::move(ownRate)),
      m_valueAt(std::move(valueAt)), m_drawn(std::move(drawn))
{}

QList<double> RateSweepChart::rates() const
{
    const double rate = m_ownRate();
    const bool known = std::isfinite(rate);
    const double top = known ? std::min(2 * std::max(rate, 10.0), maximumRate) : 2 * 10.0;
    const double bottom = known && m_line.fromOwnRateBelowZero ? std::min(rate, 0.0) : 0.0;
    QList<double> rates;
    for (int k = 0; k <= steps; ++k)
        rates << bottom + (top - bottom) * k / steps;
    return rates;
}

Rgba RateSweepChart::colorForTheLineWithLineNumber(int) const
{
    return QVReport::colorFromHexString(m_line.color);
}

QString RateSweepChart::nameForTheLineWithLineNumber(int) const
{
    return m_line.name;
}

QStringList RateSweepChart::dataForXAxisWithLineNumber(int) const
{
    QStringList labels;
    for (double rate : rates())
        labels << QVFunctionModel::stringFromDouble(rate) + QLatin1Char('%');
    return labels;
}

QList<std::optional<double>> RateSweepChart::dataForYAxisWithLineNumber(int) const
{
    QList<std::optional<double>> values;
    if (!m_drawn())
        return values;
    for (double rate : rates()) {
        const double value = m_valueAt(rate);
        values << (std::isfinite(value) ? std::optional<double>(value) : std::nullopt);
    }
    return values;
}

MultiLineGraphMarker
RateSweepChart::customViewForLineChartTouchWithXValueAndYValue(const QString& x, double y) const
{
    return {m_line.marker.arg(x, QVFunctionModel::stringFromDouble(y)), QSizeF(150, 30)};
}
