#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

// What the table screens under the stock forms share: one column of rates
// per input, cells shown with every digit they hold (empty for 0), rows
// numbered from 1, and every edit announced as "RateChangedNotification".
namespace RateTable {

// A cell's text: empty for 0 or a row outside the column, else the value
// as NumberFormat::exactString writes it. Cells are read back by the one
// reading rule, so a cell never shows a rounded short form ("1.23457e+06"
// would read back as another number): it shows "1234567", which reads back
// unchanged.
QString cellText(const QList<double>& column, int row);
// The texts of the first `rows` cells.
QStringList columnTexts(const QList<double>& column, int rows);
// "1", "2", ... for `rows` rows.
QStringList rowNumberTexts(int rows);
// Keeps the typed value of row `tag` (0 when unreadable) and posts
// "RateChangedNotification" with "type", "tag" and "value"; rows outside
// the column are ignored.
void changeRate(QObject* sender, QList<double>& column, const QString& type, int tag,
                const QString& text);

} // namespace RateTable
