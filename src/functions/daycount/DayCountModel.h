#pragma once

#include "framework/QVFunctionModel.h"

#include <QDate>

// The date worksheet: the days between two dates and the part of a year
// they make on a day-count basis (the spreadsheet's DAYS360 for the 30/360
// bases, the calendar's days for the others; YEARFRAC for the year
// fraction), and the start moved by a number of days with that date's
// weekday. The library's DayCount holds the rules.
class DayCountModel : public QVFunctionModel {
    Q_OBJECT
    Q_PROPERTY(QString start READ startText)
    Q_PROPERTY(QString end READ endText)
    Q_PROPERTY(QString basis MEMBER basis)
    Q_PROPERTY(double addDays MEMBER addDays)
    Q_PROPERTY(double days MEMBER days)
    Q_PROPERTY(double yearFraction MEMBER yearFraction)
    Q_PROPERTY(QString date MEMBER date)
    Q_PROPERTY(QString weekday MEMBER weekday)

public:
    using QVFunctionModel::QVFunctionModel;

    // The calendar's years a date is written in (YYYY-MM-DD).
    static constexpr int firstYear = 1;
    static constexpr int lastYear = 9999;

    QDate start; // invalid when none was given or it cannot be read
    QDate end;
    // Why the start, the end or the days to add cannot be used, naming the
    // field; empty when they can.
    QString startProblem;
    QString endProblem;
    QString addDaysProblem;
    QString basis = QStringLiteral("30/360"); // one of DayCount::basisWords()
    double addDays = 0;                       // whole days; the fraction is dropped
    double days = 0;
    double yearFraction = 0;
    QString date;    // start + addDays, YYYY-MM-DD; empty when there is none
    QString weekday; // that date's day of the week ("Monday")

    QString startText() const { return start.toString(Qt::ISODate); }
    QString endText() const { return end.toString(Qt::ISODate); }

    void calculateResult() override;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;
};
