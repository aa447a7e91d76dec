#pragma once

#include "charts/MultiLineGraphDataSource.h"
#include "framework/QVFunctionModel.h"

#include <QList>

// Compound interest: a principal plus a monthly deposit, grown month by month
// at an annual rate compounded `compoundingValue` times a year. Deposits go
// in at the start ("BEG") or the end ("END") of each month; any other mode
// makes no deposits. Also the chart of the balance at the end of each year.
//
// The schedule runs ceil(12 × period) months. Only the first
// maximumScheduledMonths are stepped one by one; a longer term continues
// from there with the closed form of the same monthly step, so even a term
// of 1e300 years takes no longer than a thousand-year one.
class CmpModel : public QVFunctionModel,
                 public SingleLineGraphDataSource,
                 public MultiLineGraphDelegate {
    Q_OBJECT
    // The results the screen shows with a "%" after the number.
    Q_CLASSINFO("percentResults", "apy")
    Q_INTERFACES(MultiLineGraphDataSource MultiLineGraphDelegate)
    Q_PROPERTY(double principalAmount MEMBER principalAmount)
    Q_PROPERTY(double annualRate MEMBER annualRate)
    Q_PROPERTY(double period MEMBER period)
    Q_PROPERTY(double payment MEMBER payment)
    Q_PROPERTY(int compoundingValue MEMBER compoundingValue)
    Q_PROPERTY(QString mode MEMBER mode)
    Q_PROPERTY(QString compounding MEMBER compounding)
    Q_PROPERTY(double balance MEMBER balance)
    Q_PROPERTY(double interestAmount MEMBER interestAmount)
    Q_PROPERTY(double totalPrincipal MEMBER totalPrincipal)
    Q_PROPERTY(double apy MEMBER apy)

public:
    using QVFunctionModel::QVFunctionModel;

    double principalAmount = 0;
    double annualRate = 0;    // nominal, percent
    double period = 0;        // years, may be fractional
    double payment = 0;       // deposited every month
    int compoundingValue = 0; // 12, 4, 2 or 1 a year; 0 until a known word is seen
    QString mode;             // "BEG" or "END"
    QString compounding;      // "Monthly", "Quarterly", "Semiannually" or "Annually"
    double balance = 0;
    double interestAmount = 0; // balance − totalPrincipal
    double totalPrincipal = 0; // principal plus every deposit of the full term
    double apy = 0;            // percent

    // 1000 years. Beyond that the balance comes from the closed form and the
    // chart stops at year 1000.
    static constexpr int maximumScheduledMonths = 12000;

    // Sets compoundingValue from the compounding word; unknown words leave it.
    void setCmpValue();
    void calculateResult() override;

    // n × ((1 + rate/m)^(m/n) − 1), the rate a fraction.
    static double equivalentRateOfRateAndCompoundingAndNewCompounding(double rate, int compounding,
                                                                      int newCompounding);
    // The same per new period: divided by n.
    static double
    equivalentRatePerPeriodWithRateAndCompoundingAndNewCompounding(double rate, int compounding,
                                                                   int newCompounding);

    // The balance at the start (year 0) and at the end of every year of the
    // last calculation; a final part year ends at the end of the term.
    const QList<double>& yearlyBalances() const { return m_yearlyBalances; }

    void createReport(const QVariantMap& userInfo) override;

    // The chart's data source and delegate: one line, the yearly balances.
    Rgba colorForTheLineWithLineNumber(int) const override;
    QString nameForTheLineWithLineNumber(int) const override;
    QStringList dataForXAxisWithLineNumber(int) const override;
    QList<std::optional<double>> dataForYAxisWithLineNumber(int) const override;
    MultiLineGraphMarker customViewForLineChartTouchWithXValueAndYValue(const QString& x,
                                                                        double y) const override;

protected:
    void configureNames() override;

private:
    QList<double> m_yearlyBalances;
};
