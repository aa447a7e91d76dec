#include "numerics/NumberFormat.h"

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

// Results: the shortest decimal of the double, rounded half to even to
// three digits, no grouping and no trailing zeros.
TEST(ResultFormat, PlainDecimalRoundedHalfToEven)
{
    EXPECT_EQ(results(1234567.891), "1234567.891");
    EXPECT_EQ(results(1000000), "1000000");
    EXPECT_EQ(results(2.0), "2");
    EXPECT_EQ(results(0), "0");
    EXPECT_EQ(results(-1.25), "-1.25");
    EXPECT_EQ(results(0.12345), "0.123");
    EXPECT_EQ(results(0.0625), "0.062");
    EXPECT_EQ(results(0.0635), "0.064");
    EXPECT_EQ(results(0.0005), "0");
    EXPECT_EQ(results(0.00050001), "0.001");
    // 0.0025 is stored a hair above 0.0025 but its shortest decimal is an
    // exact tie, which goes to the even digit.
    EXPECT_EQ(results(0.0025), "0.002");
    EXPECT_EQ(results(2.675), "2.675");
    EXPECT_EQ(results(1.0005), "1");
    // Carries through nines; values that round to zero have no sign.
    EXPECT_EQ(results(9.9996), "10");
    EXPECT_EQ(results(999.9999), "1000");
    EXPECT_EQ(results(-0.9999), "-1");
    EXPECT_EQ(results(-0.0), "0");
    EXPECT_EQ(results(-0.0001), "0");
}

TEST(ResultFormat, ExtremeMagnitudesArePositionalNonFiniteValuesSpelledOut)
{
    EXPECT_EQ(results(1e21), "1000000000000000000000");
    EXPECT_EQ(results(1.5e-10), "0");
    EXPECT_EQ(results(123456789012345678.0), "123456789012345680");
    EXPECT_EQ(results(std::numeric_limits<double>::max()).size(), 309);
    EXPECT_EQ(results(std::numeric_limits<double>::denorm_min()), "0");
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
    EXPECT_EQ(display(1.2345), "1.2345");
    EXPECT_EQ(display(0.1 + 0.2), "0.3001") << "0.30000000000000004 has a non-zero tail";
    EXPECT_EQ(display(1234567.5), "1234567.5");
    EXPECT_EQ(display(0.99999), "1");
}

TEST(NumberFormatLocale, TheGivenOrProcessLocaleDecidesTheSeparatorNeverGrouping)
{
    const QLocale german(QLocale::German, QLocale::Germany);
    EXPECT_EQ(NumberFormat::stringFromDouble(1234567.891, german), "1234567,891");
    EXPECT_EQ(NumberFormat::displayString(-2.00004, german), "-2,0001");
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

// The reading rule, one table for every kind of text: fields, cells and
// stored keypad texts all go through numberFromText.
TEST(NumberReading, OneRuleInEveryLocale)
{
    const QLocale c = QLocale::c();
    const QLocale german("de_DE");
    const QLocale swedish("sv_SE");
    const QLocale hebrew("he_IL");
    const QLocale egyptian("ar_EG");
    const QLocale persian("fa_IR");
    const double inf = std::numeric_limits<double>::infinity();
    struct Row {
        const char16_t* text;
        const QLocale& locale;
        double expected;
    };
    const Row rows[] = {
        // "." always works; the locale's separator too; never both.
        {u"0.125", german, 0.125},
        {u"2,125", german, 2.125},
        {u"1.000,5", german, 0},
        {u"1,125", c, 0},
        {u"1\u066b5", egyptian, 1.5},
        {u"1.5", egyptian, 1.5},
        {u"1\u066b5", c, 0},
        // No grouping, no "+", no trailing text.
        {u"1000000", german, 1000000},
        {u"1 000", c, 0},
        {u"1\u00a0000", swedish, 0},
        {u"1\u066c000", egyptian, 0},
        {u"+5", c, 0},
        // Exponents in every locale, as a spreadsheet writes them too; one
        // beyond a double is infinite or 0, whatever the digits before it.
        {u"1E6", german, 1e6},
        {u"2.5e-3", c, 0.0025},
        {u"2,5e-3", german, 0.0025},
        {u"-1e-2", swedish, -0.01},
        {u"1E+06", c, 1e6},
        {u"\u0661e\u0663", egyptian, 1000},
        {u"1e400", c, inf},
        {u"0.0001e400", c, inf},
        {u"-1e400", c, -inf},
        {u"5e-400", c, 0},
        {u"1e", c, 0},
        {u"e5", c, 0},
        {u".e5", c, 0},
        {u"1e+", c, 0},
        {u"1e5.5", c, 0},
        {u"1e5e5", c, 0},
        {u"1e\u22125", swedish, 0},
        {u"Infinitye5", c, 0},
        {u"12 months", c, 0},
        {u"5-", c, 0},
        // Signs: ASCII everywhere, the locale's own where it has one.
        {u"-2.5", swedish, -2.5},
        {u"\u22122,5", swedish, -2.5},
        {u"\u22122.5", c, 0},
        {u"\u200e-2.5", hebrew, -2.5},
        {u"\u061c-1\u066b5", egyptian, -1.5},
        {u"\u200e\u22121\u066b5", persian, -1.5},
        {u"-\u200e1.5", hebrew, -1.5},
        // Any script's decimal digits.
        {u"\u0661\u0662\u066b\u0665", egyptian, 12.5},
        {u"\u06f1\u06f2", c, 12},
        {u"\uff11\uff12.5", c, 12.5},
        {u"\U0001D7D9\U0001D7D8", c, 10},
        {u"\u00b2", c, 0},
        {u"\u2155", c, 0},
        // Blanks around, empty, lone separators.
        {u"  7 ", c, 7},
        {u"", c, 0},
        {u".", c, 0},
        {u"-", c, 0},
        {u"5.", german, 5},
        {u",5", german, 0.5},
        {u".5", c, 0.5},
        // Non-finite spellings and magnitudes beyond a double.
        {u"Infinity", german, inf},
        {u"-Infinity", swedish, -inf},
        {u"\u2212Infinity", swedish, -inf},
        {u"infinity", c, 0},
        {u"-NaN", c, 0},
    };
    for (const Row& row : rows) {
        const QString text = QString::fromUtf16(row.text);
        EXPECT_EQ(NumberFormat::numberFromText(text, row.locale), row.expected)
            << text.toStdString() << " in " << row.locale.name().toStdString();
    }
    EXPECT_TRUE(std::isnan(NumberFormat::numberFromText("NaN", german)));
    EXPECT_EQ(NumberFormat::numberFromText(QString(400, u'9'), c), inf);
    EXPECT_EQ(NumberFormat::numberFromText("-" + QString(400, u'9'), c), -inf);
    EXPECT_EQ(NumberFormat::numberFromText("0." + QString(400, u'0') + "1", c), 0);
    EXPECT_EQ(NumberFormat::numberFromText("0.1000000000000000055511151231257827", c), 0.1)
        << "long texts round correctly";
}

// Where "." groups thousands, "1.234" could be either number: it is marked,
// not read. The rows say why each text is or is not ambiguous.
TEST(NumberReading, APointBeforeThreeDigitsIsAmbiguousWhereItGroupsThousands)
{
    const QLocale c = QLocale::c();
    const QLocale german("de_DE");
    const QLocale italian("it_IT");
    const QLocale brazilian("pt_BR");
    const QLocale english("en_US");
    const QLocale swiss("de_CH"); // groups with "’", not "."
    struct Row {
        const char16_t* text;
        const QLocale& locale;
        const char* problem; // empty: read as `value`
        double value;
    };
    const Row rows[] = {
        {u"1.234", german, "Ambiguous: write 1234 or 1,234", 0},
        {u"-12.500", german, "Ambiguous: write -12500 or -12,500", 0},
        {u" 1.234 ", italian, "Ambiguous: write 1234 or 1,234", 0},
        {u"\uff11.\uff12\uff13\uff14", brazilian, "Ambiguous: write 1234 or 1,234", 0},
        {u"1234.567", german, "Ambiguous: write 1234567 or 1234,567", 0},
        // A grouped thousand has no leading 0 and three digits exactly.
        {u"0.125", german, "", 0.125},
        {u".125", german, "", 0.125},
        {u"-0.500", german, "", -0.5},
        {u"1.2345", german, "", 1.2345},
        {u"1.23", german, "", 1.23},
        // The locale's own separator, an exponent: nothing to choose.
        {u"1,234", german, "", 1.234},
        {u"1.234e0", german, "", 1.234},
        // Where "." is no grouping separator it is the decimal point.
        {u"1.234", c, "", 1.234},
        {u"1.234", english, "", 1.234},
        {u"1.234", swiss, "", 1.234},
        // Everything else that cannot be read.
        {u"1.234,5", german, "Not a number", 0},
        {u"12,5x", c, "Not a number", 0},
        {u"\u200e", c, "Not a number", 0},
        {u"", german, "", 0},
        {u"  ", c, "", 0},
    };
    for (const Row& row : rows) {
        const QString text = QString::fromUtf16(row.text);
        SCOPED_TRACE(text.toStdString() + " in " + row.locale.name().toStdString());
        EXPECT_EQ(NumberFormat::problemWith(text, row.locale), QString::fromUtf8(row.problem));
        EXPECT_EQ(NumberFormat::numberFromText(text, row.locale), row.value);
        EXPECT_EQ(NumberFormat::isUnreadable(text, row.locale), *row.problem != 0);
    }
}

// Table cells show every digit they hold, so they read back unchanged.
TEST(NumberWriting, CellsShowTheShortestExactDecimal)
{
    const QLocale persian("fa_IR");
    EXPECT_EQ(NumberFormat::exactString(-1234567.125, persian),
              QString::fromUtf16(u"-1234567\u066b125"));
    EXPECT_EQ(NumberFormat::exactString(1e-7, QLocale::c()), "0.0000001");
    EXPECT_EQ(NumberFormat::exactString(123456789012345678.0, QLocale::c()), "123456789012345680");
    EXPECT_EQ(NumberFormat::exactString(0.1 + 0.2, QLocale::c()), "0.30000000000000004");
}

} // namespace
