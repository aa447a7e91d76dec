#include "NumberFormat.h"

#include "expression/DecimalDigit.h"

#include <QStringView>
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

// A code point and the UTF-16 units it takes at text[i].
char32_t codePointAt(QStringView text, qsizetype i, qsizetype& length)
{
    const char16_t u = text[i].unicode();
    length = 1;
    if (QChar::isHighSurrogate(u) && i + 1 < text.size() &&
        QChar::isLowSurrogate(text[i + 1].unicode())) {
        length = 2;
        return QChar::surrogateToUcs4(u, text[i + 1].unicode());
    }
    return u;
}

// The text without its invisible marks: direction marks, zero-width
// joiners, word joiners, byte-order marks (the Unicode format characters).
QString withoutMarks(QStringView text)
{
    QString out;
    out.reserve(text.size());
    qsizetype length = 0;
    for (qsizetype i = 0; i < text.size(); i += length) {
        if (QChar::category(codePointAt(text, i, length)) != QChar::Other_Format)
            out += text.mid(i, length);
    }
    return out;
}

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

QString decimalSeparator(const QLocale& locale)
{
    const QString separator = withoutMarks(locale.decimalPoint());
    return separator.isEmpty() ? QStringLiteral(".") : separator;
}

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
        out += QLatin1Char('-'); // ASCII whatever the locale writes
    out += QString::fromLatin1(integer.data(), qsizetype(integer.size()));
    if (!fraction.empty()) {
        out += decimalSeparator(locale);
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

double numberFromText(const QString& text, const QLocale& locale)
{
    const QString unmarked = withoutMarks(text);
    QStringView rest = QStringView(unmarked).trimmed();

    bool negative = false;
    const QString minus = withoutMarks(locale.negativeSign());
    if (rest.startsWith(u'-')) {
        negative = true;
        rest = rest.mid(1);
    } else if (!minus.isEmpty() && rest.startsWith(minus)) {
        negative = true;
        rest = rest.mid(minus.size());
    }
    if (rest == u"Infinity")
        return negative ? -infinity : infinity;
    if (rest == u"NaN")
        return negative ? 0.0 : notANumber;

    // The digits in ASCII with "." as the point, for the conversion.
    std::string ascii = negative ? "-" : "";
    ascii.reserve(size_t(rest.size()) + 1);
    const QString separator = decimalSeparator(locale);
    bool seenPoint = false;
    bool seenDigit = false;
    bool integerNonZero = false;
    for (qsizetype i = 0; i < rest.size();) {
        if (const DecimalDigit digit = decimalDigitAt(rest, i)) {
            ascii += char('0' + digit.value);
            seenDigit = true;
            integerNonZero = integerNonZero || (!seenPoint && digit.value != 0);
            i += digit.length;
            continue;
        }
        qsizetype pointLength = 0;
        if (rest.mid(i).startsWith(separator))
            pointLength = separator.size();
        else if (rest[i] == u'.')
            pointLength = 1;
        if (pointLength == 0 || seenPoint)
            return 0.0; // a second separator or any other character
        seenPoint = true;
        ascii += '.';
        i += pointLength;
    }
    if (!seenDigit)
        return 0.0;

    double value = 0.0;
    const auto result =
        std::from_chars(ascii.data(), ascii.data() + ascii.size(), value, std::chars_format::fixed);
    if (result.ec == std::errc::result_out_of_range) {
        // Too large a number is infinite, too small a one is 0.
        const double magnitude = integerNonZero ? infinity : 0.0;
        return negative ? -magnitude : magnitude;
    }
    return result.ec == std::errc() ? value : 0.0;
}

QString stringFromDouble(double value, const QLocale& locale)
{
    return format(value, 3, Rounding::HalfEven, locale);
}

QString displayString(double value, const QLocale& locale)
{
    return format(value, 4, Rounding::AwayFromZero, locale);
}

QString exactString(double value, const QLocale& locale)
{
    // The shortest decimal has at most 17 significant digits after at most
    // 323 zeros, so nothing is ever rounded away.
    return format(value, 400, Rounding::HalfEven, locale);
}

} // namespace NumberFormat
