#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;

// A report's text laid out as a PDF with Qt's text engine: the heading in
// bold, the rest in a fixed-width font so columns stay put, margins of
// 20 mm on A4 or US Letter pages, the chart picture (the bytes of its file,
// when given) under the text. False without a GUI application (no fonts).
bool layOutReportPdf(QIODevice* device, const QString& text, bool letter, const QByteArray& chart);
