#include "numerics/DateText.h"

#include <gtest/gtest.h>

namespace {

// Typed dates: YYYY-MM-DD with or without leading zeros, only days that
// exist; the expected dates are the calendar's.
TEST(DateReading, IsoDatesWithOrWithoutLeadingZerosAndOnlyRealDays)
{
    const struct {
        const char16_t* text;
        QDate expected; // invalid: no date
    } rows[] = {
        {u"2025-07-15", QDate(2025, 7, 15)},
        {u"2025-7-15", QDate(2025, 7, 15)},
        {u"2025-7-5", QDate(2025, 7, 5)},
        {u" 2027-01-31 ", QDate(2027, 1, 31)},
        {u"\u200f2027-01-31", QDate(2027, 1, 31)}, // a right-to-left keyboard's mark
        {u"\u0662\u0660\u0662\u0665-\u0667-\u0661\u0665", QDate(2025, 7, 15)},
        {u"2024-02-29", QDate(2024, 2, 29)}, // a leap day
        {u"2025-02-29", {}},
        {u"2025-02-30", {}},
        {u"2025-13-01", {}},
        {u"2025-00-10", {}},
        {u"2025-04-31", {}},
        {u"31/03/2027", {}},
        {u"2027/03/31", {}},
        {u"25-07-15", {}},
        {u"02025-07-15", {}},
        {u"2025-007-15", {}},
        {u"2025-07-15T10:00", {}},
        {u"2025-07-", {}},
        {u"2025--15", {}},
        {u"0000-01-01", {}},
        {u"", {}},
    };
    for (const auto& row : rows) {
        const QString text = QString::fromUtf16(row.text);
        const std::optional<QDate> read = DateText::readIsoDate(text);
        EXPECT_EQ(read.value_or(QDate()), row.expected) << text.toStdString();
        const bool marked = !text.trimmed().isEmpty() && !row.expected.isValid();
        EXPECT_EQ(DateText::problemWith(text),
                  marked ? QStringLiteral("Not a date: use YYYY-MM-DD") : QString())
            << text.toStdString();
    }
}

} // namespace
