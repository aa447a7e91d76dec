#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;

// A report's text laid out as a PDF with Qt's text engine: the heading in
// bold, the rest in a fixed-width font so columns stay put, margins of
// 20 mm on A4 or US Letter pages, the chart picture (the bytes of its file,
// when given) under the text. False without a GUI application (no fonts).
//
// A table in the text is laid out as a table: a line followed by a rule line
// of two or more runs of '-' separated by spaces, then rows up to the first
// blank line or the end of the text. The runs give the columns; pieces of a
// row (text between runs of two or more spaces) go to the column whose run
// they overlap, or across the columns of all the runs they overlap. The
// header is bold, ruled off and repeated at the top of every page the table
// runs onto; a column whose text keeps to the right of its run is
// right-aligned. A row with two pieces in one column is kept whole in one
// cell across the table.
bool layOutReportPdf(QIODevice* device, const QString& text, bool letter, const QByteArray& chart);
