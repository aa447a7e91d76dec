#include "numerics/TextTable.h"

#include <algorithm>

namespace TextTable {

QString format(const QList<QStringList>& lines, const QList<bool>& rightAligned)
{
    // Each column at least one dash wide, so that its rule marks it.
    QList<qsizetype> widths;
    for (const QStringList& line : lines) {
        for (qsizetype c = 0; c < line.size(); ++c) {
            if (widths.size() <= c)
                widths << 1;
            widths[c] = std::max(widths[c], line.at(c).size());
        }
    }
    const auto join = [&](const QStringList& line) {
        QStringList cells;
        for (qsizetype c = 0; c < line.size(); ++c)
            cells << (rightAligned.value(c) ? line.at(c).rightJustified(widths[c])
                                            : line.at(c).leftJustified(widths[c]));
        QString text = cells.join(QStringLiteral("  "));
        while (text.endsWith(QLatin1Char(' ')))
            text.chop(1);
        return text + QLatin1Char('\n');
    };
    if (lines.isEmpty())
        return {};
    QString table = join(lines.first());
    QStringList rule;
    for (qsizetype width : std::as_const(widths))
        rule << QString(width, QLatin1Char('-'));
    table += join(rule);
    for (qsizetype l = 1; l < lines.size(); ++l)
        table += join(lines.at(l));
    return table;
}

} // namespace TextTable
