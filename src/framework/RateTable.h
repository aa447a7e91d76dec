#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

// What the table screens under the stock forms share: one column of rates
// per input, cells shown in %g notation (empty for 0), rows numbered from
// 1, and every edit announced as "RateChangedNotification".
namespace RateTable {

// A cell's text: empty for 0 or a row outside the column, else %g with the
// locale's decimal point.
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
