#include "numerics/EventText.h"

#include "numerics/DateText.h"
#include "numerics/NumberFormat.h"

#include <cmath>

namespace EventText {

std::optional<At> readAt(const QString& text)
{
    if (const std::optional<QDate> date = DateText::readIsoDate(text.trimmed()))
        return At{0, *date};
    const std::optional<double> number = NumberFormat::readNumber(text);
    if (!number || *number < 1 || *number > 1e9 || std::trunc(*number) != *number)
        return std::nullopt;
    return At{int(*number), QDate()};
}

QString problemWithAt(const QString& text)
{
    if (text.trimmed().isEmpty() || readAt(text))
        return {};
    return QStringLiteral("Not a payment number or date: use 13 or YYYY-MM-DD");
}

std::optional<std::pair<At, double>> readPair(const QString& text)
{
    const qsizetype colon = text.indexOf(QLatin1Char(':'));
    if (colon < 0)
        return std::nullopt;
    const std::optional<At> at = readAt(text.left(colon));
    const std::optional<double> value = NumberFormat::readNumber(text.mid(colon + 1));
    if (!at || !value)
        return std::nullopt;
    return std::pair{*at, *value};
}

QString problemWithPair(const QString& text)
{
    if (readPair(text))
        return {};
    return QStringLiteral("Not an event: use PAYMENT:NUMBER, the payment a number from 1 or a "
                          "date YYYY-MM-DD");
}

} // namespace EventText
