#include "NumberFormat.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace NumberFormat {
namespace {

struct Decimal {
    std::string integer;  // at least one digit
    std::string fraction; // possibly empty
};

// The shortest round-trip decimal of |value| in positional notation.
Decimal positional(double magnitude)
{
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, magnitude, std::chars_format::scientific);
    const std::string text(buf, res.ptr);
    const auto ePos = text.find('e');
    std::string digits;
    for (size_t i = 0; i < ePos; ++i) {
        if (text[i] != '.')
            digits += text[i];
    }
    const int exponent = std::stoi(text.substr(ePos + 1));
    const int point = exponent + 1; // digits before the decimal point
    const int length = int(digits.size());

    Decimal d;
    if (point <= 0) {
        d.integer = "0";
        d.fraction = std::string(size_t(-point), '0') + digits;
    } else if (point >= length) {
        d.integer = digits + std::string(size_t(point - length), '0');
    } else {
        d.integer = digits.substr(0, size_t(point));
        d.fraction = digits.substr(size_t(point));
    }
    return d;
}

bool roundsUp(const std::string& kept, const std::string& rest, Rounding rounding)
{
    const auto nonZero = [](const std::string& s, size_t from) {
        return s.find_first_not_of('0', from) != std::string::npos;
    };
    if (rest.empty())
        return false;
    if (rounding == Rounding::AwayFromZero)
        return nonZero(rest, 0);
    if (rest[0] != '5')
        return rest[0] > '5';
    if (nonZero(rest, 1))
        return true;
    return (kept.back() - '0') % 2 == 1;
}

// Adds one unit in the last place of a digit string.
void increment(std::string& digits)
{
    for (auto it = digits.rbegin(); it != digits.rend(); ++it) {
        if (*it != '9') {
            ++*it;
            return;
        }
        *it = '0';
    }
    digits.insert(digits.begin(), '1');
}

} // namespace

QString format(double value, int maxFractionDigits, Rounding rounding, const QLocale& locale)
{
    if (std::isnan(value))
        return QStringLiteral("NaN");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("Infinity") : QStringLiteral("-Infinity");
    if (maxFractionDigits < 0)
        maxFractionDigits = 0;

    Decimal d = positional(std::fabs(value));
    const size_t keep = std::min(d.fraction.size(), size_t(maxFractionDigits));
    std::string all = d.integer + d.fraction.substr(0, keep);
    const std::string rest = d.fraction.substr(keep);
    if (roundsUp(all, rest, rounding))
        increment(all);

    const size_t integerLength = all.size() - keep;
    std::string integer = all.substr(0, integerLength);
    std::string fraction = all.substr(integerLength);
    while (!fraction.empty() && fraction.back() == '0')
        fraction.pop_back();

    QString out;
    const bool zero = integer.find_first_not_of('0') == std::string::npos && fraction.empty();
    if (std::signbit(value) && !zero)
        out += locale.negativeSign();
    out += QString::fromLatin1(integer.data(), qsizetype(integer.size()));
    if (!fraction.empty()) {
        out += locale.decimalPoint();
        out += QString::fromLatin1(fraction.data(), qsizetype(fraction.size()));
    }
    return out;
}

QString preciseString(double value)
{
    if (!std::isfinite(value))
        return format(value, 0, Rounding::HalfEven, QLocale::c());
    return QString::number(value, 'g', 17);
}

double plainDecimalValue(const QString& text)
{
    const QString point = QLocale().decimalPoint();
    const qsizetype size = text.size();
    const auto digitsFrom = [&](qsizetype& i) {
        QString digits;
        while (i < size && text.at(i) >= u'0' && text.at(i) <= u'9')
            digits += text.at(i++);
        return digits;
    };

    qsizetype i = 0;
    while (i < size && text.at(i).isSpace())
        ++i;
    QString sign;
    if (i < size && (text.at(i) == u'-' || text.at(i) == u'+'))
        sign = text.at(i++);
    const QString whole = digitsFrom(i);
    QString fraction;
    if (i < size && text.at(i) == u'.') {
        ++i;
        fraction = digitsFrom(i);
    } else if (!point.isEmpty() && text.mid(i, point.size()) == point) {
        i += point.size();
        fraction = digitsFrom(i);
    }
    if (whole.isEmpty() && fraction.isEmpty())
        return 0;

    QString number = sign + (whole.isEmpty() ? QStringLiteral("0") : whole);
    if (!fraction.isEmpty())
        number += QLatin1Char('.') + fraction;
    // An exponent counts only when digits follow it.
    if (i < size && (text.at(i) == u'e' || text.at(i) == u'E')) {
        qsizetype j = i + 1;
        QString exponentSign;
        if (j < size && (text.at(j) == u'-' || text.at(j) == u'+'))
            exponentSign = text.at(j++);
        const QString exponent = digitsFrom(j);
        if (!exponent.isEmpty())
            number += QLatin1Char('e') + exponentSign + exponent;
    }
    // Too large a number reads as an infinity, too small a one as 0.
    return QLocale::c().toDouble(number);
}

double numberFromText(const QString& text, const QLocale& locale)
{
    const QString trimmed = text.trimmed();
    bool ok = false;
    double value = locale.toDouble(trimmed, &ok);
    if (ok)
        return value;
    value = QLocale::c().toDouble(trimmed, &ok);
    if (ok)
        return value;
    if (trimmed == QLatin1String("NaN"))
        return std::numeric_limits<double>::quiet_NaN();
    if (trimmed == QLatin1String("Infinity"))
        return std::numeric_limits<double>::infinity();
    if (trimmed == QLatin1String("-Infinity"))
        return -std::numeric_limits<double>::infinity();
    return 0.0;
}

QString stringFromDouble(double value, const QLocale& locale)
{
    return format(value, 3, Rounding::HalfEven, locale);
}

QString displayString(double value, const QLocale& locale)
{
    return format(value, 4, Rounding::AwayFromZero, locale);
}

} // namespace NumberFormat
