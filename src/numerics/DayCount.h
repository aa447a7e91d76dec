#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>

// Day counts as the common spreadsheet functions define them, so that any
// figure can be checked against a spreadsheet: DAYS360 and YEARFRAC, with
// the five bases in the spreadsheets' order (basis 0 to 4).
namespace DayCount {

enum class Basis {
    Us30360 = 0,       // "30/360": US (NASD), with its end-of-February rules
    ActualActual = 1,  // "Actual/actual"
    Actual360 = 2,     // "Actual/360"
    Actual365 = 3,     // "Actual/365"
    European30360 = 4, // "30E/360"
};

// The bases' words, in the spreadsheets' order (the index is the basis).
const QStringList& basisWords();
// The basis a word names, exactly as basisWords() spells it; none for any
// other word.
std::optional<Basis> basisOf(const QString& word);
QString wordOf(Basis basis);

// DAYS360: the days from `start` to `end` counted as twelve months of 30
// days, negative when `end` comes first (the dates are not swapped).
// US (NASD) method: a start on the 31st or on the last day of February
// counts as the 30th; an end on the 31st counts as the 30th only when the
// start (so counted) is the 30th, else it stays the 31st. European method:
// every 31st counts as the 30th, and February is taken as it is.
int days360(const QDate& start, const QDate& end, bool european);

// The days between two dates as `basis` counts them: DAYS360 (US or
// European) for the 30/360 bases, the calendar's days for the others.
// Negative when `end` comes first.
int days(const QDate& start, const QDate& end, Basis basis);

// YEARFRAC: the part of a year between the two dates (in either order; the
// result is never negative).
//  - 30/360: the 30/360 days over 360, with the function's own reading of
//    the US rule: a 31st start (or both dates the 31st) counts as the 30th;
//    an end on the 31st after a start on the 30th counts as the 30th; else
//    two ends of February count as the 30th both, and a start on the last
//    day of February alone as the 30th.
//  - Actual/actual: dates in one calendar year, or at most a year apart
//    (the later date no later in the year than the earlier), divide their
//    days by 366 when a 29 February lies between them (or they are in one
//    leap year), else by 365; dates further apart divide by the average
//    length of the calendar years they touch, first to last.
//  - Actual/360, Actual/365: the calendar's days over 360 or 365.
//  - 30E/360: DAYS360's European days over 360.
// NaN when a date is not valid.
double yearFraction(const QDate& start, const QDate& end, Basis basis);

} // namespace DayCount
