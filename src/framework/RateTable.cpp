#include "RateTable.h"

#include "numerics/NumberFormat.h"
#include "platform/NotificationCenter.h"

namespace RateTable {

QString cellText(const QList<double>& column, int row)
{
    if (row < 0 || row >= column.size())
        return QString();
    const double value = column.at(row);
    if (value == 0)
        return QString();
    return NumberFormat::exactString(value);
}

QStringList columnTexts(const QList<double>& column, int rows)
{
    QStringList texts;
    for (int row = 0; row < rows; ++row)
        texts << cellText(column, row);
    return texts;
}

QStringList rowNumberTexts(int rows)
{
    QStringList labels;
    for (int row = 0; row < rows; ++row)
        labels << QString::number(row + 1);
    return labels;
}

void changeRate(QObject* sender, QList<double>& column, const QString& type, int tag,
                const QString& text)
{
    if (tag < 0 || tag >= column.size())
        return;
    const double value = NumberFormat::numberFromText(text);
    column[tag] = value;
    NotificationCenter::defaultCenter().post(QStringLiteral("RateChangedNotification"), sender,
                                             {{QStringLiteral("type"), type},
                                              {QStringLiteral("tag"), tag},
                                              {QStringLiteral("value"), value}});
}

} // namespace RateTable
