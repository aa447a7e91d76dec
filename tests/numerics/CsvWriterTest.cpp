// The CSV writer's own formatters against the library conversions they
// stand in for: fixed decimals against std::to_chars (the exact binary
// value rounded, ties to even), ISO dates against QDate::toString, over
// many values each; and the quoting of RFC 4180.
#include "numerics/CsvWriter.h"

#include <QRandomGenerator>
#include <charconv>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

std::string fixedText(double value, int decimals)
{
    char buffer[340];
    return std::string(buffer, CsvWriter::appendFixed(buffer, value, decimals));
}

// What std::to_chars writes, a zero without its sign.
std::string libraryText(double value, int decimals)
{
    char buffer[340];
    std::string text(buffer, std::to_chars(buffer, buffer + sizeof buffer, value,
                                           std::chars_format::fixed, decimals)
                                 .ptr);
    if (text.find_first_not_of("-0.") == std::string::npos && text.front() == '-')
        text.erase(0, 1);
    return text;
}

std::string dateText(const QDate& date)
{
    char buffer[24];
    return std::string(buffer, CsvWriter::appendIsoDate(buffer, date));
}

// Binary values next to a decimal tie and true ties: the exact binary
// expansions (Python's Decimal(float)) decide, as they do for to_chars.
TEST(CsvWriter, FixedDecimalsRoundTheExactBinaryValue)
{
    const struct {
        double value;
        int decimals;
        const char* text;
    } cases[] = {
        {0.125, 2, "0.12"},   // exact tie: to even
        {0.375, 2, "0.38"},   // exact tie: to even
        {-0.125, 2, "-0.12"}, // exact tie: to even
        {2.5, 0, "2"},        // exact tie: to even
        {3.5, 0, "4"},        // exact tie: to even
        {2.675, 2, "2.67"},   // 2.67499999999999982236431605997495353221893310546875
        {1.005, 2, "1.00"},   // 1.00499999999999989341858963598497211933135986328125
        {1.115, 2, "1.11"},   // 1.1149999999999999911182158029987476766109466552734375
        {1.125, 2, "1.12"},   // exact tie: to even
        {0.045, 2, "0.04"},   // 0.0449999999999999983346654630622651893645524978637695...
        {1234.56, 2, "1234.56"},
        {-0.001, 2, "0.00"}, // no "-0.00"
        {-0.0, 2, "0.00"},
        {0.0, 0, "0"},
        {1e20, 2, "100000000000000000000.00"},
        {-17592186044415.99609375, 2, "-17592186044416.00"}, // -(2^44 - 2^-8), exact
        {0.1, 17, "0.10000000000000001"}, // 0.1000000000000000055511151231257827...
        {std::numeric_limits<double>::quiet_NaN(), 2, "NaN"},
        {std::numeric_limits<double>::infinity(), 2, "Infinity"},
        {-std::numeric_limits<double>::infinity(), 2, "-Infinity"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(fixedText(c.value, c.decimals), c.text) << c.value << " to " << c.decimals;
}

// Random doubles of every size, cents and half cents of amounts, and the
// neighbours of ties: the same text as the library's exact conversion.
TEST(CsvWriter, FixedDecimalsAgreeWithTheLibraryOverManyValues)
{
    QRandomGenerator random(20240501);
    const auto check = [](double value, int decimals) {
        ASSERT_EQ(fixedText(value, decimals), libraryText(value, decimals))
            << std::to_string(value) << " to " << decimals;
    };
    for (int k = 0; k < 200000; ++k) {
        const int decimals = int(random.bounded(7));
        // Uniform bits: every exponent, both signs (the non-numbers are
        // checked above).
        double any = 0;
        const quint64 bits = random.generate64();
        std::memcpy(&any, &bits, sizeof any);
        if (std::isfinite(any))
            check(any, decimals);
        // Amounts up to 10^14 with few digits, and the half steps between.
        const double scale = std::pow(10.0, double(random.bounded(15)));
        const double amount = std::round(random.generateDouble() * scale * 1000) / 1000;
        check(amount, decimals);
        check(-amount, decimals);
        const double half = (std::floor(amount * 100) + 0.5) / 100;
        check(half, 2);
        check(std::nextafter(half, 0.0), 2);
        check(std::nextafter(half, 1e300), 2);
        // Around 2^52 after scaling, where halves stop being doubles.
        const double large = std::ldexp(random.generateDouble() + 1, 45 + int(random.bounded(3)));
        check(large, 2);
        check(-(std::floor(large * 100) + 0.5) / 100, 2);
    }
}

// Every 37th day from 0001-01-01 to 9999-12-31 and every day of the years
// around the leap-year rules (1600 and 2000 leap, 1900 and 2100 not): as
// Qt writes them. Past 9999, where Qt writes nothing, and before year 1:
// the year's digits as they are.
TEST(CsvWriter, IsoDatesAsQtWritesThemAndBeyondTheYear9999)
{
    const qint64 first = QDate(1, 1, 1).toJulianDay();
    const qint64 last = QDate(9999, 12, 31).toJulianDay();
    const auto check = [](const QDate& date) {
        ASSERT_EQ(dateText(date), date.toString(Qt::ISODate).toStdString()) << date.toJulianDay();
    };
    for (qint64 day = first; day <= last; day += 37)
        check(QDate::fromJulianDay(day));
    check(QDate::fromJulianDay(last));
    for (int year : {1, 99, 100, 999, 1000, 1600, 1900, 2000, 2024, 2100, 9999}) {
        for (QDate day(year, 1, 1); day.isValid() && day.year() == year; day = day.addDays(1))
            check(day);
    }

    EXPECT_EQ(dateText(QDate(10000, 1, 1)), "10000-01-01");
    EXPECT_EQ(dateText(QDate(10360, 2, 29)), "10360-02-29"); // 10360 = 4 x 2590, not 100 x k
    EXPECT_EQ(dateText(QDate(123456, 12, 31)), "123456-12-31");
    EXPECT_EQ(dateText(QDate(-44, 3, 15)), "-44-03-15");
    EXPECT_EQ(dateText(QDate()), "");
    EXPECT_EQ(CsvWriter::isoDate(QDate(2027, 1, 1)), QStringLiteral("2027-01-01"));
    EXPECT_EQ(CsvWriter::isoDate(QDate()), QString());
}

// The text of a whole file: header, CRLF after every row, commas, quotes
// and line breaks quoted with quotes doubled (RFC 4180, section 2), UTF-8,
// the shortest numbers and the spelt non-numbers.
TEST(CsvWriter, RowsOfFieldsWithTheirQuoting)
{
    CsvWriter csv({QStringLiteral("name"), QStringLiteral("a, b"), QStringLiteral("say \"hi\"")});
    csv.text(QStringLiteral("line\nbreak"));
    csv.empty();
    csv.text(QStringLiteral("Zürich, 3 €"));
    csv.endRow();
    csv.integer(-42);
    csv.shortest(0.1);
    csv.shortest(-0.0);
    csv.endRow();
    csv.shortest(std::numeric_limits<double>::quiet_NaN());
    csv.fixed(-std::numeric_limits<double>::infinity(), 2);
    csv.date(QDate(2024, 2, 29));
    csv.endRow();
    EXPECT_EQ(csv.take(), QByteArray("name,\"a, b\",\"say \"\"hi\"\"\"\r\n"
                                     "\"line\nbreak\",,\"Zürich, 3 €\"\r\n"
                                     "-42,0.1,0\r\n"
                                     "NaN,-Infinity,2024-02-29\r\n"));
    EXPECT_EQ(csv.take(), QByteArray());
}

} // namespace
