#include "charts/MultiLineGraphView.h"

#include <QGuiApplication>
#include <QLineF>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QStyleHints>
#include <QTouchEvent>
#include <QVariantAnimation>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace {

constexpr int kRevealMilliseconds = 1500;
// Wheel notches are 120 units; one notch zooms by about a fifth.
constexpr double kZoomPerWheelUnit = 1.0015;
constexpr double kScrollPerWheelUnit = 50.0 / 120.0;

} // namespace

MultiLineGraphView::MultiLineGraphView(QQuickItem* parent)
    : QQuickPaintedItem(parent), m_reveal(new QVariantAnimation(this))
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptTouchEvents(true);
    setAntialiasing(true);
    m_reveal->setStartValue(0.0);
    m_reveal->setEndValue(1.0);
    m_reveal->setDuration(kRevealMilliseconds);
    connect(m_reveal, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { setDrawnFraction(value.toReal()); });
    relayout();
}

MultiLineGraphView::~MultiLineGraphView() = default;

void MultiLineGraphView::paint(QPainter* painter)
{
    MultiLineGraphRenderer::paint(*painter, m_data, m_layout, m_style, graphDelegate(),
                                  {m_contentX, m_drawnFraction, m_selection});
}

void MultiLineGraphView::drawGraph()
{
    // A new drawing starts unzoomed, at the left end, without a marker.
    const bool rescaled = m_lastScale != 1;
    m_lastScale = 1;
    readDataSource();
    if (rescaled)
        emit lastScaleChanged();
    setSelection(std::nullopt);
    m_reveal->stop();
    if (m_animated && !m_data.isEmpty()) {
        setDrawnFraction(0);
        m_reveal->start();
    } else {
        setDrawnFraction(1);
    }
}

void MultiLineGraphView::reloadGraph()
{
    readDataSource();
}

void MultiLineGraphView::clearGraph()
{
    m_reveal->stop();
    m_data = GraphData();
    setSelection(std::nullopt);
    setLastScale(1);
    relayout();
    setContentX(0);
}

void MultiLineGraphView::readDataSource()
{
    const auto* source = qobject_cast<MultiLineGraphDataSource*>(m_dataSource.data());
    m_data = source ? GraphData::fromDataSource(*source) : GraphData();
    if (m_lastScale > maximumScale()) {
        m_lastScale = maximumScale();
        emit lastScaleChanged();
    }
    relayout();
    setContentX(m_contentX);
}

void MultiLineGraphView::relayout()
{
    m_layout = MultiLineGraphRenderer::layout(m_data, m_style, size(), m_lastScale);
    if (m_selection) {
        const GraphPoint* point = m_layout.point(*m_selection);
        if (!point || !std::isfinite(point->position.x()) || !std::isfinite(point->position.y()))
            setSelection(std::nullopt);
    }
    emit layoutChanged();
    update();
}

void MultiLineGraphView::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        relayout();
        setContentX(m_contentX);
    }
}

bool MultiLineGraphView::selectPointAt(QPointF pos)
{
    if (!m_style.showMarker || !m_layout.graphScrollFrame.contains(pos))
        return false;
    const auto nearest = m_layout.nearestPoint(pos.x() + m_contentX);
    if (!nearest)
        return false;
    setSelection(nearest);
    return true;
}

void MultiLineGraphView::clearSelection()
{
    setSelection(std::nullopt);
}

void MultiLineGraphView::setSelection(std::optional<GraphPointRef> selection)
{
    if (selection == m_selection)
        return;
    m_selection = selection;
    emit selectionChanged();
    update();
}

QString MultiLineGraphView::markerText() const
{
    if (!m_selection)
        return {};
    return MultiLineGraphRenderer::marker(m_data, m_layout, *m_selection, m_style, graphDelegate())
        .text;
}

void MultiLineGraphView::zoomAt(qreal scale, QPointF anchor)
{
    const qreal oldWidht = m_layout.widht;
    const qreal plotX = m_contentX + anchor.x();
    setLastScale(scale);
    if (oldWidht > 0)
        setContentX(plotX * m_layout.widht / oldWidht - anchor.x());
}

QImage MultiLineGraphView::grabImage(qreal devicePixelRatio) const
{
    return MultiLineGraphRenderer::renderImage(m_data, m_layout, m_style, graphDelegate(),
                                               devicePixelRatio, {m_contentX, 1.0, m_selection});
}

qreal MultiLineGraphView::maximumScale() const
{
    return GraphLayout::maximumScale(int(m_data.xAxisArray.size()));
}

void MultiLineGraphView::setLastScale(qreal scale)
{
    if (!std::isfinite(scale))
        return;
    scale = std::clamp(scale, 1.0, maximumScale());
    if (scale == m_lastScale)
        return;
    m_lastScale = scale;
    relayout();
    setContentX(m_contentX);
    emit lastScaleChanged();
}

void MultiLineGraphView::setContentX(qreal x)
{
    if (!std::isfinite(x))
        return;
    x = std::clamp(x, 0.0, m_layout.maximumContentX());
    if (x == m_contentX)
        return;
    m_contentX = x;
    emit contentXChanged();
    update();
}

void MultiLineGraphView::setAnimated(bool on)
{
    if (m_animated == on)
        return;
    m_animated = on;
    if (!on) {
        m_reveal->stop();
        setDrawnFraction(1);
    }
    emit animatedChanged();
}

void MultiLineGraphView::setDrawnFraction(qreal fraction)
{
    if (fraction == m_drawnFraction)
        return;
    m_drawnFraction = fraction;
    emit drawnFractionChanged();
    update();
}

void MultiLineGraphView::setDataSource(QObject* source)
{
    if (m_dataSource == source)
        return;
    if (source && !qobject_cast<MultiLineGraphDataSource*>(source))
        qWarning("MultiLineGraphView: %s is not a MultiLineGraphDataSource",
                 source->metaObject()->className());
    m_dataSource = source;
    emit dataSourceChanged();
}

void MultiLineGraphView::setDelegate(QObject* delegate)
{
    if (m_delegate == delegate)
        return;
    if (delegate && !qobject_cast<MultiLineGraphDelegate*>(delegate))
        qWarning("MultiLineGraphView: %s is not a MultiLineGraphDelegate",
                 delegate->metaObject()->className());
    m_delegate = delegate;
    emit delegateChanged();
    if (m_selection)
        emit selectionChanged();
    update();
}

const MultiLineGraphDelegate* MultiLineGraphView::graphDelegate() const
{
    return qobject_cast<MultiLineGraphDelegate*>(m_delegate.data());
}

void MultiLineGraphView::styleEdited(bool affectsLayout)
{
    if (affectsLayout)
        relayout();
    else
        update();
    emit styleChanged();
}

void MultiLineGraphView::setDrawGridY(bool on)
{
    if (m_style.drawGridY == on)
        return;
    m_style.drawGridY = on;
    styleEdited(true);
}

void MultiLineGraphView::setDrawGridX(bool on)
{
    if (m_style.drawGridX == on)
        return;
    m_style.drawGridX = on;
    styleEdited(true);
}

void MultiLineGraphView::setGridLineColor(const QColor& color)
{
    if (m_style.gridLineColor == color)
        return;
    m_style.gridLineColor = color;
    styleEdited(false);
}

void MultiLineGraphView::setGridLineWidth(qreal width)
{
    if (m_style.gridLineWidth == width)
        return;
    m_style.gridLineWidth = width;
    styleEdited(false);
}

void MultiLineGraphView::setTextFontSize(qreal size)
{
    if (m_style.textFontSize == size)
        return;
    m_style.textFontSize = size;
    styleEdited(true);
}

void MultiLineGraphView::setTextColor(const QColor& color)
{
    if (m_style.textColor == color)
        return;
    m_style.textColor = color;
    styleEdited(false);
}

void MultiLineGraphView::setTextFont(const QFont& font)
{
    // The family and style come from the font, the size from textFontSize.
    GraphStyle edited = m_style;
    edited.textFont = font;
    if (edited.font() == m_style.font())
        return;
    m_style.textFont = font;
    styleEdited(true);
}

void MultiLineGraphView::setMarkerColor(const QColor& color)
{
    if (m_style.markerColor == color)
        return;
    m_style.markerColor = color;
    styleEdited(false);
}

void MultiLineGraphView::setMarkerTextColor(const QColor& color)
{
    if (m_style.markerTextColor == color)
        return;
    m_style.markerTextColor = color;
    styleEdited(false);
}

void MultiLineGraphView::setMarkerWidth(qreal width)
{
    if (m_style.markerWidth == width)
        return;
    m_style.markerWidth = width;
    styleEdited(false);
}

void MultiLineGraphView::setShowLegend(bool on)
{
    if (m_style.showLegend == on)
        return;
    m_style.showLegend = on;
    styleEdited(true);
}

void MultiLineGraphView::setLegendViewType(int type)
{
    if (m_style.legendViewType == type)
        return;
    m_style.legendViewType = type;
    styleEdited(true);
}

void MultiLineGraphView::setShowMarker(bool on)
{
    if (m_style.showMarker == on)
        return;
    m_style.showMarker = on;
    if (!on)
        setSelection(std::nullopt);
    styleEdited(false);
}

void MultiLineGraphView::setShowCustomMarkerView(bool on)
{
    if (m_style.showCustomMarkerView == on)
        return;
    m_style.showCustomMarkerView = on;
    if (m_selection)
        emit selectionChanged();
    styleEdited(false);
}

// Input.

void MultiLineGraphView::setScrolling(bool on)
{
    // While the plot scrolls or zooms, an enclosing flickable must not take
    // the gesture over.
    m_scrolling = on;
    setKeepMouseGrab(on);
    setKeepTouchGrab(on || m_pinchDistance > 0);
}

void MultiLineGraphView::pressAt(QPointF pos)
{
    m_pressPos = pos;
    m_pressContentX = m_contentX;
    setScrolling(false);
    selectPointAt(pos);
}

void MultiLineGraphView::dragTo(QPointF pos)
{
    // A zoomed plot scrolls under the finger; otherwise the marker follows it.
    if (m_layout.maximumContentX() <= 0) {
        selectPointAt(pos);
        return;
    }
    const qreal dx = pos.x() - m_pressPos.x();
    if (!m_scrolling && std::abs(dx) >= QGuiApplication::styleHints()->startDragDistance())
        setScrolling(true);
    if (m_scrolling)
        setContentX(m_pressContentX - dx);
}

void MultiLineGraphView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    pressAt(event->position());
    event->accept();
}

void MultiLineGraphView::mouseMoveEvent(QMouseEvent* event)
{
    dragTo(event->position());
    event->accept();
}

void MultiLineGraphView::mouseReleaseEvent(QMouseEvent* event)
{
    setScrolling(false);
    event->accept();
}

void MultiLineGraphView::touchEvent(QTouchEvent* event)
{
    QList<QPointF> down;
    for (const QEventPoint& point : event->points()) {
        if (point.state() != QEventPoint::Released)
            down.append(point.position());
    }

    if (down.size() >= 2) {
        const qreal distance = QLineF(down[0], down[1]).length();
        const QPointF centre = (down[0] + down[1]) / 2;
        if (m_pinchDistance <= 0) {
            m_pinchDistance = distance;
            m_pinchScale = m_lastScale;
            setKeepTouchGrab(true);
        } else if (distance > 0) {
            zoomAt(m_pinchScale * distance / m_pinchDistance, centre);
        }
    } else if (down.size() == 1) {
        const QEventPoint* point = nullptr;
        for (const QEventPoint& p : event->points()) {
            if (p.state() != QEventPoint::Released)
                point = &p;
        }
        if (m_pinchDistance > 0) {
            // Back to one finger after a pinch: scroll from here, no marker jump.
            m_pinchDistance = 0;
            m_pressPos = point->position();
            m_pressContentX = m_contentX;
            setScrolling(true);
        } else if (point->state() == QEventPoint::Pressed) {
            pressAt(point->position());
        } else {
            dragTo(point->position());
        }
    } else {
        m_pinchDistance = 0;
        setScrolling(false);
    }
    event->accept();
}

void MultiLineGraphView::mouseUngrabEvent()
{
    setScrolling(false);
}

void MultiLineGraphView::touchUngrabEvent()
{
    m_pinchDistance = 0;
    setScrolling(false);
}

void MultiLineGraphView::wheelEvent(QWheelEvent* event)
{
    const QPoint angle = event->angleDelta();
    if (event->modifiers() & Qt::ControlModifier) {
        if (angle.y() == 0) {
            event->ignore();
            return;
        }
        zoomAt(m_lastScale * std::pow(kZoomPerWheelUnit, angle.y()), event->position());
        event->accept();
        return;
    }

    const QPoint pixels = event->pixelDelta();
    qreal dx = !pixels.isNull() ? pixels.x() : angle.x() * kScrollPerWheelUnit;
    if (dx == 0 && (event->modifiers() & Qt::ShiftModifier))
        dx = !pixels.isNull() ? pixels.y() : angle.y() * kScrollPerWheelUnit;
    const qreal before = m_contentX;
    if (dx != 0)
        setContentX(m_contentX - dx);
    // Plain vertical wheels, and scrolls past the ends, go to the page.
    event->setAccepted(m_contentX != before);
}

bool MultiLineGraphView::event(QEvent* event)
{
    if (event->type() == QEvent::NativeGesture) {
        auto* gesture = static_cast<QNativeGestureEvent*>(event);
        switch (gesture->gestureType()) {
        case Qt::ZoomNativeGesture:
            zoomAt(m_lastScale * (1 + gesture->value()), gesture->position());
            return true;
        case Qt::BeginNativeGesture:
        case Qt::EndNativeGesture:
            return true;
        default:
            break;
        }
    }
    return QQuickPaintedItem::event(event);
}
