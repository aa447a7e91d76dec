#pragma once

#include <QtGlobal>
#include <charconv>
#include <cmath>

// Reading a number text already spelt in ASCII: "-" only first, at most one
// ".", digits. Shared by the number token and the evaluator's fast path so
// that both give the same double for the same text.

// Digits taken one at a time. Numbers of at most 15 significant digits and
// 22 decimals convert exactly with one correctly rounded division: both the
// digits and the power of ten are exact doubles. (std::from_chars is far
// slower on this library.)
struct ShortDecimal {
    // Wraps around harmlessly past 19 digits: exact() is false by then.
    quint64 mantissa = 0;
    qsizetype significant = 0; // digits from the first one that is not 0
    qsizetype decimals = 0;
    bool afterPoint = false;

    void point() { afterPoint = true; }
    void digit(unsigned value)
    {
        mantissa = mantissa * 10 + value;
        significant += mantissa != 0 ? 1 : 0;
        decimals += afterPoint ? 1 : 0;
    }
    bool exact() const { return significant <= 15 && decimals <= 22; }
    double value() const
    {
        static constexpr double powersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
        return double(qint64(mantissa)) / powersOfTen[decimals];
    }
};

// The value of a checked number text: 0 when it has no digit, an infinity
// when it is too large for a double, 0 when too small. `integerNonZero`
// tells whether a digit before the point is not 0.
inline double asciiDecimal(const char* text, qsizetype length, bool integerNonZero)
{
    const bool negative = length > 0 && text[0] == '-';
    bool seenDigit = false;
    ShortDecimal quick;
    for (qsizetype i = negative ? 1 : 0; i < length; ++i) {
        if (text[i] == '.') {
            quick.point();
        } else {
            seenDigit = true;
            quick.digit(unsigned(text[i] - '0'));
        }
    }
    if (!seenDigit)
        return 0.0;
    if (quick.exact())
        return negative ? -quick.value() : quick.value();
    double value = 0.0;
    const auto result = std::from_chars(text, text + length, value, std::chars_format::fixed);
    if (result.ec == std::errc::result_out_of_range) {
        const double magnitude = integerNonZero ? HUGE_VAL : 0.0;
        return negative ? -magnitude : magnitude;
    }
    return result.ec == std::errc() ? value : 0.0;
}
