#include "charts/ScatterChart.h"

#include "numerics/NumberFormat.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace {

constexpr int maximumTicks = 20;
constexpr qreal pointRadius = 3.0;

struct Range {
    double low = 0;
    double high = 0;
};

// The smallest and largest of `values` (finite ones), widened a little so
// that no point sits on the frame, and to a span around a single value.
Range rangeOf(const QList<double>& values)
{
    Range range{values.first(), values.first()};
    for (double v : values) {
        range.low = std::min(range.low, v);
        range.high = std::max(range.high, v);
    }
    const double span = range.high - range.low;
    const double pad = span > 0 ? span * 0.05 : std::max(std::abs(range.low) * 0.1, 1.0);
    return {range.low - pad, range.high + pad};
}

} // namespace

ScatterChart::ScatterChart(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void ScatterChart::setSource(QObject* source)
{
    if (source == m_source)
        return;
    m_source = source;
    emit sourceChanged();
    reload();
}

void ScatterChart::setRevision(int revision)
{
    m_revision = revision;
    reload();
}

void ScatterChart::reload()
{
    const auto* source = qobject_cast<ScatterChartSource*>(m_source.data());
    m_data = source ? source->scatterData() : ScatterData();
    emit revisionChanged();
    update();
}

void ScatterChart::setPointColor(const QColor& color)
{
    m_pointColor = color;
    emit styleChanged();
    update();
}

void ScatterChart::setCurveColor(const QColor& color)
{
    m_curveColor = color;
    emit styleChanged();
    update();
}

void ScatterChart::setGridLineColor(const QColor& color)
{
    m_gridColor = color;
    emit styleChanged();
    update();
}

void ScatterChart::setTextColor(const QColor& color)
{
    m_textColor = color;
    emit styleChanged();
    update();
}

void ScatterChart::setTextFontSize(qreal size)
{
    m_textFontSize = size;
    emit styleChanged();
    update();
}

QList<double> ScatterChart::ticks(double low, double high, int wanted)
{
    QList<double> values;
    if (!(high > low) || !std::isfinite(high - low) || wanted < 1)
        return values;
    const double rough = (high - low) / wanted;
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    double step = power;
    for (double factor : {1.0, 2.0, 5.0, 10.0}) {
        step = factor * power;
        if (step >= rough)
            break;
    }
    const double first = std::ceil(low / step) * step;
    for (int k = 0; k < maximumTicks; ++k) {
        const double tick = first + k * step;
        if (tick > high + step * 1e-9)
            break;
        // -0 and 1e-17 for a tick at zero are written 0.
        values << (std::abs(tick) < step * 1e-9 ? 0.0 : tick);
    }
    return values;
}

void ScatterChart::paint(QPainter* painter)
{
    if (m_data.points.isEmpty())
        return;
    QList<double> xs;
    QList<double> ys;
    for (const QList<QPointF>* list : {&m_data.points, &m_data.curve}) {
        for (const QPointF& p : *list) {
            xs << p.x();
            ys << p.y();
        }
    }
    const Range xRange = rangeOf(xs);
    const Range yRange = rangeOf(ys);
    const QList<double> xTicks = ticks(xRange.low, xRange.high, 4);
    const QList<double> yTicks = ticks(yRange.low, yRange.high, 4);

    QFont font = painter->font();
    font.setPixelSize(int(m_textFontSize));
    painter->setFont(font);
    const QFontMetricsF metrics(font);
    const auto label = [](double v) { return NumberFormat::stringFromDouble(v); };
    qreal labelWidth = 0;
    for (double t : yTicks)
        labelWidth = std::max(labelWidth, metrics.horizontalAdvance(label(t)));
    const QRectF plot(labelWidth + 8, metrics.height() / 2, width() - labelWidth - 16,
                      height() - metrics.height() * 2 - 4);
    if (plot.width() < 10 || plot.height() < 10)
        return;
    const auto at = [&](double x, double y) {
        return QPointF(plot.left() + (x - xRange.low) / (xRange.high - xRange.low) * plot.width(),
                       plot.bottom() -
                           (y - yRange.low) / (yRange.high - yRange.low) * plot.height());
    };

    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(m_gridColor, 1));
    painter->drawRect(plot);
    for (double t : xTicks) {
        const qreal x = at(t, 0).x();
        painter->setPen(QPen(m_gridColor, 0.5));
        painter->drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom()));
        painter->setPen(m_textColor);
        const QString text = label(t);
        const qreal w = metrics.horizontalAdvance(text);
        painter->drawText(
            QPointF(std::clamp(x - w / 2, 0.0, width() - w), plot.bottom() + metrics.ascent() + 4),
            text);
    }
    for (double t : yTicks) {
        const qreal y = at(0, t).y();
        painter->setPen(QPen(m_gridColor, 0.5));
        painter->drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        painter->setPen(m_textColor);
        const QString text = label(t);
        painter->drawText(QPointF(plot.left() - 6 - metrics.horizontalAdvance(text),
                                  y + metrics.ascent() / 2 - 1),
                          text);
    }

    painter->save();
    painter->setClipRect(plot);
    if (m_data.curve.size() > 1) {
        QPainterPath path(at(m_data.curve.first().x(), m_data.curve.first().y()));
        for (const QPointF& p : m_data.curve)
            path.lineTo(at(p.x(), p.y()));
        painter->setPen(QPen(m_curveColor, 2));
        painter->setBrush(Qt::NoBrush);
        painter->drawPath(path);
    }
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_pointColor);
    for (const QPointF& p : m_data.points)
        painter->drawEllipse(at(p.x(), p.y()), pointRadius, pointRadius);
    painter->restore();
}
