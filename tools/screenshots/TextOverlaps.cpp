#include "TextOverlaps.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QRectF>

namespace {

struct PaintedText {
    QString text;
    QRectF box;
};

// Whether `item` shows at all: visible, with some opacity all the way up.
bool shown(const QQuickItem* item)
{
    for (const QQuickItem* up = item; up; up = up->parentItem()) {
        if (!up->isVisible() || up->opacity() <= 0.01)
            return false;
    }
    return true;
}

// The box the glyphs of text item `item` fill, in window coordinates, cut
// to every clipping ancestor; empty when nothing of it shows.
QRectF paintedBox(const QQuickItem* item)
{
    const qreal left = item->property("leftPadding").toReal();
    const qreal right = item->property("rightPadding").toReal();
    const qreal top = item->property("topPadding").toReal();
    const qreal bottom = item->property("bottomPadding").toReal();
    const qreal width =
        std::min(item->property("contentWidth").toReal(), item->width() - left - right);
    const qreal height =
        std::min(item->property("contentHeight").toReal(), item->height() - top - bottom);
    const int h = item->property("horizontalAlignment").toInt();
    const int v = item->property("verticalAlignment").toInt();
    const qreal free = item->width() - left - right - width;
    const qreal freeHeight = item->height() - top - bottom - height;
    const qreal x = left + ((h & Qt::AlignRight) ? free : (h & Qt::AlignHCenter) ? free / 2 : 0);
    const qreal y = top + ((v & Qt::AlignBottom)    ? freeHeight
                           : (v & Qt::AlignVCenter) ? freeHeight / 2
                                                    : 0);
    QRectF box = item->mapRectToScene(QRectF(x, y, width, height));
    for (const QQuickItem* up = item->parentItem(); up; up = up->parentItem()) {
        if (up->clip())
            box = box.intersected(up->mapRectToScene(QRectF(0, 0, up->width(), up->height())));
    }
    return box;
}

void collect(const QQuickItem* item, QList<PaintedText>& texts, int depth)
{
    if (!item || depth > 200 || !item->isVisible())
        return;
    if (item->inherits("QQuickText")) {
        const QString text = item->property("text").toString().trimmed();
        if (!text.isEmpty() && shown(item)) {
            const QRectF box = paintedBox(item);
            if (box.width() > 0.5 && box.height() > 0.5)
                texts.append({text, box});
        }
    }
    for (const QQuickItem* child : item->childItems())
        collect(child, texts, depth + 1);
}

} // namespace

QStringList textOverlaps(QQuickWindow* window)
{
    QList<PaintedText> texts;
    const QQuickItem* root = window->contentItem();
    // An open popup covers the page: only what is above it counts.
    const QQuickItem* overlay = nullptr;
    for (const QQuickItem* child : root->childItems()) {
        if (child->inherits("QQuickOverlay"))
            overlay = child;
    }
    // The popup on top (the last one opened, or the highest), which covers
    // the page and any popup under it.
    const QQuickItem* top = nullptr;
    if (overlay) {
        for (const QQuickItem* child : overlay->childItems()) {
            if (child->isVisible() && child->opacity() > 0.01 && child->width() > 0 &&
                (!top || child->z() >= top->z()))
                top = child;
        }
    }
    collect(top ? top : root, texts, 0);
    const QRectF windowBox(0, 0, window->width(), window->height());
    QStringList overlaps;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        for (qsizetype j = i + 1; j < texts.size(); ++j) {
            const QRectF both = texts[i].box.intersected(texts[j].box).intersected(windowBox);
            // A pixel or two of line spacing is no overlap.
            if (both.width() >= 2 && both.height() >= 2)
                overlaps << QStringLiteral("\"%1\" and \"%2\"")
                                .arg(texts[i].text.left(40), texts[j].text.left(40));
        }
    }
    return overlaps;
}
