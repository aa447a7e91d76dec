#pragma once

#include <QLocale>
#include <QString>

// The app's number formats. Both take the shortest decimal that reads back
// as the same double and round that decimal, so 0.0625 is a tie while
// 2.675 (stored as 2.67499999...) is still treated as the 2.675 it prints as.
// No grouping; the locale's decimal separator and minus sign; NaN and the
// infinities are "NaN", "Infinity" and "-Infinity" everywhere.
namespace NumberFormat {

enum class Rounding {
    HalfEven,     // ties go to the even digit
    AwayFromZero, // any discarded non-zero digit rounds the magnitude up
};

QString format(double value, int maxFractionDigits, Rounding rounding,
               const QLocale& locale = QLocale());

// Results and report lines: at most 3 fraction digits, half-to-even.
QString stringFromDouble(double value, const QLocale& locale = QLocale());

// The keypad display: at most 4 fraction digits, away from zero.
QString displayString(double value, const QLocale& locale = QLocale());

// Machine-readable text: 17 significant digits, "." as separator, and the
// same spellings for NaN and the infinities.
QString preciseString(double value);

// A number as typed into a table cell or a period field: the longest
// leading decimal number (blanks, a sign, digits, one decimal point, an
// exponent), 0 when there is none. "." and the locale's decimal point both
// count; a number too large for a double is infinite.
double plainDecimalValue(const QString& text);

// A typed number: the locale's form first, then the C form (so "1.5" reads
// in a comma locale too, and "NaN", "Infinity" read back); empty or
// unreadable text is 0.
double numberFromText(const QString& text, const QLocale& locale = QLocale());

} // namespace NumberFormat
