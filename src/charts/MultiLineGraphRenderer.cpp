#include "charts/MultiLineGraphRenderer.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <cmath>

namespace {

bool isFinite(QPointF p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y());
}

bool isFinite(const QRectF& r)
{
    return isFinite(r.topLeft()) && isFinite(r.bottomRight());
}

constexpr int kTextFlags = Qt::AlignCenter | Qt::TextDontClip;

// The leading part of a polyline covering `fraction` of its length, and how
// many of its vertices that part reaches.
QPolygonF leadingPart(const QPolygonF& line, double fraction, int* reachedVertices)
{
    if (fraction <= 0) {
        *reachedVertices = 0;
        return {};
    }
    if (fraction >= 1 || line.size() < 2) {
        *reachedVertices = int(line.size());
        return line;
    }
    double total = 0;
    for (qsizetype i = 1; i < line.size(); ++i)
        total += QLineF(line[i - 1], line[i]).length();
    double left = fraction * total;
    QPolygonF part{line.first()};
    *reachedVertices = 1;
    for (qsizetype i = 1; i < line.size() && left > 0; ++i) {
        const QLineF segment(line[i - 1], line[i]);
        if (segment.length() <= left) {
            part.append(line[i]);
            ++*reachedVertices;
            left -= segment.length();
        } else {
            part.append(segment.pointAt(left / segment.length()));
            left = 0;
        }
    }
    return part;
}

void drawGridLine(QPainter& painter, const QLineF& line, bool draw, const QString& text,
                  const QRectF& textFrame, const GraphStyle& style)
{
    if (draw && isFinite(line.p1()) && isFinite(line.p2())) {
        painter.setPen(QPen(style.gridLineColor, style.gridLineWidth));
        painter.drawLine(line);
    }
    if (isFinite(textFrame)) {
        painter.setPen(style.textColor);
        painter.drawText(textFrame, kTextFlags, text);
    }
}

void drawLine(QPainter& painter, const LineChartDataRenderer& line, const QList<GraphPoint>& points,
              const GraphLayout& layout, double fraction)
{
    QPolygonF polyline;
    for (const GraphPoint& p : points) {
        if (isFinite(p.position))
            polyline.append(p.position);
    }
    if (polyline.isEmpty())
        return;

    int reached = 0;
    const QPolygonF shown = leadingPart(polyline, fraction, &reached);
    if (shown.isEmpty())
        return;

    if (line.fillGraph && shown.size() > 1) {
        const double bottom = layout.height - GraphLayout::kMargin;
        QPolygonF area = shown;
        area.append(QPointF(shown.last().x(), bottom));
        area.append(QPointF(shown.first().x(), bottom));
        QColor top = toQColor(line.lineColor);
        top.setAlphaF(0.35f);
        QColor base = toQColor(line.lineColor);
        base.setAlphaF(0.05f);
        QLinearGradient shade(0, area.boundingRect().top(), 0, bottom);
        shade.setColorAt(0, top);
        shade.setColorAt(1, base);
        painter.setPen(Qt::NoPen);
        painter.setBrush(shade);
        painter.drawPolygon(area);
    }

    QPen pen(toQColor(line.lineColor), line.lineWidth);
    pen.setJoinStyle(Qt::RoundJoin);
    pen.setCapStyle(Qt::RoundCap);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(shown);

    if (line.drawPoints) {
        const double radius = std::max(2.5, line.lineWidth * 1.5);
        painter.setPen(Qt::NoPen);
        painter.setBrush(toQColor(line.lineColor));
        for (int i = 0; i < reached; ++i)
            painter.drawEllipse(polyline[i], radius, radius);
    }
}

void drawLegend(QPainter& painter, const GraphLayout& layout, const GraphStyle& style)
{
    for (const GraphLegendItem& item : layout.legendItems) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(toQColor(item.color));
        painter.drawRoundedRect(item.swatch, 2, 2);
        painter.setPen(style.textColor);
        painter.setBrush(Qt::NoBrush);
        painter.drawText(item.textFrame, kTextFlags, item.text);
    }
}

void drawShadow(QPainter& painter, const QRectF& box, double radius)
{
    // A soft black shadow, 0.3 opaque at the edge, fading out over 2 points.
    painter.setPen(Qt::NoPen);
    for (int i = 2; i >= 1; --i) {
        QColor shade(0, 0, 0);
        shade.setAlphaF(0.3f / float(i + 1));
        painter.setBrush(shade);
        painter.drawRoundedRect(box.adjusted(-i, -i + 1, i, i + 1), radius + i, radius + i);
    }
}

void drawMarker(QPainter& painter, const GraphData& data, const GraphLayout& layout,
                const GraphStyle& style, const MultiLineGraphDelegate* delegate,
                const GraphPaintState& state)
{
    if (!state.selection)
        return;
    const GraphPoint* point = layout.point(*state.selection);
    if (!point || !isFinite(point->position))
        return;
    const QRectF frame = layout.graphScrollFrame;
    const QPointF anchor = layout.plotToView(point->position, state.contentX);
    if (anchor.x() < frame.left() || anchor.x() > frame.right())
        return;

    painter.save();
    painter.setClipRect(frame);
    QPen pen(style.markerColor, style.markerWidth);
    painter.setPen(pen);
    const double top = layout.plotToView(QPointF(0, GraphLayout::kMargin), 0).y();
    const double bottom =
        layout.plotToView(QPointF(0, layout.height - GraphLayout::kMargin), 0).y();
    painter.drawLine(QPointF(anchor.x(), top), QPointF(anchor.x(), bottom));
    pen.setWidthF(1.5);
    painter.setPen(pen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(anchor, 4, 4);

    const MultiLineGraphMarker marker =
        MultiLineGraphRenderer::marker(data, layout, *state.selection, style, delegate);
    const QRectF box = GraphLayout::markerFrame(anchor, marker.size, frame);
    if (style.showCustomMarkerView && delegate) {
        drawShadow(painter, box, 4);
        painter.setPen(QPen(QColor(170, 170, 170), 1));
        painter.setBrush(Qt::white);
        painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
        QFont font = style.textFont;
        font.setPixelSize(12);
        painter.setFont(font);
        painter.setPen(Qt::black);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(style.markerColor);
        painter.drawRoundedRect(box, 4, 4);
        painter.setFont(style.font());
        painter.setPen(style.markerTextColor);
    }
    painter.drawText(box, kTextFlags, marker.text);
    painter.restore();
}

} // namespace

QFont GraphStyle::font() const
{
    QFont f = textFont;
    f.setPixelSize(std::max(1, int(std::lround(textFontSize))));
    return f;
}

GraphTextMeasure GraphStyle::textMeasure() const
{
    const QFontMetricsF metrics(font());
    return [metrics](const QString& text) {
        return QSizeF(std::ceil(metrics.horizontalAdvance(text)), std::ceil(metrics.height()));
    };
}

GraphLayout MultiLineGraphRenderer::layout(const GraphData& data, const GraphStyle& style,
                                           QSizeF viewSize, double lastScale)
{
    GraphLayoutInput input;
    input.viewSize = viewSize;
    input.lastScale = lastScale;
    input.showLegend = style.showLegend;
    input.legendViewType = style.legendViewType;
    input.drawGridX = style.drawGridX;
    input.drawGridY = style.drawGridY;
    input.measureText = style.textMeasure();
    return GraphLayout::compute(data, input);
}

MultiLineGraphMarker MultiLineGraphRenderer::marker(const GraphData& data,
                                                    const GraphLayout& layout, GraphPointRef ref,
                                                    const GraphStyle& style,
                                                    const MultiLineGraphDelegate* delegate)
{
    const GraphPoint* point = layout.point(ref);
    if (!point || ref.line >= data.lineDataArray.size())
        return {};
    if (style.showCustomMarkerView && delegate) {
        const QString x = data.lineDataArray[ref.line].xAxisArray.value(point->valueIndex);
        return delegate->customViewForLineChartTouchWithXValueAndYValue(x, point->value);
    }
    MultiLineGraphMarker marker;
    marker.text = QString::number(point->value, 'f', 2);
    const QSizeF text = style.textMeasure()(marker.text);
    marker.size = QSizeF(text.width() + 12, text.height() + 6);
    return marker;
}

void MultiLineGraphRenderer::paint(QPainter& painter, const GraphData& data,
                                   const GraphLayout& layout, const GraphStyle& style,
                                   const MultiLineGraphDelegate* delegate,
                                   const GraphPaintState& state)
{
    if (data.isEmpty())
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setFont(style.font());

    painter.save();
    painter.setClipRect(layout.graphScrollFrame);
    painter.translate(layout.plotToView(QPointF(0, 0), state.contentX));
    for (const GraphYTick& tick : layout.yTicks)
        drawGridLine(painter, tick.line, tick.drawLine, tick.text, tick.labelFrame, style);
    for (const GraphXTick& tick : layout.xTicks)
        drawGridLine(painter, tick.line, tick.drawLine, tick.text, tick.labelFrame, style);
    for (int line = 0; line < data.lineDataArray.size() && line < layout.points.size(); ++line)
        drawLine(painter, data.lineDataArray[line], layout.points[line], layout,
                 state.drawnFraction);
    painter.restore();

    if (style.showMarker)
        drawMarker(painter, data, layout, style, delegate, state);
    if (style.showLegend)
        drawLegend(painter, layout, style);
    painter.restore();
}

QImage MultiLineGraphRenderer::renderImage(const GraphData& data, const GraphLayout& layout,
                                           const GraphStyle& style,
                                           const MultiLineGraphDelegate* delegate,
                                           qreal devicePixelRatio, const GraphPaintState& state)
{
    const QSize pixels = (layout.viewSize * devicePixelRatio).toSize();
    if (pixels.isEmpty())
        return {};
    QImage image(pixels, QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::white);
    QPainter painter(&image);
    paint(painter, data, layout, style, delegate, state);
    return image;
}

QImage MultiLineGraphRenderer::renderImage(const MultiLineGraphDataSource& source,
                                           const MultiLineGraphDelegate* delegate, QSize size,
                                           qreal devicePixelRatio, const GraphStyle& style)
{
    const GraphData data = GraphData::fromDataSource(source);
    return renderImage(data, layout(data, style, QSizeF(size)), style, delegate, devicePixelRatio);
}
