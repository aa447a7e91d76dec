#pragma once

#include "charts/MultiLineGraphDataSource.h"

#include <QLineF>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

// One series as the data source describes it.
struct LineChartDataRenderer {
    int lineType = 2;
    Rgba lineColor;
    double lineWidth = 1.0;
    QString graphName;
    bool fillGraph = false;
    bool drawPoints = false;
    QStringList xAxisArray;
    QList<std::optional<double>> yAxisArray;
};

// One legend entry: a series' name and colour.
struct LegendDataRenderer {
    QString legendText;
    Rgba legendColor;
};

// A snapshot of everything the chart reads from its data source. The plot's
// x labels are those of the line with the most labels (the first one on ties).
struct GraphData {
    QStringList xAxisArray;
    QList<LineChartDataRenderer> lineDataArray;
    QList<LegendDataRenderer> legendArray;

    static GraphData fromDataSource(const MultiLineGraphDataSource& source);
    bool isEmpty() const { return lineDataArray.isEmpty(); }
};

// Measures the size a text needs in the chart's font.
using GraphTextMeasure = std::function<QSizeF(const QString&)>;

struct GraphLayoutInput {
    QSizeF viewSize;
    // Zoom factor; the plot is viewSize.width() * lastScale wide.
    double lastScale = 1.0;
    bool showLegend = true;
    int legendViewType = 0;
    bool drawGridY = true;
    bool drawGridX = true;
    // The zoomed plot height; unset when the chart is not zoomed vertically.
    std::optional<double> scaleHeight;
    GraphTextMeasure measureText;
};

// A horizontal grid line with its value label (plot coordinates).
struct GraphYTick {
    double value = 0;
    QString text;
    double y = 0;
    QLineF line;
    bool drawLine = false;
    QRectF labelFrame;
};

// A vertical grid line with its x label (plot coordinates). `x` is the offset
// from the left grid line; `labelIndex` indexes the plot's x labels.
struct GraphXTick {
    int labelIndex = 0;
    double x = 0;
    QString text;
    QLineF line;
    bool drawLine = false;
    QRectF labelFrame;
};

// A plotted value: its index among the line's values, the index of its x
// label among the plot's labels, and its position (plot coordinates, possibly
// not finite when the value range is empty).
struct GraphPoint {
    int valueIndex = 0;
    int labelIndex = 0;
    double value = 0;
    QPointF position;
};

struct GraphPointRef {
    int line = 0;
    int valueIndex = 0;
    friend bool operator==(const GraphPointRef&, const GraphPointRef&) = default;
};

struct GraphLegendItem {
    QString text;
    Rgba color;
    QRectF swatch;    // view coordinates
    QRectF textFrame; // view coordinates
};

// Where everything goes, computed without painting. Plot coordinates have
// their origin at the plot's top-left corner; the plot sits in a horizontally
// scrolling frame (graphScrollFrame, view coordinates) and is `widht` wide.
class GraphLayout {
public:
    static constexpr double kMargin = 30;        // plot edge to the outer grid lines
    static constexpr double kLegendSwatch = 10;  // side of a legend colour square
    static constexpr double kLegendPadding = 5;  // above and below the legend rows
    static constexpr double kLegendSpacing = 15; // between entries on one row
    static constexpr double kLegendRowGap = 4;   // between legend rows
    static constexpr double kMaximumScale = 8;

    static GraphLayout compute(const GraphData& data, const GraphLayoutInput& input);

    // Horizontal lines: 5 steps, or ceil(lastScale * 5) while zoomed vertically.
    static int stepCountForYAxis(double scaleHeight, double height, double lastScale);
    // Vertical lines for c labels: the first of 4..7 dividing c - 1, else 5
    // (ceil(lastScale * 5) while zoomed); c itself below 6 labels.
    static int stepCountForXAxis(int labelCount, double widht, double viewWidth, double lastScale);
    // Labels between two vertical lines: c / k, or 1 below 6 labels.
    static int labelIntervalForXAxis(int labelCount, int stepCount);
    // The largest zoom that still puts at least one label between two lines.
    static double maximumScale(int labelCount);

    // Legend entries laid out in a frame of the given width starting at the
    // origin; returns the items and stores the needed height.
    static QList<GraphLegendItem> layoutLegend(const QList<LegendDataRenderer>& entries,
                                               int legendViewType, double width,
                                               const GraphTextMeasure& measure, double* height);

    // A box of the given size above the anchor, centred on it, kept inside
    // bounds (below the anchor when there is no room above).
    static QRectF markerFrame(QPointF anchor, QSizeF size, const QRectF& bounds);

    // The plotted point nearest to plotX horizontally; only points with a
    // finite position count, and the earlier line wins ties.
    std::optional<GraphPointRef> nearestPoint(double plotX) const;
    const GraphPoint* point(GraphPointRef ref) const;

    QPointF plotToView(QPointF plotPoint, double contentX) const
    {
        return plotPoint + graphScrollFrame.topLeft() - QPointF(contentX, 0);
    }
    double maximumContentX() const;

    QSizeF viewSize;
    double lastScale = 1.0;
    double widht = 0;  // plot width
    double height = 0; // plot height
    double scaleHeight = 0;
    QRectF graphScrollFrame;

    float minY = 0;
    float maxY = 0;
    float rangeY = 0;
    int yStepCount = 5;
    float stepY = 0;
    QList<GraphYTick> yTicks;

    int labelCount = 0;
    int xStepCount = 0;
    int labelInterval = 1;
    float stepX = 0;
    QList<GraphXTick> xTicks;

    // One entry per line of the data, in the same order.
    QList<QList<GraphPoint>> points;

    double legendHeight = 0;
    QRectF legendFrame;
    QList<GraphLegendItem> legendItems;
};
