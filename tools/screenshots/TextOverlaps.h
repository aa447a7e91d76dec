#pragma once

#include <QStringList>

class QQuickWindow;

// The pairs of texts that overlap on the window as it shows now: each text
// item (labels, titles, results) that is visible, not fully transparent and
// not clipped away, taken at the box its glyphs fill; one line a pair
// ("\"CE\" and \"RESET\""). While a sheet or alert is open only the texts
// of the one on top are compared.
QStringList textOverlaps(QQuickWindow* window);
