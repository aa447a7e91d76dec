#pragma once

#include <QtGlobal>
#include <optional>

// Money in whole cents. An amount is rounded to cents half away from zero on
// its exact decimal value, never on the binary fraction a double holds:
// 2.675 is stored as 2.67499999999999982236431605997495353221893310546875,
// and llround(2.675 * 100) happens to give 268 while llround(1.005 * 100)
// gives 100. Here a double counts as the shortest decimal that reads back to
// it (the text a user typed, or the one a result is shown as), and products
// of cents and decimal rates are formed exactly in 128-bit integers before
// they are rounded, so 150,000.00 × 5.25 % ÷ 24 = 328.125 is 328.13 always.
//
// Amounts are limited to ±maximum cents; whatever would pass it is refused
// (nullopt), never wrapped round or saturated silently.
namespace Cents {

// 10^15 cents, an amount of 10,000,000,000,000.00. Every whole number of
// cents up to it (and well beyond, to 2^53) is exact in a double, so an amount
// kept in cents and shown from a double keeps its cents.
constexpr qint64 maximum = 1'000'000'000'000'000;

// A number in decimal: digits × 10^exponent, exactly.
struct Decimal {
    qint64 digits = 0;
    int exponent = 0;
};

// The shortest decimal that reads back to `value` (what std::to_chars writes):
// 0.1 is 1 × 10^-1, not the binary fraction nearest to it. At most 17
// digits. nullopt for NaN and the infinities.
std::optional<Decimal> shortestDecimal(double value);

// `value` in whole cents, half away from zero on its shortest decimal
// (2.675 → 268, 1.005 → 101, −0.125 → −13); nullopt when it is not finite or
// would pass ±maximum.
std::optional<qint64> fromDouble(double value);

// `cents` as the double nearest to cents ÷ 100 (printed with two decimals it
// gives the cents back exactly).
inline double toDouble(qint64 cents)
{
    return double(cents) / 100;
}

// cents × rate ÷ divisor, rounded half away from zero to whole cents, the
// product formed exactly: the interest on a balance at a decimal rate (the
// rate 5.25 % a year paid 24 times a year is {525, −2} ÷ 2400). nullopt when
// `cents` or the result passes ±maximum or the divisor is not positive.
std::optional<qint64> multiply(qint64 cents, Decimal rate, qint64 divisor = 1);

} // namespace Cents
