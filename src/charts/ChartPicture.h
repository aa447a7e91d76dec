#pragma once

#include "charts/MultiLineGraphDataSource.h"
#include "platform/Rgba.h"

#include <QByteArray>
#include <QSize>
#include <functional>

// A chart to be turned into a picture (for a mail, or kept beside a saved
// report), described without anything from QtGui: the models and the
// command line say what to draw, and only a layer that has fonts draws it.
struct ChartPicture {
    const MultiLineGraphDataSource* source = nullptr;
    const MultiLineGraphDelegate* delegate = nullptr;
    QSize size{400, 300};
    double devicePixelRatio = 2.0;
    // The look of the screens' charts: light grid lines, 12-point text.
    Rgba gridLineColor{211, 211, 211};
    double gridLineWidth = 0.3;
    double textFontSize = 12;
    int legendViewType = 0;
    bool showCustomMarkerView = false;

    bool isEmpty() const { return source == nullptr; }
};

// Draws chart pictures. The GUI layer installs the drawing at start; without
// it (the command line, which has no fonts) there are no pictures.
namespace ChartPictures {

// Draws `picture` and encodes it in `format` ("PNG", "JPEG"); empty when it
// cannot (nothing to draw, or no drawing installed).
using Encoder = std::function<QByteArray(const ChartPicture& picture, const char* format)>;

void setEncoder(Encoder encoder);
bool canDraw();
QByteArray encode(const ChartPicture& picture, const char* format);

} // namespace ChartPictures
