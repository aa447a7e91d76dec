#pragma once

#include "charts/GraphLayout.h"
#include "charts/MultiLineGraphDataSource.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QSize>
#include <optional>

class QPainter;

// The models' colour as QPainter takes it (no colour: an invalid QColor).
inline QColor toQColor(const Rgba& c)
{
    return c.isValid() ? QColor(c.red(), c.green(), c.blue(), c.alpha()) : QColor();
}

// How the chart looks. Text uses textFont's family at textFontSize pixels.
struct GraphStyle {
    bool drawGridY = true;
    bool drawGridX = true;
    QColor gridLineColor = QColor(170, 170, 170);
    double gridLineWidth = 0.3;
    double textFontSize = 11.0;
    QColor textColor = Qt::black;
    QFont textFont;
    QColor markerColor = QColor(255, 128, 0);
    QColor markerTextColor = Qt::white;
    double markerWidth = 0.4;
    bool showLegend = true;
    int legendViewType = 0;
    bool showMarker = true;
    bool showCustomMarkerView = false;

    QFont font() const;
    GraphTextMeasure textMeasure() const;
};

// What changes from frame to frame: the horizontal scroll offset, how much
// of each line is drawn (0 to 1) and the touched point.
struct GraphPaintState {
    double contentX = 0;
    double drawnFraction = 1;
    std::optional<GraphPointRef> selection;
};

// Paints a multi-line chart with QPainter: grid lines and axis labels,
// straight-line series with point marks and optional fill, the legend under
// the plot and the marker of a touched point.
class MultiLineGraphRenderer {
public:
    static GraphLayout layout(const GraphData& data, const GraphStyle& style, QSizeF viewSize,
                              double lastScale = 1.0);

    // The box shown at a touched point: the delegate's when the style asks
    // for a custom marker and there is a delegate, else the value itself.
    static MultiLineGraphMarker marker(const GraphData& data, const GraphLayout& layout,
                                       GraphPointRef ref, const GraphStyle& style,
                                       const MultiLineGraphDelegate* delegate);

    // Paints in view coordinates onto whatever the painter is open on.
    static void paint(QPainter& painter, const GraphData& data, const GraphLayout& layout,
                      const GraphStyle& style, const MultiLineGraphDelegate* delegate,
                      const GraphPaintState& state = {});

    // An opaque image (white background) of layout.viewSize points at the
    // given device pixel ratio.
    static QImage renderImage(const GraphData& data, const GraphLayout& layout,
                              const GraphStyle& style, const MultiLineGraphDelegate* delegate,
                              qreal devicePixelRatio = 1.0, const GraphPaintState& state = {});

    // Reads the data source and renders the whole chart, fully drawn and not
    // zoomed, into an image of size points.
    static QImage renderImage(const MultiLineGraphDataSource& source,
                              const MultiLineGraphDelegate* delegate, QSize size,
                              qreal devicePixelRatio = 1.0, const GraphStyle& style = {});
};
