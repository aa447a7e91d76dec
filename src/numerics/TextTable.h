#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// A table as plain text, in the form a report's PDF lays out as a real
// table: the first line's cells as a header, a rule of dashes under each
// column, then the other lines; columns two spaces apart, each as wide as
// its widest text, right-aligned where `rightAligned` says (the numbers),
// no line ending in spaces. Every line ends with "\n".
namespace TextTable {

QString format(const QList<QStringList>& lines, const QList<bool>& rightAligned);

} // namespace TextTable
