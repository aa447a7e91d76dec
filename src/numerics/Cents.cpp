#include "numerics/Cents.h"

#include <charconv>
#include <cmath>

namespace Cents {

namespace {

__extension__ using Int128 = __int128;

Int128 magnitude(Int128 v)
{
    return v < 0 ? -v : v;
}

// number × 10^exponent ÷ divisor to the nearest whole number, a half away
// from zero; nullopt when that passes ±maximum. |number| stays below 10^33
// (17 digits of a decimal times at most 10^16 cents), divisor below 2^63.
std::optional<qint64> scaled(Int128 number, int exponent, Int128 divisor)
{
    if (divisor <= 0)
        return std::nullopt;
    if (number == 0)
        return 0;
    const bool negative = number < 0;
    Int128 n = magnitude(number);
    Int128 d = divisor;
    // Past this the quotient is beyond the maximum, whatever comes later.
    const Int128 beyond = (Int128(maximum) + 1) * d;
    for (; exponent > 0; --exponent) {
        if (n >= beyond)
            return std::nullopt;
        n *= 10;
    }
    for (; exponent < 0; ++exponent) {
        if (d > 2 * n)
            return 0; // less than half a cent whatever the remaining digits
        d *= 10;
    }
    Int128 quotient = n / d;
    if (2 * (n % d) >= d)
        ++quotient;
    if (quotient > maximum)
        return std::nullopt;
    return qint64(negative ? -quotient : quotient);
}

} // namespace

std::optional<Decimal> shortestDecimal(double value)
{
    if (!std::isfinite(value))
        return std::nullopt;
    // "-d.ddddde-XX": the shortest digits in scientific form.
    char text[48];
    const auto written =
        std::to_chars(text, text + sizeof text, value, std::chars_format::scientific);
    if (written.ec != std::errc())
        return std::nullopt;
    const char* p = text;
    const bool negative = *p == '-';
    if (negative)
        ++p;
    Decimal decimal;
    int fractionDigits = 0;
    bool inFraction = false;
    for (; p < written.ptr && *p != 'e'; ++p) {
        if (*p == '.') {
            inFraction = true;
            continue;
        }
        decimal.digits = decimal.digits * 10 + (*p - '0');
        fractionDigits += inFraction ? 1 : 0;
    }
    int exponent = 0;
    if (p < written.ptr)
        std::from_chars(p + 1 + (p[1] == '+' ? 1 : 0), written.ptr, exponent);
    decimal.exponent = exponent - fractionDigits;
    if (negative)
        decimal.digits = -decimal.digits;
    return decimal;
}

std::optional<qint64> fromDouble(double value)
{
    const std::optional<Decimal> decimal = shortestDecimal(value);
    if (!decimal)
        return std::nullopt;
    return scaled(decimal->digits, decimal->exponent + 2, 1);
}

std::optional<qint64> multiply(qint64 cents, Decimal rate, qint64 divisor)
{
    if (cents > maximum || cents < -maximum)
        return std::nullopt;
    return scaled(Int128(cents) * rate.digits, rate.exponent, divisor);
}

} // namespace Cents
