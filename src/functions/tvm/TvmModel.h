#pragma once

#include "charts/MultiLineGraphDataSource.h"
#include "framework/QVFunctionModel.h"

// Time value of money: solves the present value, future value, payment,
// annual rate or number of periods of a level-payment annuity, and supplies
// the chart of the last solved quantity period by period.
//
// All amounts carry the same sign: the present value and the payments
// accumulate into the future value,
//   FV = PV·(1 + i)^n + (1 + i·B)·PMT·((1 + i)^n − 1)/i
// with i the rate per period and B = 1 in "BEG" mode.
class TvmModel : public QVFunctionModel,
                 public SingleLineGraphDataSource,
                 public MultiLineGraphDelegate {
    Q_OBJECT
    Q_INTERFACES(MultiLineGraphDataSource MultiLineGraphDelegate)
    Q_PROPERTY(double presentValue MEMBER presentValue)
    Q_PROPERTY(double futureValue MEMBER futureValue)
    Q_PROPERTY(double interestRate MEMBER interestRate)
    Q_PROPERTY(double period MEMBER period)
    Q_PROPERTY(QString paymentMode MEMBER paymentMode)
    Q_PROPERTY(double paymentFrequency MEMBER paymentFrequency)
    Q_PROPERTY(double payment MEMBER payment)
    Q_PROPERTY(QString lastCalculated MEMBER lastCalculated)

public:
    using QVFunctionModel::QVFunctionModel;

    double presentValue = 0;
    double futureValue = 0;
    double interestRate = 0; // annual, percent
    double period = 0;
    QString paymentMode;
    double paymentFrequency = 0; // payments and compoundings a year
    double payment = 0;
    QString lastCalculated; // "PV", "FV", "I/Y" or "PMT"; empty before the first chart

    // The chart shows at most this many periods. A longer term is sampled
    // evenly over its whole length (a deliberate change from stopping at
    // period 1200): the last point is always the last period.
    static constexpr int maximumChartPeriods = 1200;
    // The periods the chart shows: 1, 2, ..., trunc(period), or that many
    // samples of them.
    QList<int> chartPeriodList() const;

    // Keeps the chart as it is now (name, labels, values): the chart on the
    // screen and the picture mailed with a report show the solve they were
    // drawn for, whatever is changed on the form afterwards.
    void freezeChart();

    double calculatePresentValue();
    double calculateFutureValue();
    double calculatePayment();
    double calculatePeriod();
    double calculateInterestRate();

    double calculateFutureValueWithPeriod(int k) const;
    double calculatePresentValueWithPeriod(int k) const;
    double calculatePaymentWithPeriod(int k) const;
    double calculateInterestRateWithPeriod(int k) const;

    static double equivalentRateOfRateAndCompoundingAndNewCompounding(double rate, int compounding,
                                                                      int newCompounding);
    static double
    equivalentRatePerPeriodWithRateAndCompoundingAndNewCompounding(double rate, int compounding,
                                                                   int newCompounding);

    QList<std::optional<double>> dataForLastCalculated() const;
    QStringList xAxisLabels() const;

    void createReport(const QVariantMap& userInfo) override;

    // The chart's data source and delegate.
    Rgba colorForTheLineWithLineNumber(int) const override;
    QString nameForTheLineWithLineNumber(int) const override { return m_chartName; }
    QStringList dataForXAxisWithLineNumber(int) const override { return m_chartLabels; }
    QList<std::optional<double>> dataForYAxisWithLineNumber(int) const override
    {
        return m_chartValues;
    }
    MultiLineGraphMarker customViewForLineChartTouchWithXValueAndYValue(const QString& x,
                                                                        double y) const override;

protected:
    void configureNames() override;

private:
    struct Terms {
        double i;       // rate per period
        double annuity; // 1 + i·B
    };
    Terms terms() const;
    Terms termsForAnnualRate(double rate) const;
    double futureValueAt(const Terms& t, double n) const;
    double presentValueAt(const Terms& t, double n) const;
    double paymentAt(const Terms& t, double n) const;
    struct RateAnswer {
        double rate; // annual, percent; NaN when there is none
        QString reason;
    };
    RateAnswer rateWithPeriod(double n) const;
    // The notes after a solve of PV, FV, PMT or N: the entries too large to
    // compute with, and why the solved value is no number (the rate's
    // problem, else `reason`, else too large).
    void explainSolve(const char* solved, const QString& reason);
    int chartPeriods() const;

    QString m_chartName;
    QStringList m_chartLabels;
    QList<std::optional<double>> m_chartValues;
};
