#include "numerics/NumberFormat.h"

#include "numerics/DecimalDigit.h"

#include <QStringView>
#include <QVarLengthArray>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

namespace NumberFormat {
namespace {

// The shortest round-trip decimal of a magnitude in positional notation:
// `length` digits of which the first `integer` (at least one) stand before
// the point. Its longest forms are those of DBL_MAX (309 integer digits)
// and of the smallest subnormal (1 + 340 digits).
struct Positional {
    char digits[400];
    int length = 0;
    int integer = 0;
};

Positional positional(double magnitude)
{
    char text[64];
    const auto res =
        std::to_chars(text, text + sizeof text, magnitude, std::chars_format::scientific);
    char significant[32];
    int count = 0;
    const char* p = text;
    for (; p < res.ptr && *p != 'e'; ++p) {
        if (*p != '.' && count < int(sizeof significant))
            significant[count++] = *p;
    }
    int exponent = 0;
    if (p + 1 < res.ptr)
        std::from_chars(p + 1 + (p[1] == '+' ? 1 : 0), res.ptr, exponent);
    const int point = exponent + 1; // digits before the decimal point

    Positional d;
    if (point <= 0) {
        d.digits[d.length++] = '0';
        for (int i = 0; i < -point; ++i)
            d.digits[d.length++] = '0';
    }
    for (int i = 0; i < count; ++i)
        d.digits[d.length++] = significant[i];
    for (int i = count; i < point; ++i)
        d.digits[d.length++] = '0';
    d.integer = point <= 0 ? 1 : point;
    return d;
}

bool roundsUp(char lastKept, const char* rest, int restLength, Rounding rounding)
{
    const auto nonZero = [&](int from) {
        for (int i = from; i < restLength; ++i) {
            if (rest[i] != '0')
                return true;
        }
        return false;
    };
    if (restLength == 0)
        return false;
    if (rounding == Rounding::AwayFromZero)
        return nonZero(0);
    if (rest[0] != '5')
        return rest[0] > '5';
    if (nonZero(1))
        return true;
    return (lastKept - '0') % 2 == 1;
}

// Adds one unit in the last place of a digit string whose first digit is
// a spare 0 that takes a carry out of the others.
void increment(char* digits, int length)
{
    for (int i = length - 1; i >= 0; --i) {
        if (digits[i] != '9') {
            ++digits[i];
            return;
        }
        digits[i] = '0';
    }
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
    QString separator = locale.decimalPoint();
    if (separator.size() == 1 && separator[0].category() != QChar::Other_Format)
        return separator; // the usual case, quickly
    separator = withoutMarks(separator);
    return separator.isEmpty() ? QStringLiteral(".") : separator;
}

QString money(double value, const QLocale& locale)
{
    if (!std::isfinite(value))
        return stringFromDouble(value, locale);
    // Two decimals of the shortest decimal, so 2.675 is 2.68 as it reads.
    QString text = format(value == 0 ? 0.0 : value, 2, Rounding::HalfEven, locale);
    const QString separator = decimalSeparator(locale);
    const qsizetype at = text.indexOf(separator);
    if (at < 0)
        return text + separator + QStringLiteral("00");
    return text + QString(2 - (text.size() - at - separator.size()), QLatin1Char('0'));
}

QString format(double value, int maxFractionDigits, Rounding rounding, const QLocale& locale)
{
    if (std::isnan(value))
        return QStringLiteral("NaN");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("Infinity") : QStringLiteral("-Infinity");

    const Positional d = positional(std::fabs(value));
    const int fraction = d.length - d.integer;
    const int keep = std::clamp(maxFractionDigits, 0, fraction);
    char all[1 + sizeof d.digits];
    all[0] = '0';
    std::memcpy(all + 1, d.digits, size_t(d.integer + keep));
    const int kept = 1 + d.integer + keep;
    if (roundsUp(all[kept - 1], d.digits + d.integer + keep, fraction - keep, rounding))
        increment(all, kept);

    const int integerStart = all[0] == '0' ? 1 : 0;
    const int integerEnd = 1 + d.integer;
    int fractionEnd = kept;
    while (fractionEnd > integerEnd && all[fractionEnd - 1] == '0')
        --fractionEnd;
    bool zero = fractionEnd == integerEnd;
    for (int i = integerStart; zero && i < integerEnd; ++i)
        zero = all[i] == '0';

    QString out;
    out.reserve(fractionEnd + 2);
    if (std::signbit(value) && !zero)
        out += QLatin1Char('-'); // ASCII whatever the locale writes
    out += QLatin1String(all + integerStart, integerEnd - integerStart);
    if (fractionEnd > integerEnd) {
        out += decimalSeparator(locale);
        out += QLatin1String(all + integerEnd, fractionEnd - integerEnd);
    }
    return out;
}

QString preciseString(double value)
{
    if (!std::isfinite(value))
        return format(value, 0, Rounding::HalfEven, QLocale::c());
    return QString::number(value, 'g', 17);
}

namespace {

// What reading a text found: its number, or why there is none.
struct Reading {
    Reading() = default;
    Reading(std::optional<double> number) : value(number) {}
    std::optional<double> value;
    // The text could be a decimal or a grouped thousand (see the header);
    // `whole` and `decimal` are the two ways to write what was meant.
    bool ambiguous = false;
    QString whole;
    QString decimal;
};

// The exponent after "e" or "E": an optional ASCII sign and digits, to the
// end of the text. Appends it to `ascii` and returns its value, saturated
// far beyond any double's range, or nothing when it is malformed.
std::optional<int> readExponent(QStringView rest, QVarLengthArray<char, 64>& ascii)
{
    qsizetype i = 0;
    bool negative = false;
    if (i < rest.size() && (rest[i] == u'-' || rest[i] == u'+')) {
        negative = rest[i] == u'-';
        ++i;
    }
    ascii.append(negative ? '-' : '+');
    int value = 0;
    bool seenDigit = false;
    while (i < rest.size()) {
        const DecimalDigit digit = decimalDigitAt(rest, i);
        if (!digit)
            return std::nullopt;
        ascii.append(char('0' + digit.value));
        value = std::min(value * 10 + digit.value, 100'000'000);
        seenDigit = true;
        i += digit.length;
    }
    if (!seenDigit)
        return std::nullopt;
    return negative ? -value : value;
}

// A "." and three digits could group thousands in `locale`: its grouping
// separator is "." (and its decimal separator something else).
bool groupsWithPoint(const QLocale& locale)
{
    return withoutMarks(locale.groupSeparator()) == u"." && decimalSeparator(locale) != u".";
}

Reading read(const QString& text, const QLocale& locale)
{
    // Only a text with characters outside ASCII can hold marks.
    QString unmarked;
    QStringView rest = text;
    if (std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() >= 0x80; })) {
        unmarked = withoutMarks(text);
        rest = unmarked;
    }
    rest = rest.trimmed();

    bool negative = false;
    if (rest.startsWith(u'-')) {
        negative = true;
        rest = rest.mid(1);
    } else if (!rest.isEmpty() && !(rest[0] >= u'0' && rest[0] <= u'9') && rest[0] != u'.') {
        const QString minus = withoutMarks(locale.negativeSign());
        if (!minus.isEmpty() && rest.startsWith(minus)) {
            negative = true;
            rest = rest.mid(minus.size());
        }
    }
    if (rest == u"Infinity")
        return {negative ? -infinity : infinity};
    if (rest == u"NaN")
        return {negative ? std::nullopt : std::optional<double>(notANumber)};

    // The digits in ASCII with "." as the point, for the conversion.
    QVarLengthArray<char, 64> ascii;
    if (negative)
        ascii.append('-');
    QString separator; // looked up at the first character that is no digit
    bool seenPoint = false;
    bool pointIsFullStop = false; // the point was written "."
    bool seenDigit = false;
    int integerDigits = 0;  // before the point, after leading zeros
    int leadingZeros = 0;   // after the point, before the first other digit
    int fractionDigits = 0; // after the point
    std::optional<int> exponent;
    for (qsizetype i = 0; i < rest.size();) {
        if (const DecimalDigit digit = decimalDigitAt(rest, i)) {
            ascii.append(char('0' + digit.value));
            seenDigit = true;
            if (!seenPoint) {
                if (integerDigits > 0 || digit.value != 0)
                    ++integerDigits;
            } else {
                if (integerDigits == 0 && leadingZeros == fractionDigits && digit.value == 0)
                    ++leadingZeros;
                ++fractionDigits;
            }
            i += digit.length;
            continue;
        }
        if (seenDigit && (rest[i] == u'e' || rest[i] == u'E')) {
            ascii.append('e');
            exponent = readExponent(rest.mid(i + 1), ascii);
            if (!exponent)
                return {}; // "1e", "1e+", "1e5x"
            break;
        }
        if (separator.isEmpty())
            separator = decimalSeparator(locale);
        qsizetype pointLength = 0;
        if (rest.mid(i).startsWith(separator)) {
            pointLength = separator.size();
            pointIsFullStop = separator == u".";
        } else if (rest[i] == u'.') {
            pointLength = 1;
            pointIsFullStop = true;
        }
        if (pointLength == 0 || seenPoint)
            return {}; // a second separator or any other character
        seenPoint = true;
        ascii.append('.');
        i += pointLength;
    }
    if (!seenDigit)
        return {};

    if (pointIsFullStop && fractionDigits == 3 && integerDigits > 0 && !exponent &&
        groupsWithPoint(locale)) {
        Reading ambiguous;
        ambiguous.ambiguous = true;
        const QLatin1String digits(ascii.data(), ascii.size());
        ambiguous.whole = QString(digits).remove(QLatin1Char('.'));
        ambiguous.decimal = QString(digits).replace(QLatin1Char('.'), decimalSeparator(locale));
        return ambiguous;
    }

    double value = 0.0;
    const auto result = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value,
                                        std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range) {
        // Too large a number is infinite, too small a one is 0: the decimal
        // exponent of its first significant digit tells which.
        const int magnitude =
            (integerDigits > 0 ? integerDigits : -leadingZeros) + exponent.value_or(0);
        const double size = magnitude > 0 ? infinity : 0.0;
        return {negative ? -size : size};
    }
    if (result.ec != std::errc() || result.ptr != ascii.data() + ascii.size())
        return {};
    return {value};
}

} // namespace

std::optional<double> readNumber(const QString& text, const QLocale& locale)
{
    return read(text, locale).value;
}

double numberFromText(const QString& text, const QLocale& locale)
{
    return read(text, locale).value.value_or(0.0);
}

bool isUnreadable(const QString& text, const QLocale& locale)
{
    return !text.trimmed().isEmpty() && !readNumber(text, locale);
}

QString problemWith(const QString& text, const QLocale& locale)
{
    if (text.trimmed().isEmpty())
        return {};
    const Reading reading = read(text, locale);
    if (reading.value)
        return {};
    if (reading.ambiguous)
        return QStringLiteral("Ambiguous: write %1 or %2").arg(reading.whole, reading.decimal);
    return QStringLiteral("Not a number");
}

QString problemComputingWith(const QString& text, const QLocale& locale)
{
    if (text.trimmed().isEmpty())
        return {};
    if (const Reading reading = read(text, locale); reading.value)
        return std::isfinite(*reading.value)
                   ? QString()
                   : QStringLiteral("Too large a number to compute with.");
    return problemWith(text, locale);
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
