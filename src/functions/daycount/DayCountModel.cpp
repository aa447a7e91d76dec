#include "DayCountModel.h"

#include "numerics/DayCount.h"

#include <QLocale>
#include <cmath>
#include <limits>

void DayCountModel::configureNames()
{
    setNames({QStringLiteral("DayCountReportCreatedNotification"),
              QStringLiteral("DayCountReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Days between dates"),
              QStringLiteral("daycount_description"), QStringLiteral("day-count"),
              QStringLiteral("Days between dates")});
}

void DayCountModel::calculateResult()
{
    constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
    clearNotes();
    days = yearFraction = noNumber;
    date.clear();
    weekday.clear();

    const QString between = !startProblem.isEmpty() ? startProblem : endProblem;
    const std::optional<DayCount::Basis> counted = DayCount::basisOf(basis);
    if (!between.isEmpty() || !counted) {
        const QString reason =
            between.isEmpty() ? QStringLiteral("Choose a day count basis.") : between;
        setNote(QStringLiteral("days"), reason);
        setNote(QStringLiteral("yearFraction"), reason);
    } else {
        days = DayCount::days(start, end, *counted);
        yearFraction = DayCount::yearFraction(start, end, *counted);
    }

    const QString moved = !startProblem.isEmpty() ? startProblem : addDaysProblem;
    QString reason = moved;
    if (moved.isEmpty()) {
        // Days past what the calendar's written years hold cannot land on a
        // date: the bound also keeps the sum an integer.
        const double whole = std::trunc(addDays);
        const QDate later = std::fabs(whole) < 4e6 ? start.addDays(qint64(whole)) : QDate();
        if (later.isValid() && later.year() >= firstYear && later.year() <= lastYear) {
            date = later.toString(Qt::ISODate);
            weekday = QLocale(QLocale::English).dayName(later.dayOfWeek());
        } else {
            reason = QStringLiteral("The date falls outside the years %1 to %2.")
                         .arg(firstYear)
                         .arg(lastYear);
        }
    }
    if (date.isEmpty()) {
        setNote(QStringLiteral("date"), reason);
        setNote(QStringLiteral("weekday"), reason);
    }
}

void DayCountModel::createReport(const QVariantMap& userInfo)
{
    const auto orDash = [](const QString& text) {
        return text.isEmpty() ? QStringLiteral("-") : text;
    };
    QString body;
    body += QStringLiteral("Start Date: %1\n").arg(orDash(startText()));
    body += QStringLiteral("End Date: %1\n").arg(orDash(endText()));
    body += QStringLiteral("Basis: %1\n").arg(basis);
    body += QStringLiteral("Days: %1\n").arg(stringFromDouble(days));
    body += QStringLiteral("Year Fraction: %1\n").arg(stringFromDouble(yearFraction));
    body += QStringLiteral("Days Added: %1\n").arg(stringFromDouble(std::trunc(addDays)));
    body += QStringLiteral("Date: %1\n").arg(orDash(date));
    body += QStringLiteral("Weekday: %1\n").arg(orDash(weekday));
    // What the screen says under blank results goes with them, once each.
    QStringList lines;
    for (const char* key : {"days", "date"})
        lines << note(QString::fromLatin1(key));
    lines.removeAll(QString());
    lines.removeDuplicates();
    for (const QString& line : lines)
        body += line + QLatin1Char('\n');
    writeReport(userInfo, QStringLiteral("Days between dates"), QStringLiteral("#2E86AB"), body);
}
