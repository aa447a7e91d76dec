// Every locale the system has (`locale -a`): numbers written by both formats
// read back to the value the format rounded to, and the texts hold nothing
// outside ASCII but the locale's decimal separator.

#include "numerics/NumberFormat.h"

#include <QLocale>
#include <QStringList>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

QStringList installedLocales()
{
    QStringList names;
    FILE* pipe = popen("locale -a", "r");
    if (!pipe)
        return names;
    char line[256];
    while (fgets(line, sizeof line, pipe))
        names << QString::fromLocal8Bit(line).trimmed();
    pclose(pipe);
    names.removeAll(QString());
    return names;
}

// The locale's decimal separator as the test expects it written: what the
// locale says, without its invisible (format) characters.
QString expectedSeparator(const QLocale& locale)
{
    QString separator;
    for (const QChar c : locale.decimalPoint()) {
        if (c.category() != QChar::Other_Format)
            separator += c;
    }
    return separator;
}

// "-"? digits (separator digits)?, or one of the three spellings.
bool wellFormed(const QString& text, const QString& separator)
{
    if (text == u"NaN" || text == u"Infinity" || text == u"-Infinity")
        return true;
    qsizetype i = text.startsWith(u'-') ? 1 : 0;
    const auto digits = [&] {
        const qsizetype from = i;
        while (i < text.size() && text[i] >= u'0' && text[i] <= u'9')
            ++i;
        return i > from;
    };
    if (!digits())
        return false;
    if (i < text.size() && QStringView(text).mid(i).startsWith(separator)) {
        i += separator.size();
        if (!digits())
            return false;
    }
    return i == text.size();
}

// 2,000 values: the special ones, halfway cases of both formats, and
// random magnitudes from 1e-9 to 1e15 of both signs, some with few digits.
std::vector<double> sampleValues(std::mt19937_64& random)
{
    const double inf = std::numeric_limits<double>::infinity();
    std::vector<double> values = {0.0, -0.0, std::nan(""), inf, -inf, 0.0005, -0.00005, 2.675};
    std::uniform_real_distribution<double> exponent(-9, 15);
    std::uniform_int_distribution<int> sign(0, 1);
    std::uniform_int_distribution<long long> integer(0, 9999999999LL);
    std::uniform_int_distribution<int> decimals(0, 6);
    while (values.size() < 2000) {
        const double s = sign(random) ? -1.0 : 1.0;
        switch (values.size() % 4) {
        case 0: // a tie at the 4th decimal (results) ...
            values.push_back(s * double(2 * integer(random) + 1) / 2000);
            break;
        case 1: // ... and at the 5th (keypad)
            values.push_back(s * double(2 * integer(random) + 1) / 20000);
            break;
        case 2: // a typed-looking amount
            values.push_back(s * double(integer(random)) / std::pow(10.0, decimals(random)));
            break;
        default:
            values.push_back(s * std::pow(10.0, exponent(random)));
        }
    }
    return values;
}

struct Format {
    const char* name;
    QString (*write)(double, const QLocale&);
    double halfUnit; // the most rounding may move a value
    bool awayFromZero;
};

const Format formats[] = {
    {"result", NumberFormat::stringFromDouble, 0.0005, false},
    {"keypad", NumberFormat::displayString, 0.0001, true},
};

TEST(EveryLocale, BothFormatsReadBackToTheRoundedValue)
{
    const QStringList names = installedLocales();
    ASSERT_GE(names.size(), 400) << "only " << names.size()
                                 << " locales: run scripts/setup (locales-all)";
    for (const char* needed : {"C", "de_DE.utf8", "sv_SE.utf8", "he_IL.utf8", "ar_EG.utf8", "fa_IR",
                               "ur_PK", "ps_AF", "nb_NO.utf8", "fi_FI.utf8"})
        EXPECT_TRUE(names.contains(QLatin1String(needed))) << needed;

    // The same values in every locale; their C texts, read by Qt's own
    // parser, give the values the formats rounded to. A locale may change
    // nothing but the separator.
    const QLocale c = QLocale::c();
    std::mt19937_64 random(20240305);
    const std::vector<double> values = sampleValues(random);
    struct Expected {
        double value;
        QString cText[2];
        double rounded[2];
    };
    std::vector<Expected> expected;
    for (const double value : values) {
        Expected e{value, {}, {}};
        for (int f = 0; f < 2; ++f) {
            e.cText[f] = formats[f].write(value, c);
            e.rounded[f] = std::isfinite(value) ? c.toDouble(e.cText[f]) : value;
        }
        expected.push_back(e);
    }

    // Names that give the same QLocale ("de_DE", "de_DE.utf8") behave alike.
    QList<QLocale> locales;
    for (const QString& name : names) {
        const QLocale locale(name);
        if (!locales.contains(locale))
            locales << locale;
    }

    int failures = 0;
    for (const QLocale& locale : locales) {
        const QString separator = expectedSeparator(locale);
        ASSERT_FALSE(separator.isEmpty()) << locale.name().toStdString();
        for (const Expected& e : expected) {
            const double magnitude = std::fabs(e.value);
            const double ulp =
                std::nextafter(magnitude, std::numeric_limits<double>::infinity()) - magnitude;
            for (int f = 0; f < 2; ++f) {
                const Format& format = formats[f];
                const QString text = format.write(e.value, locale);
                const double read = NumberFormat::numberFromText(text, locale);
                const bool ok =
                    wellFormed(text, separator) &&
                    QString(text).replace(separator, QStringLiteral(".")) == e.cText[f] &&
                    (std::isnan(e.value) ? std::isnan(read) : read == e.rounded[f]) &&
                    (!std::isfinite(e.value) ||
                     std::fabs(read - e.value) <= format.halfUnit * (1 + 1e-9) + 2 * ulp) &&
                    (!format.awayFromZero || !std::isfinite(e.value) ||
                     std::fabs(read) >= magnitude) &&
                    format.write(read, locale) == text;
                if (!ok && ++failures <= 20) {
                    ADD_FAILURE() << locale.name().toStdString() << " " << format.name << " "
                                  << QString::number(e.value, 'g', 17).toStdString() << " -> \""
                                  << text.toStdString() << "\" -> "
                                  << QString::number(read, 'g', 17).toStdString() << " (C \""
                                  << e.cText[f].toStdString() << "\")";
                }
            }
        }
    }
    EXPECT_EQ(failures, 0);
    std::printf("%lld locales (%lld distinct), %zu values each, both formats\n",
                (long long)names.size(), (long long)locales.size(), values.size());
}

} // namespace
