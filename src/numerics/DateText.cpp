#include "numerics/DateText.h"

#include "numerics/DecimalDigit.h"

namespace DateText {

std::optional<QDate> readIsoDate(const QString& text)
{
    QString plain;
    plain.reserve(text.size());
    for (const QChar c : text) {
        if (c.category() != QChar::Other_Format)
            plain += c;
    }
    const QStringView rest = QStringView(plain).trimmed();

    // Year, month and day: 4, 1-2 and 1-2 digits between two "-".
    const int widest[] = {4, 2, 2};
    const int narrowest[] = {4, 1, 1};
    int parts[3] = {0, 0, 0};
    qsizetype i = 0;
    for (int part = 0; part < 3; ++part) {
        if (part > 0) {
            if (i >= rest.size() || rest[i] != u'-')
                return std::nullopt;
            ++i;
        }
        int digits = 0;
        while (i < rest.size() && digits <= widest[part]) {
            const DecimalDigit digit = decimalDigitAt(rest, i);
            if (!digit)
                break;
            parts[part] = parts[part] * 10 + digit.value;
            ++digits;
            i += digit.length;
        }
        if (digits < narrowest[part] || digits > widest[part])
            return std::nullopt;
    }
    if (i != rest.size())
        return std::nullopt;
    const QDate date(parts[0], parts[1], parts[2]);
    if (!date.isValid())
        return std::nullopt;
    return date;
}

QString problemWith(const QString& text)
{
    if (text.trimmed().isEmpty() || readIsoDate(text))
        return {};
    return QStringLiteral("Not a date: use YYYY-MM-DD");
}

} // namespace DateText
