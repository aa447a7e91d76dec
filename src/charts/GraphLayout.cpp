#include "charts/GraphLayout.h"

#include <QHash>
#include <algorithm>
#include <cmath>
#include <limits>

GraphData GraphData::fromDataSource(const MultiLineGraphDataSource& source)
{
    GraphData data;
    // The count is asked again before every line, so a source may change it
    // while it is being read.
    for (int line = 0; line < source.numberOfLinesToBePlotted(); ++line) {
        LineChartDataRenderer record;
        record.lineType = source.typeOfLineToBeDrawnWithLineNumber(line);
        record.lineColor = source.colorForTheLineWithLineNumber(line);
        record.lineWidth = source.widthForTheLineWithLineNumber(line);
        record.graphName = source.nameForTheLineWithLineNumber(line);
        record.fillGraph = source.shouldFillGraphWithLineNumber(line);
        record.drawPoints = source.shouldDrawPointsWithLineNumber(line);
        record.xAxisArray = source.dataForXAxisWithLineNumber(line);
        record.yAxisArray = source.dataForYAxisWithLineNumber(line);

        data.legendArray.append({record.graphName, record.lineColor});
        if (data.xAxisArray.size() < record.xAxisArray.size())
            data.xAxisArray = record.xAxisArray;
        data.lineDataArray.append(std::move(record));
    }
    return data;
}

int GraphLayout::stepCountForYAxis(double scaleHeight, double height, double lastScale)
{
    if (scaleHeight > height)
        return static_cast<int>(std::ceil(lastScale * 5));
    return 5;
}

int GraphLayout::stepCountForXAxis(int labelCount, double widht, double viewWidth, double lastScale)
{
    if (labelCount < 6)
        return labelCount;
    for (int k = 4; k <= 7; ++k) {
        if ((labelCount - 1) % k == 0)
            return k;
    }
    if (widht > viewWidth)
        return static_cast<int>(std::ceil(lastScale * 5));
    return 5;
}

int GraphLayout::labelIntervalForXAxis(int labelCount, int stepCount)
{
    if (labelCount < 6)
        return 1;
    return labelCount / stepCount;
}

double GraphLayout::maximumScale(int labelCount)
{
    // Zooming raises the step count to ceil(scale * 5); past the label count
    // the interval c / k would drop to 0 and pile every label on the first.
    double scale = std::clamp(labelCount / 5.0, 1.0, kMaximumScale);
    while (scale > 1.0 && std::ceil(scale * 5) > labelCount)
        scale = std::nextafter(scale, 0.0);
    return scale;
}

QList<GraphLegendItem> GraphLayout::layoutLegend(const QList<LegendDataRenderer>& entries,
                                                 int legendViewType, double width,
                                                 const GraphTextMeasure& measure, double* height)
{
    QList<GraphLegendItem> items;
    if (entries.isEmpty()) {
        *height = 0;
        return items;
    }

    struct Entry {
        int index;
        QSizeF textSize;
        double width;
    };
    // Type 1 is a list, one entry per row; otherwise entries flow in centred rows.
    const bool list = legendViewType == 1;
    QList<QList<Entry>> rows;
    double rowWidth = 0;
    for (int i = 0; i < entries.size(); ++i) {
        const QSizeF textSize = measure(entries[i].legendText);
        const Entry entry{i, textSize, kLegendSwatch + 5 + textSize.width()};
        if (rows.isEmpty() || list || rowWidth + kLegendSpacing + entry.width > width) {
            rows.append(QList<Entry>());
            rowWidth = entry.width;
        } else {
            rowWidth += kLegendSpacing + entry.width;
        }
        rows.last().append(entry);
    }

    double y = kLegendPadding;
    for (const QList<Entry>& row : std::as_const(rows)) {
        double rowHeight = kLegendSwatch;
        double used = -kLegendSpacing;
        for (const Entry& entry : row) {
            rowHeight = std::max(rowHeight, entry.textSize.height());
            used += kLegendSpacing + entry.width;
        }
        double x = list ? 0 : std::max(0.0, (width - used) / 2);
        for (const Entry& entry : row) {
            GraphLegendItem item;
            item.text = entries[entry.index].legendText;
            item.color = entries[entry.index].legendColor;
            item.swatch =
                QRectF(x, y + (rowHeight - kLegendSwatch) / 2, kLegendSwatch, kLegendSwatch);
            item.textFrame = QRectF(
                QPointF(x + kLegendSwatch + 5, y + (rowHeight - entry.textSize.height()) / 2),
                entry.textSize);
            items.append(item);
            x += entry.width + kLegendSpacing;
        }
        y += rowHeight + kLegendRowGap;
    }
    *height = y - kLegendRowGap + kLegendPadding;
    return items;
}

QRectF GraphLayout::markerFrame(QPointF anchor, QSizeF size, const QRectF& bounds)
{
    constexpr double gap = 8;
    double x = anchor.x() - size.width() / 2;
    double y = anchor.y() - gap - size.height();
    if (y < bounds.top())
        y = anchor.y() + gap;
    x = std::max(bounds.left(), std::min(x, bounds.right() - size.width()));
    y = std::max(bounds.top(), std::min(y, bounds.bottom() - size.height()));
    return QRectF(QPointF(x, y), size);
}

GraphLayout GraphLayout::compute(const GraphData& data, const GraphLayoutInput& input)
{
    const GraphTextMeasure measure =
        input.measureText ? input.measureText : [](const QString&) { return QSizeF(); };
    GraphLayout l;
    const double viewWidth = input.viewSize.width();
    const double viewHeight = input.viewSize.height();
    l.viewSize = input.viewSize;
    l.lastScale = input.lastScale;
    l.widht = viewWidth * input.lastScale;
    l.height = viewHeight - 20;

    if (input.showLegend) {
        l.legendItems = layoutLegend(data.legendArray, input.legendViewType, viewWidth - 30,
                                     measure, &l.legendHeight);
        l.height = viewHeight - l.legendHeight - 20;
        l.legendFrame = QRectF(15, 10 + l.height, viewWidth - 30, l.legendHeight);
        for (GraphLegendItem& item : l.legendItems) {
            item.swatch.translate(l.legendFrame.topLeft());
            item.textFrame.translate(l.legendFrame.topLeft());
        }
    }
    l.scaleHeight = input.scaleHeight.value_or(l.height);
    l.graphScrollFrame = QRectF(0, 10, viewWidth, l.height);

    // Vertical axis: always spans 0; values compare in single precision.
    for (const LineChartDataRenderer& line : data.lineDataArray) {
        for (const std::optional<double>& value : line.yAxisArray) {
            if (!value)
                continue;
            const auto v = static_cast<float>(*value);
            if (v > l.maxY)
                l.maxY = v;
            if (v < l.minY)
                l.minY = v;
        }
    }
    l.rangeY = l.maxY - l.minY;
    l.yStepCount = stepCountForYAxis(l.scaleHeight, l.height, l.lastScale);
    l.stepY = static_cast<float>((l.height - 60) / l.rangeY);
    const float part = l.rangeY / static_cast<float>(l.yStepCount);
    for (int i = 0; i <= l.yStepCount; ++i) {
        GraphYTick tick;
        tick.value = double(l.minY) + i * (double(l.rangeY) / l.yStepCount);
        tick.text = QString::number(tick.value, 'f', 1);
        const float offset = static_cast<float>(i) * part * l.stepY;
        tick.y = l.height - (std::trunc(double(offset)) + kMargin);
        tick.line = QLineF(kMargin, tick.y, l.widht - kMargin, tick.y);
        tick.drawLine = input.drawGridY || i == 0 || i == l.yStepCount;
        const QSizeF size = measure(tick.text);
        tick.labelFrame = QRectF(QPointF(5, tick.y - size.height() / 2), size);
        l.yTicks.append(tick);
    }

    // Horizontal axis.
    const int c = static_cast<int>(data.xAxisArray.size());
    l.labelCount = c;
    l.xStepCount = stepCountForXAxis(c, l.widht, viewWidth, l.lastScale);
    l.labelInterval = labelIntervalForXAxis(c, l.xStepCount);
    l.stepX = static_cast<float>((l.widht - 60) / (c - 1));
    for (int i = 0; i <= l.xStepCount; ++i) {
        GraphXTick tick;
        const float offset = static_cast<float>(i * l.labelInterval) * l.stepX;
        tick.x = std::trunc(double(offset));
        if (tick.x > l.widht - 60)
            tick.x = l.widht - 60;
        tick.labelIndex = std::min(i * l.labelInterval, c - 1);
        if (tick.labelIndex >= 0)
            tick.text = data.xAxisArray[tick.labelIndex];
        tick.line = QLineF(tick.x + kMargin, kMargin, tick.x + kMargin, l.height - kMargin);
        tick.drawLine = input.drawGridX || i == 0 || i == l.xStepCount;
        const QSizeF size = measure(tick.text);
        tick.labelFrame =
            QRectF(QPointF(tick.x + size.width() / 2, l.height - (size.height() + 10)), size);
        l.xTicks.append(tick);
    }

    // Series: x from the label's place on the axis, y from the bottom grid
    // line by the value's distance from the axis minimum, both in single
    // precision. Every point thus lies at the height of its value on the
    // axis labels, negative series included (plotting from the bottom line
    // as if the axis started at 0 would put negative values below it).
    QHash<QString, int> labelIndex;
    for (int i = c - 1; i >= 0; --i)
        labelIndex.insert(data.xAxisArray[i], i);
    for (const LineChartDataRenderer& line : data.lineDataArray) {
        QList<GraphPoint> linePoints;
        const auto count = std::min(line.yAxisArray.size(), line.xAxisArray.size());
        for (int i = 0; i < count; ++i) {
            const std::optional<double>& value = line.yAxisArray[i];
            const auto found = labelIndex.constFind(line.xAxisArray[i]);
            if (!value || found == labelIndex.constEnd())
                continue;
            GraphPoint p;
            p.valueIndex = i;
            p.labelIndex = *found;
            p.value = *value;
            const float x = l.stepX * static_cast<float>(p.labelIndex);
            const float y = (static_cast<float>(*value) - l.minY) * l.stepY;
            p.position = QPointF(std::trunc(double(x)) + kMargin,
                                 l.height - (std::trunc(double(y)) + kMargin));
            linePoints.append(p);
        }
        l.points.append(linePoints);
    }
    return l;
}

std::optional<GraphPointRef> GraphLayout::nearestPoint(double plotX) const
{
    std::optional<GraphPointRef> best;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (int line = 0; line < points.size(); ++line) {
        for (const GraphPoint& p : points[line]) {
            if (!std::isfinite(p.position.x()) || !std::isfinite(p.position.y()))
                continue;
            const double distance = std::abs(p.position.x() - plotX);
            if (distance < bestDistance) {
                bestDistance = distance;
                best = GraphPointRef{line, p.valueIndex};
            }
        }
    }
    return best;
}

const GraphPoint* GraphLayout::point(GraphPointRef ref) const
{
    if (ref.line < 0 || ref.line >= points.size())
        return nullptr;
    for (const GraphPoint& p : points[ref.line]) {
        if (p.valueIndex == ref.valueIndex)
            return &p;
    }
    return nullptr;
}

double GraphLayout::maximumContentX() const
{
    return std::max(0.0, widht - viewSize.width());
}
