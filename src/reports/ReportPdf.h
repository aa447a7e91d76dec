#pragma once

#include "store/WriteResult.h"

#include <QByteArray>
#include <QString>

class QIODevice;

// A report's text laid out as a PDF: the first line (the heading) in bold,
// the rest as it stands in a fixed-width font so the columns stay put, on
// A4 or US Letter pages with margins of 20 mm, as many pages as it needs.
namespace ReportPdf {

enum class Page { A4, Letter };

// Letter where the locale measures in inches (the United States and a few
// others), A4 everywhere else.
Page pageForLocale();
Page pageNamed(const QString& name, bool* known = nullptr);

// Laying out text needs fonts, which only the GUI layer has: it installs the
// layout (`letter` false means A4). Without one nothing can be written.
// `chart` holds the chart picture's file (a PNG), or nothing.
using Layout = bool (*)(QIODevice* device, const QString& text, bool letter,
                        const QByteArray& chart);
void setLayout(Layout layout);

// `chart`, when given, goes under the text, as wide as the page allows.
// False when no layout is installed or it failed; `error` then says which.
bool write(QIODevice* device, const QString& text, Page page, const QByteArray& chart = {},
           QString* error = nullptr);

// Where the chart picture saved with the report whose text file is
// `textPath` lies, "<name>_chart.png" beside "<name>_report.txt" (whether
// or not there is one); empty for a text file named otherwise.
QString chartPathFor(const QString& textPath);

// The chart picture saved with the report whose text file is `textPath`;
// empty when it has none. A chart that is there but cannot be read (not a
// regular file, larger than 16 MB, a link leading out of the documents
// folder) is left out, and `problem` says why.
QByteArray readChart(const QString& textPath, QString* problem);

// Writes the PDF of `text` as a new file in the documents folder, named
// after `reportFileName` with ".pdf" for "_report.txt" (" (2)" and so on
// when that name is taken), never over another file. `name` gets the name
// used.
WriteResult saveToDocuments(const QString& reportFileName, const QString& text, Page page,
                            QString* name, const QByteArray& chart = {});

} // namespace ReportPdf
