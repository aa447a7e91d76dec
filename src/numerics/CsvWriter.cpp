#include "numerics/CsvWriter.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

namespace {

// The powers of ten up to 10^17, each exact as a double and as an integer.
constexpr double powersOfTen[] = {1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,
                                  1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17};
constexpr int mostDecimals = 17;

char* copy(char* out, const char* text)
{
    const size_t length = std::strlen(text);
    std::memcpy(out, text, length);
    return out + length;
}

// The decimal digits of `value`, at least `width` of them (leading zeros).
char* appendDigits(char* out, quint64 value, int width)
{
    char reversed[24];
    int count = 0;
    do {
        reversed[count++] = char('0' + value % 10);
        value /= 10;
    } while (value != 0 && count < 20);
    while (count < width && count < 24)
        reversed[count++] = '0';
    while (count > 0)
        *out++ = reversed[--count];
    return out;
}

} // namespace

char* CsvWriter::appendFixed(char* out, double value, int decimals)
{
    if (std::isnan(value))
        return copy(out, "NaN");
    if (std::isinf(value))
        return copy(out, value > 0 ? "Infinity" : "-Infinity");
    decimals = std::clamp(decimals, 0, mostDecimals);
    // The scaled magnitude as a double is the exact product rounded to
    // nearest. Below 2^52 every half (n + 0.5) is a double, and rounding
    // keeps order, so an exact product below a half stays at or below it,
    // one above at or above it: unless the double is the half itself, the
    // exact product rounds to the same whole number as the double, which
    // gives the digits to write. A double on a half (a true tie such as
    // 0.125 to two places, or a product rounded onto it) and larger numbers
    // are left to the library's exact conversion.
    const double scaled = std::fabs(value) * powersOfTen[decimals];
    if (scaled < 0x1p52) {
        const double whole = std::floor(scaled);
        const double fraction = scaled - whole; // exact: the two are close
        if (fraction != 0.5) {
            const quint64 digits = quint64(whole) + (fraction > 0.5 ? 1 : 0);
            const quint64 unit = quint64(powersOfTen[decimals]);
            if (digits != 0 && std::signbit(value))
                *out++ = '-';
            out = appendDigits(out, digits / unit, 1);
            if (decimals > 0) {
                *out++ = '.';
                out = appendDigits(out, digits % unit, decimals);
            }
            return out;
        }
    }
    char* const start = out;
    out = std::to_chars(out, out + 330, value, std::chars_format::fixed, decimals).ptr;
    // "-0.00" is a zero all the same.
    if (*start == '-' && std::all_of(start + 1, out, [](char c) { return c == '0' || c == '.'; })) {
        std::memmove(start, start + 1, size_t(out - start - 1));
        --out;
    }
    return out;
}

char* CsvWriter::appendIsoDate(char* out, const QDate& value)
{
    if (!value.isValid())
        return out;
    int year = 0;
    int month = 0;
    int day = 0;
    value.getDate(&year, &month, &day);
    if (year < 0)
        *out++ = '-';
    const quint64 magnitude = year < 0 ? quint64(-qint64(year)) : quint64(year);
    out = appendDigits(out, magnitude, year > 0 && year <= 9999 ? 4 : 1);
    *out++ = '-';
    out = appendDigits(out, quint64(month), 2);
    *out++ = '-';
    return appendDigits(out, quint64(day), 2);
}

QString CsvWriter::isoDate(const QDate& value)
{
    char buffer[24];
    return QString::fromLatin1(buffer, appendIsoDate(buffer, value) - buffer);
}

QString CsvWriter::number(double value)
{
    if (std::isnan(value))
        return QStringLiteral("NaN");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("Infinity") : QStringLiteral("-Infinity");
    if (value == 0)
        value = 0; // no "-0"
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return QString::fromLatin1(buffer, result.ptr - buffer);
}

CsvWriter::CsvWriter(const QStringList& header, qsizetype expectedRows, qsizetype bytesPerRow)
{
    m_out.resize(256 + std::max<qsizetype>(0, expectedRows) * std::max<qsizetype>(0, bytesPerRow));
    for (const QString& name : header)
        text(name);
    endRow();
}

char* CsvWriter::field(qsizetype size)
{
    const qsizetype needed = m_length + size + 1;
    if (needed > m_out.size())
        m_out.resize(std::max(needed, m_out.size() * 2));
    char* out = m_out.data() + m_length;
    if (m_rowStarted)
        *out++ = ',';
    m_rowStarted = true;
    return out;
}

void CsvWriter::text(QStringView field)
{
    const bool quoted = std::any_of(field.begin(), field.end(), [](QChar c) {
        return c == u',' || c == u'"' || c == u'\n' || c == u'\r';
    });
    const bool ascii =
        std::all_of(field.begin(), field.end(), [](QChar c) { return c.unicode() < 0x80; });
    if (ascii) {
        // At most every character doubled, and the quotes.
        char* out = this->field(2 * field.size() + 2);
        if (quoted)
            *out++ = '"';
        for (QChar c : field) {
            if (c == u'"')
                *out++ = '"';
            *out++ = char(c.unicode());
        }
        if (quoted)
            *out++ = '"';
        done(out);
        return;
    }
    QString doubled = field.toString();
    if (quoted)
        doubled = QLatin1Char('"') + doubled.replace(QLatin1String("\""), QLatin1String("\"\"")) +
                  QLatin1Char('"');
    const QByteArray utf8 = doubled.toUtf8();
    char* out = this->field(utf8.size());
    std::memcpy(out, utf8.constData(), size_t(utf8.size()));
    done(out + utf8.size());
}

void CsvWriter::empty()
{
    done(field(0));
}

void CsvWriter::integer(qint64 value)
{
    char* out = field(24);
    done(std::to_chars(out, out + 24, value).ptr);
}

void CsvWriter::shortest(double value)
{
    char* out = field(32);
    if (std::isnan(value))
        return done(copy(out, "NaN"));
    if (std::isinf(value))
        return done(copy(out, value > 0 ? "Infinity" : "-Infinity"));
    done(std::to_chars(out, out + 32, value == 0 ? 0.0 : value).ptr);
}

void CsvWriter::fixed(double value, int decimals)
{
    done(appendFixed(field(340), value, decimals));
}

void CsvWriter::date(const QDate& value)
{
    done(appendIsoDate(field(24), value));
}

void CsvWriter::endRow()
{
    if (m_length + 2 > m_out.size())
        m_out.resize(std::max(m_length + 2, m_out.size() * 2));
    char* out = m_out.data() + m_length;
    out[0] = '\r';
    out[1] = '\n';
    m_length += 2;
    m_rowStarted = false;
}

QByteArray CsvWriter::take()
{
    m_out.truncate(m_length);
    m_length = 0;
    m_rowStarted = false;
    return std::exchange(m_out, QByteArray());
}
