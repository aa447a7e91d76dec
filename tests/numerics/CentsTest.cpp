// Money in cents: rounding half away from zero on exact decimal values, and
// the limits. Every expected value is worked by hand from the decimal digits
// (the binary expansions quoted are Python's Decimal(float) of the double).
#include "numerics/Cents.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using Cents::Decimal;

std::optional<std::pair<qint64, int>> digits(double v)
{
    const auto d = Cents::shortestDecimal(v);
    return d ? std::optional(std::pair(d->digits, d->exponent)) : std::nullopt;
}

// The decimal a double counts as: its shortest text, wherever the exponent.
TEST(Cents, ShortestDecimalOfADouble)
{
    EXPECT_EQ(digits(0.1), std::pair(qint64(1), -1));
    EXPECT_EQ(digits(5.25), std::pair(qint64(525), -2));
    EXPECT_EQ(digits(-328.125), std::pair(qint64(-328125), -3));
    EXPECT_EQ(digits(1e20), std::pair(qint64(1), 20));
    EXPECT_EQ(digits(123456789012345680000.0), std::pair(qint64(12345678901234568), 4));
    EXPECT_EQ(digits(5e-324), std::pair(qint64(5), -324));
    EXPECT_EQ(digits(std::numeric_limits<double>::max()),
              std::pair(qint64(17976931348623157), 292));
    EXPECT_EQ(digits(-0.0)->first, 0);
    EXPECT_FALSE(digits(std::nan("")));
    EXPECT_FALSE(digits(-INFINITY));
}

// Ties go away from zero on the decimal, whatever the binary value:
// 1.005 is 1.00499999999999989... (llround(1.005 * 100) gives 100), 2.675 is
// 2.67499999999999982..., 0.125 is exact.
TEST(Cents, RoundHalfAwayFromZeroOnTheDecimalAndRefuseWhatPassesTheLimit)
{
    const struct {
        double value;
        std::optional<qint64> cents;
    } cases[] = {
        {1.005, 101},
        {2.675, 268},
        {-2.675, -268},
        {0.125, 13},
        {-0.125, -13},
        {0.005, 1},
        {0.00499999999, 0},
        {-0.0, 0},
        {5e-324, 0},
        {1234.5, 123450},
        {1e13, Cents::maximum},
        {-1e13, -Cents::maximum},
        {10000000000000.01, std::nullopt},
        {1e300, std::nullopt},
        {INFINITY, std::nullopt},
        {std::nan(""), std::nullopt},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Cents::fromDouble(c.value), c.cents) << c.value;
    EXPECT_EQ(Cents::toDouble(32813), 328.13);
}

// Interest on a balance in cents at a decimal rate, the product exact:
// 150,000.00 × 5.25 % ÷ 24 = 328.125 → 328.13; 0.01 × 0.5 = 0.005 → 0.01;
// 10^15 × (10^17 − 1) ÷ (2^63 − 1) = 10842021724855.045... (Python's
// Fraction), the largest product the helper forms.
TEST(Cents, ExactProductsOfCentsAndDecimalRates)
{
    const struct {
        qint64 cents;
        Decimal rate;
        qint64 divisor;
        std::optional<qint64> result;
    } cases[] = {
        {15000000, {525, -2}, 2400, 32813},
        {-15000000, {525, -2}, 2400, -32813},
        {15000000, {-525, -2}, 2400, -32813},
        {1, {5, -1}, 1, 1},
        {1, {49999999999999999, -17}, 1, 0},
        {1, {1, -300}, 1, 0},
        {0, {1, 300}, 1, 0},
        {Cents::maximum, {1, 0}, 1, Cents::maximum},
        {Cents::maximum, {99999999999999999, -17}, 1, Cents::maximum},
        {Cents::maximum, {2, 0}, 1, std::nullopt},
        {Cents::maximum, {1, 300}, 1, std::nullopt},
        {Cents::maximum,
         {99999999999999999, 0},
         std::numeric_limits<qint64>::max(),
         10842021724855},
        {Cents::maximum + 1, {1, -2}, 1, std::nullopt},
        {100, {1, 0}, 0, std::nullopt},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Cents::multiply(c.cents, c.rate, c.divisor), c.result)
            << c.cents << " x " << c.rate.digits << "e" << c.rate.exponent << " / " << c.divisor;
}

} // namespace
