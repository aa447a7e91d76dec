#include "WindowPlacement.h"

#include <QVariantList>
#include <algorithm>

namespace WindowPlacement {

namespace {

QRect firstPlace(const QRect& available)
{
    const int height = available.height() <= smallestHeight
                           ? available.height()
                           : std::max(smallestHeight, available.height() * 2 / 3);
    const int width = std::clamp(available.width() / 2, phoneWidth, 960);
    const QSize size(std::min(width, available.width()), height);
    QRect place(QPoint(), size);
    place.moveCenter(available.center());
    return place;
}

} // namespace

QRect placed(const QRect& available, const QVariant& kept)
{
    if (available.isEmpty())
        return QRect(0, 0, phoneWidth, 892);
    const QVariantList numbers = kept.toList();
    if (numbers.size() == 4) {
        QRect place(numbers[0].toInt(), numbers[1].toInt(), numbers[2].toInt(), numbers[3].toInt());
        place.setSize(place.size().boundedTo(available.size()));
        // A window whose title bar would be off the screen, or of which too
        // little would show, opens in the first place instead.
        const QRect visible = place.intersected(available);
        if (place.width() >= 200 && place.height() >= 200 && visible.width() >= 120 &&
            visible.height() >= 120 && available.contains(QPoint(place.center().x(), place.top())))
            return place;
    }
    return firstPlace(available);
}

QVariant keep(const QRect& geometry)
{
    return QVariantList{geometry.x(), geometry.y(), geometry.width(), geometry.height()};
}

} // namespace WindowPlacement
