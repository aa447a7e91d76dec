#include "framework/NumberFormat.h"

#include <QLocale>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

// Formats with the process locale, then swaps its decimal separator for "."
// so that one table of expectations serves every locale.
QString results(double v)
{
    QString s = NumberFormat::stringFromDouble(v);
    return s.replace(QLocale().decimalPoint(), QStringLiteral("."));
}

QString display(double v)
{
    QString s = NumberFormat::displayString(v);
    return s.replace(QLocale().decimalPoint(), QStringLiteral("."));
}

TEST(ResultFormat, PlainDecimalWithoutGroupingOrTrailingZeros)
{
    EXPECT_EQ(results(1234567.891), "1234567.891");
    EXPECT_EQ(results(1000000), "1000000");
    EXPECT_EQ(results(2.0), "2");
    EXPECT_EQ(results(0), "0");
    EXPECT_EQ(results(0.5), "0.5");
    EXPECT_EQ(results(-1.25), "-1.25");
    EXPECT_EQ(results(2.5), "2.5");
    EXPECT_EQ(results(0.12345), "0.123");
}

TEST(ResultFormat, RoundsTheShortestDecimalHalfToEven)
{
    EXPECT_EQ(results(0.0625), "0.062");
    EXPECT_EQ(results(0.0635), "0.064");
    EXPECT_EQ(results(0.0005), "0");
    EXPECT_EQ(results(0.0015), "0.002");
    EXPECT_EQ(results(0.00050001), "0.001");
    // 0.0025 is stored a hair above 0.0025 but its shortest decimal is an
    // exact tie, which goes to the even digit.
    EXPECT_EQ(results(0.0025), "0.002");
    EXPECT_EQ(results(2.675), "2.675");
    EXPECT_EQ(results(1.0005), "1");
    EXPECT_EQ(results(-0.0625), "-0.062");
}

TEST(ResultFormat, CarriesThroughNines)
{
    EXPECT_EQ(results(9.9996), "10");
    EXPECT_EQ(results(999.9999), "1000");
    EXPECT_EQ(results(-0.9999), "-1");
}

TEST(ResultFormat, ValuesThatRoundToZeroHaveNoSign)
{
    EXPECT_EQ(results(-0.0), "0");
    EXPECT_EQ(results(-0.0001), "0");
}

TEST(ResultFormat, ExtremeMagnitudesArePositional)
{
    EXPECT_EQ(results(1e21), "1000000000000000000000");
    EXPECT_EQ(results(1.5e-10), "0");
    EXPECT_EQ(results(123456789012345678.0), "123456789012345680");
    EXPECT_EQ(results(std::numeric_limits<double>::max()).size(), 309);
    EXPECT_EQ(results(std::numeric_limits<double>::denorm_min()), "0");
}

TEST(ResultFormat, NonFiniteValuesAreSpelledOut)
{
    EXPECT_EQ(results(std::nan("")), "NaN");
    EXPECT_EQ(results(std::numeric_limits<double>::infinity()), "Infinity");
    EXPECT_EQ(results(-std::numeric_limits<double>::infinity()), "-Infinity");
    EXPECT_EQ(display(std::nan("")), "NaN");
    EXPECT_EQ(display(-std::numeric_limits<double>::infinity()), "-Infinity");
}

TEST(KeypadFormat, FourDigitsRoundedAwayFromZero)
{
    EXPECT_EQ(display(2.00004), "2.0001");
    EXPECT_EQ(display(-2.00004), "-2.0001");
    EXPECT_EQ(display(2.00000), "2");
    EXPECT_EQ(display(1.23456), "1.2346");
    EXPECT_EQ(display(1.2345), "1.2345");
    EXPECT_EQ(display(0.1 + 0.2), "0.3001") << "0.30000000000000004 has a non-zero tail";
    EXPECT_EQ(display(1234567.5), "1234567.5");
    EXPECT_EQ(display(0.99999), "1");
}

TEST(NumberFormatLocale, UsesTheLocaleDecimalSeparatorAndNoGrouping)
{
    const QLocale german(QLocale::German, QLocale::Germany);
    EXPECT_EQ(NumberFormat::stringFromDouble(1234567.891, german), "1234567,891");
    EXPECT_EQ(NumberFormat::displayString(-2.00004, german), "-2,0001");
    const QLocale c = QLocale::c();
    EXPECT_EQ(NumberFormat::stringFromDouble(1234567.891, c), "1234567.891");
}

TEST(NumberFormatLocale, ProcessLocaleDecidesTheSeparator)
{
    const QString text = NumberFormat::stringFromDouble(0.5);
    EXPECT_EQ(text, QStringLiteral("0") + QLocale().decimalPoint() + QStringLiteral("5"));
    // ctest runs this binary once under a German locale: make sure that run
    // really formats with a comma.
    const QString locale = qEnvironmentVariable("LC_ALL");
    if (locale.startsWith(QLatin1String("de_DE"))) {
        EXPECT_EQ(text, "0,5");
    } else if (locale == QLatin1String("C")) {
        EXPECT_EQ(text, "0.5");
    }
}

} // namespace
