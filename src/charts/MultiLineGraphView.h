#pragma once

#include "charts/GraphLayout.h"
#include "charts/MultiLineGraphRenderer.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPointer>
#include <QQuickPaintedItem>
#include <optional>

class QVariantAnimation;

// A line chart item. It reads everything from `dataSource` (a QObject that
// implements MultiLineGraphDataSource) when drawGraph() or reloadGraph() is
// called, and asks `delegate` (a MultiLineGraphDelegate) for the marker box
// when showCustomMarkerView is set.
//
// Touch and mouse: pressing over the plot shows the marker at the nearest
// point; dragging moves it, or scrolls the plot while zoomed. Ctrl+wheel,
// trackpad pinch and two-finger pinch zoom horizontally (lastScale, 1 up to
// maximumScale); Shift+wheel and horizontal wheel scroll (contentX).
class MultiLineGraphView : public QQuickPaintedItem {
    Q_OBJECT
    Q_PROPERTY(bool drawGridY READ drawGridY WRITE setDrawGridY NOTIFY styleChanged)
    Q_PROPERTY(bool drawGridX READ drawGridX WRITE setDrawGridX NOTIFY styleChanged)
    Q_PROPERTY(QColor gridLineColor READ gridLineColor WRITE setGridLineColor NOTIFY styleChanged)
    Q_PROPERTY(qreal gridLineWidth READ gridLineWidth WRITE setGridLineWidth NOTIFY styleChanged)
    Q_PROPERTY(qreal textFontSize READ textFontSize WRITE setTextFontSize NOTIFY styleChanged)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY styleChanged)
    Q_PROPERTY(QFont textFont READ textFont WRITE setTextFont NOTIFY styleChanged)
    Q_PROPERTY(QColor markerColor READ markerColor WRITE setMarkerColor NOTIFY styleChanged)
    Q_PROPERTY(
        QColor markerTextColor READ markerTextColor WRITE setMarkerTextColor NOTIFY styleChanged)
    Q_PROPERTY(qreal markerWidth READ markerWidth WRITE setMarkerWidth NOTIFY styleChanged)
    Q_PROPERTY(bool showLegend READ showLegend WRITE setShowLegend NOTIFY styleChanged)
    Q_PROPERTY(int legendViewType READ legendViewType WRITE setLegendViewType NOTIFY styleChanged)
    Q_PROPERTY(bool showMarker READ showMarker WRITE setShowMarker NOTIFY styleChanged)
    Q_PROPERTY(bool showCustomMarkerView READ showCustomMarkerView WRITE setShowCustomMarkerView
                   NOTIFY styleChanged)

    Q_PROPERTY(QObject* dataSource READ dataSource WRITE setDataSource NOTIFY dataSourceChanged)
    Q_PROPERTY(QObject* delegate READ delegate WRITE setDelegate NOTIFY delegateChanged)

    Q_PROPERTY(qreal lastScale READ lastScale WRITE setLastScale NOTIFY lastScaleChanged)
    Q_PROPERTY(qreal maximumScale READ maximumScale NOTIFY layoutChanged)
    Q_PROPERTY(qreal contentX READ contentX WRITE setContentX NOTIFY contentXChanged)
    Q_PROPERTY(qreal contentWidth READ contentWidth NOTIFY layoutChanged)
    Q_PROPERTY(int lineCount READ lineCount NOTIFY layoutChanged)

    Q_PROPERTY(bool animated READ animated WRITE setAnimated NOTIFY animatedChanged)
    Q_PROPERTY(qreal drawnFraction READ drawnFraction NOTIFY drawnFractionChanged)

    Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY selectionChanged)
    Q_PROPERTY(int selectedLine READ selectedLine NOTIFY selectionChanged)
    Q_PROPERTY(int selectedIndex READ selectedIndex NOTIFY selectionChanged)
    Q_PROPERTY(QString markerText READ markerText NOTIFY selectionChanged)

public:
    explicit MultiLineGraphView(QQuickItem* parent = nullptr);
    ~MultiLineGraphView() override;

    void paint(QPainter* painter) override;

    // Reads the data source and draws the chart anew, unzoomed and revealing
    // the lines when animated; clears the marker.
    Q_INVOKABLE void drawGraph();
    // Reads the data source again and redraws, keeping zoom, scroll and the
    // marker where they still apply.
    Q_INVOKABLE void reloadGraph();
    // Forgets the data: the item shows nothing until the next drawGraph().
    Q_INVOKABLE void clearGraph();

    // Shows the marker at the point nearest to pos (item coordinates) when pos
    // is over the plot; returns whether a point was selected.
    Q_INVOKABLE bool selectPointAt(QPointF pos);
    Q_INVOKABLE void clearSelection();
    // Zooms to scale, keeping the plot under anchor (item coordinates) in place.
    Q_INVOKABLE void zoomAt(qreal scale, QPointF anchor);
    // The chart as shown now (scroll, zoom, marker), fully drawn.
    Q_INVOKABLE QImage grabImage(qreal devicePixelRatio = 1.0) const;

    bool drawGridY() const { return m_style.drawGridY; }
    void setDrawGridY(bool on);
    bool drawGridX() const { return m_style.drawGridX; }
    void setDrawGridX(bool on);
    QColor gridLineColor() const { return m_style.gridLineColor; }
    void setGridLineColor(const QColor& color);
    qreal gridLineWidth() const { return m_style.gridLineWidth; }
    void setGridLineWidth(qreal width);
    qreal textFontSize() const { return m_style.textFontSize; }
    void setTextFontSize(qreal size);
    QColor textColor() const { return m_style.textColor; }
    void setTextColor(const QColor& color);
    QFont textFont() const { return m_style.font(); }
    void setTextFont(const QFont& font);
    QColor markerColor() const { return m_style.markerColor; }
    void setMarkerColor(const QColor& color);
    QColor markerTextColor() const { return m_style.markerTextColor; }
    void setMarkerTextColor(const QColor& color);
    qreal markerWidth() const { return m_style.markerWidth; }
    void setMarkerWidth(qreal width);
    bool showLegend() const { return m_style.showLegend; }
    void setShowLegend(bool on);
    int legendViewType() const { return m_style.legendViewType; }
    void setLegendViewType(int type);
    bool showMarker() const { return m_style.showMarker; }
    void setShowMarker(bool on);
    bool showCustomMarkerView() const { return m_style.showCustomMarkerView; }
    void setShowCustomMarkerView(bool on);
    const GraphStyle& style() const { return m_style; }

    QObject* dataSource() const { return m_dataSource; }
    void setDataSource(QObject* source);
    QObject* delegate() const { return m_delegate; }
    void setDelegate(QObject* delegate);

    qreal lastScale() const { return m_lastScale; }
    void setLastScale(qreal scale);
    qreal maximumScale() const;
    qreal contentX() const { return m_contentX; }
    void setContentX(qreal x);
    qreal contentWidth() const { return m_layout.widht; }
    int lineCount() const { return int(m_data.lineDataArray.size()); }

    bool animated() const { return m_animated; }
    void setAnimated(bool on);
    qreal drawnFraction() const { return m_drawnFraction; }

    bool hasSelection() const { return m_selection.has_value(); }
    int selectedLine() const { return m_selection ? m_selection->line : -1; }
    int selectedIndex() const { return m_selection ? m_selection->valueIndex : -1; }
    QString markerText() const;

    const GraphData& graphData() const { return m_data; }
    const GraphLayout& graphLayout() const { return m_layout; }

signals:
    void styleChanged();
    void dataSourceChanged();
    void delegateChanged();
    void lastScaleChanged();
    void contentXChanged();
    void layoutChanged();
    void animatedChanged();
    void drawnFractionChanged();
    void selectionChanged();

protected:
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseUngrabEvent() override;
    void touchEvent(QTouchEvent* event) override;
    void touchUngrabEvent() override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void readDataSource();
    void relayout();
    void styleEdited(bool affectsLayout);
    void setDrawnFraction(qreal fraction);
    void setSelection(std::optional<GraphPointRef> selection);
    const MultiLineGraphDelegate* graphDelegate() const;
    void setScrolling(bool on);
    void pressAt(QPointF pos);
    void dragTo(QPointF pos);

    GraphStyle m_style;
    QPointer<QObject> m_dataSource;
    QPointer<QObject> m_delegate;
    GraphData m_data;
    GraphLayout m_layout;
    qreal m_lastScale = 1.0;
    qreal m_contentX = 0;
    bool m_animated = true;
    qreal m_drawnFraction = 1.0;
    QVariantAnimation* m_reveal = nullptr;
    std::optional<GraphPointRef> m_selection;

    QPointF m_pressPos;
    qreal m_pressContentX = 0;
    bool m_scrolling = false;
    qreal m_pinchDistance = 0;
    qreal m_pinchScale = 1.0;
};
