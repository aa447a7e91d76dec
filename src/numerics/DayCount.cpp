#include "DayCount.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace DayCount {

namespace {

bool lastDayOfFebruary(const QDate& date)
{
    return date.month() == 2 && date.day() == date.daysInMonth();
}

// The 30/360 days between (y1, m1, d1) and (y2, m2, d2), the days already
// moved as the rule wants.
int thirtyDays(const QDate& start, int d1, const QDate& end, int d2)
{
    return (end.year() - start.year()) * 360 + (end.month() - start.month()) * 30 + (d2 - d1);
}

// Whether a 29 February lies between `start` and `end` (start ≤ end, at
// most a year apart), the start's own included.
bool leapDayBetween(const QDate& start, const QDate& end)
{
    const QDate firstMarch(start.year(), 3, 1);
    if (QDate::isLeapYear(start.year()) && start < firstMarch && end >= firstMarch)
        return true;
    const QDate endMarch(end.year(), 3, 1);
    return QDate::isLeapYear(end.year()) && end >= endMarch && start < endMarch;
}

double actualActual(const QDate& start, const QDate& end)
{
    const qint64 days = start.daysTo(end);
    const bool withinAYear = start.year() == end.year() ||
                             (end.year() == start.year() + 1 &&
                              (start.month() > end.month() ||
                               (start.month() == end.month() && start.day() >= end.day())));
    if (withinAYear) {
        const bool leap = (start.year() == end.year() && QDate::isLeapYear(start.year())) ||
                          leapDayBetween(start, end) || (end.month() == 2 && end.day() == 29);
        return double(days) / (leap ? 366 : 365);
    }
    // The average length of the calendar years from the start's to the end's.
    const qint64 spanned = QDate(start.year(), 1, 1).daysTo(QDate(end.year() + 1, 1, 1));
    const double years = end.year() - start.year() + 1;
    return double(days) / (double(spanned) / years);
}

} // namespace

const QStringList& basisWords()
{
    static const QStringList words{QStringLiteral("30/360"), QStringLiteral("Actual/actual"),
                                   QStringLiteral("Actual/360"), QStringLiteral("Actual/365"),
                                   QStringLiteral("30E/360")};
    return words;
}

std::optional<Basis> basisOf(const QString& word)
{
    const qsizetype index = basisWords().indexOf(word);
    if (index < 0)
        return std::nullopt;
    return Basis(index);
}

QString wordOf(Basis basis)
{
    return basisWords().value(int(basis));
}

int days360(const QDate& start, const QDate& end, bool european)
{
    int d1 = start.day();
    int d2 = end.day();
    if (european) {
        d1 = std::min(d1, 30);
        d2 = std::min(d2, 30);
    } else {
        if (d1 == 31 || lastDayOfFebruary(start))
            d1 = 30;
        if (d2 == 31 && d1 == 30)
            d2 = 30;
    }
    return thirtyDays(start, d1, end, d2);
}

int days(const QDate& start, const QDate& end, Basis basis)
{
    switch (basis) {
    case Basis::Us30360:
        return days360(start, end, false);
    case Basis::European30360:
        return days360(start, end, true);
    default:
        return int(start.daysTo(end));
    }
}

double yearFraction(const QDate& from, const QDate& to, Basis basis)
{
    if (!from.isValid() || !to.isValid())
        return std::numeric_limits<double>::quiet_NaN();
    QDate start = from;
    QDate end = to;
    if (end < start)
        std::swap(start, end);
    if (start == end)
        return 0;
    switch (basis) {
    case Basis::Us30360: {
        int d1 = start.day();
        int d2 = end.day();
        if (d1 == 31 && d2 == 31) {
            d1 = d2 = 30;
        } else if (d1 == 31) {
            d1 = 30;
        } else if (d1 == 30 && d2 == 31) {
            d2 = 30;
        } else if (lastDayOfFebruary(start) && lastDayOfFebruary(end)) {
            d1 = d2 = 30;
        } else if (lastDayOfFebruary(start)) {
            d1 = 30;
        }
        return thirtyDays(start, d1, end, d2) / 360.0;
    }
    case Basis::ActualActual:
        return actualActual(start, end);
    case Basis::Actual360:
        return start.daysTo(end) / 360.0;
    case Basis::Actual365:
        return start.daysTo(end) / 365.0;
    case Basis::European30360:
        return days360(start, end, true) / 360.0;
    }
    return 0;
}

} // namespace DayCount
