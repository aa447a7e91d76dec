#pragma once

#include "framework/QVFunctionModel.h"

#include <QList>
#include <QStringList>

// Depreciation of an asset over its life, year by year, by one of four
// methods (the spreadsheet functions of the same names):
// - "SL", straight line: (cost − salvage) ÷ life a year;
// - "SYD", sum of the years' digits: (cost − salvage) × (life − n + 1) × 2
//   ÷ (life × (life + 1)) in asset year n;
// - "DDB", declining balance at `factor` percent of the straight-line rate
//   (200 for double declining), switching to straight line over the years
//   left when that is larger, never below the salvage value;
// - "DB", fixed-declining balance at the rate 1 − (salvage ÷ cost)^(1/life)
//   rounded to three decimals.
// The first year holds `firstYearMonths` months (1 to 12). SL and DDB take
// the life as given, fractions included: each calendar year holds its share
// of a year of life (the first year's months ÷ 12, whole years after, and
// what is left of the life in the last), so a life of 5.5 years bought in
// January runs six calendar years, the last holding half a year, and both
// reach the salvage value at its end. SYD counts whole years of life by its
// definition (a fractional life is cut to whole years, with a note) and
// spreads each asset year over the calendar years it falls in; DB takes
// that part of its first year's rate and the rest in a last year. With
// fewer than 12 months in the first year the schedule runs one calendar
// year longer.
// Bad inputs (a life below 1, no cost, a method it does not know) give NaN
// with a note saying why and
// an empty schedule, never a hang: the schedule has at most maximumYears + 1
// rows.
class DepreciationModel : public QVFunctionModel {
    Q_OBJECT
    Q_PROPERTY(double cost MEMBER cost)
    Q_PROPERTY(double salvage MEMBER salvage)
    Q_PROPERTY(double life MEMBER life)
    Q_PROPERTY(double firstYearMonths MEMBER firstYearMonths)
    Q_PROPERTY(QString method MEMBER method)
    Q_PROPERTY(double factor MEMBER factor)
    Q_PROPERTY(double firstYearDepreciation MEMBER firstYearDepreciation)
    Q_PROPERTY(double totalDepreciation MEMBER totalDepreciation)

public:
    using QVFunctionModel::QVFunctionModel;

    struct Year {
        int year = 0; // 1, 2, ...
        double depreciation = 0;
        double accumulated = 0;
        double bookValue = 0;
    };

    static constexpr int maximumYears = 1000;
    // The methods, in the order the screen offers them.
    static const QStringList& methods();

    double cost = 0;
    double salvage = 0;
    double life = 0; // years
    double firstYearMonths = 12;
    QString method = QStringLiteral("SL"); // one of methods()
    double factor = 200;                   // percent, for DDB
    double firstYearDepreciation = 0;
    double totalDepreciation = 0;
    QList<Year> schedule;

    void calculateResult() override;
    // The schedule as CSV: "year,depreciation,accumulated,bookValue".
    QByteArray scheduleCsv() const;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;

private:
    // The share of a year of life in each calendar year, for SL and DDB.
    QList<double> yearShares(double months) const;
    QList<double> assetYears(int years) const;
    QList<double> decliningBalance(const QList<double>& shares) const;
    QList<double> fixedDecliningBalance(int calendarYears, double months) const;
};
