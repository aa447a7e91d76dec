#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// Comma-separated values as RFC 4180 writes them: a header row, CRLF line
// ends, fields with a comma, a quote or a line break quoted (quotes
// doubled), no byte-order mark. Numbers are written with "." whatever the
// locale, so that every spreadsheet reads them back.
namespace CsvWriter {

QByteArray toCsv(const QStringList& header, const QList<QStringList>& rows);

// The shortest text that reads back to the same double, with "."; "NaN",
// "Infinity" and "-Infinity" for the values that are no number.
QString number(double value);

} // namespace CsvWriter
