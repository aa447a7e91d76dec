#pragma once

#include <QLocale>
#include <QString>
#include <optional>

// The one place where Tallyvane writes and reads numbers. Every text a user
// sees or types (result labels, report lines, form fields, table cells, the
// keypad's display, its cash-flow list and STO/RCL registers, the command
// line) goes through the writing and the reading rule below, so whatever
// is written reads back to the number it shows, in every locale.
//
// Writing: the shortest decimal that reads back as the same double,
// rounded in decimal (so 0.0625 is a tie while 2.675, stored as
// 2.67499999..., is still treated as the 2.675 it prints as); positional,
// never grouped; ASCII digits; an ASCII "-" in front of negatives, whatever
// sign the locale prefers (some write U+2212, some wrap theirs in direction
// marks); the locale's decimal separator, stripped of invisible marks, and
// nothing else outside ASCII. NaN and the infinities are "NaN", "Infinity"
// and "-Infinity" everywhere.
//
// Reading: see numberFromText.
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

// Table cells: every digit of the shortest decimal, unrounded, so a cell
// shows exactly the value it holds.
QString exactString(double value, const QLocale& locale = QLocale());

// An amount kept in whole cents, with exactly two decimals ("1625.00",
// "-0.50"), so the decimals of a column of them line up; otherwise as
// stringFromDouble (positional, never grouped, the locale's separator).
QString money(double value, const QLocale& locale = QLocale());

// The decimal separator both rules use: the locale's, without invisible
// marks ("." if nothing else is left).
QString decimalSeparator(const QLocale& locale = QLocale());

// Machine-readable text for the command line's JSON and `eval`: 17
// significant digits, "." as separator, exponent when shorter; the same
// spellings for NaN and the infinities. Never shown in a field.
QString preciseString(double value);

// Reading, the one rule for every typed or stored number text (form
// fields, period fields, table cells, the command line, the keypad's stored
// texts):
// - invisible marks (Unicode format characters such as the direction marks
//   U+200E, U+200F and U+061C) are ignored wherever they stand, and so is
//   white space around the number;
// - an optional sign: an ASCII "-" or the locale's own minus sign (U+2212
//   in Swedish, for instance); no "+";
// - digits: any Unicode decimal digit, read as its value. This is a
//   deliberate widening: "٣" and "３" read as 3 rather than counting as
//   unreadable, so that text typed on an Arabic, Persian or full-width
//   keyboard means what it shows;
// - at most one decimal separator, the locale's or "."; so "0.125" reads
//   0.125 under a German locale too;
// - an optional exponent after at least one digit: "e" or "E", an optional
//   "+" or "-", digits, in every locale ("1E6", "2.5e-3", "1E+06" as a
//   spreadsheet shows it). Pasted and scientific values mean what they say
//   instead of counting as 0;
// - nothing else: no grouping separators. A text with a second separator
//   ("1.000,5"), a comma in a locale that has none ("1,125" under C) or any
//   other character is unreadable and, like an empty text, counts as 0;
// - "NaN", "Infinity" and "-Infinity" (with either minus) read back as
//   what the writing rule spells that way.
// A number too large for a double is infinite ("1e400", or 400 nines), one
// too small is 0 ("1e-400"): the text is a number, only beyond what a
// double holds, and infinity is what the writing rule spells for it.
//
// Ambiguity: where the locale groups thousands with "." (German, Italian,
// Spanish, Dutch, Brazilian Portuguese, ...), a text whose only separator
// is one "." followed by exactly three digits and nothing else, after a
// non-zero integer part ("1.234", "-12.500"), is ambiguous: a reader of
// that locale takes it for 1234, a reader of the "." rule for 1.234. Such
// a text is not read (it counts as 0 where unreadable texts do) and is
// marked, so the user writes which one is meant. "0.125", ".125" and
// "1.2345" are not ambiguous: a grouped thousand has no leading 0 and
// exactly three digits after each separator. Elsewhere "." is a decimal
// point only and "1.234" reads 1.234.
double numberFromText(const QString& text, const QLocale& locale = QLocale());
// The same rule, telling an unreadable text (nothing) from a number.
std::optional<double> readNumber(const QString& text, const QLocale& locale = QLocale());
// A text that is there but is no number by this rule (and so counts as 0):
// the forms mark such a field.
bool isUnreadable(const QString& text, const QLocale& locale = QLocale());
// Why a text cannot be read, in one plain line for its mark: "Not a
// number", or for an ambiguous one "Ambiguous: write 1234 or 1,234" (both
// readings as this rule takes them, with the locale's decimal separator).
// Empty for a number and for an empty text.
QString problemWith(const QString& text, const QLocale& locale = QLocale());
// The same for a number a sum must take: also "Too large a number to
// compute with." for a text that reads beyond what a double holds ("1e400",
// "Infinity"), so it is named like any other that cannot be used.
QString problemComputingWith(const QString& text, const QLocale& locale = QLocale());

} // namespace NumberFormat
