#pragma once

#include <QRect>
#include <QVariant>

// Where the window opens. The first time it is sized for the screen's free
// area (`available`): about two thirds of its height (the whole of a small
// one), at least a phone's width and, on a wide screen, half its width up to
// a desktop-friendly 960, centred. After that it opens where it was left
// (`kept`, as keep() gave it), as long as enough of that place is still on
// the screen (a monitor may be gone); its size never passes the free area.
namespace WindowPlacement {

constexpr int phoneWidth = 412;
constexpr int smallestHeight = 480;

QRect placed(const QRect& available, const QVariant& kept);
// The window's geometry as it is kept between runs.
QVariant keep(const QRect& geometry);

} // namespace WindowPlacement
