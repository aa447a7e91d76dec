#include "TvmModel.h"

#include "framework/FinanceMath.h"
#include "reports/QVReport.h"

#include <QLoggingCategory>
#include <climits>
#include <cmath>

Q_LOGGING_CATEGORY(lcTvm, "tallyvane.tvm", QtWarningMsg)

using FinanceMath::growthFactor;
using FinanceMath::growthFactorMinusOne;

namespace {
const QString chartColor = QStringLiteral("#28ABE3");
}

void TvmModel::configureNames()
{
    // The file key is the description key itself, unlike the other screens.
    setNames({QStringLiteral("TvmReportCreatedNotification"),
              QStringLiteral("TvmReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("TVM Calculator"),
              QStringLiteral("tvm_description"), QStringLiteral("tvm_description"),
              QStringLiteral("Tvm")});
}

double TvmModel::equivalentRateOfRateAndCompoundingAndNewCompounding(double rate, int compounding,
                                                                     int newCompounding)
{
    return FinanceMath::equivalentRate(rate, compounding, newCompounding);
}

double TvmModel::equivalentRatePerPeriodWithRateAndCompoundingAndNewCompounding(double rate,
                                                                                int compounding,
                                                                                int newCompounding)
{
    return FinanceMath::equivalentRate(rate, compounding, newCompounding) / double(newCompounding);
}

TvmModel::Terms TvmModel::termsForAnnualRate(double rate) const
{
    const int m = FinanceMath::saturatedInteger(paymentFrequency);
    const double i = FinanceMath::equivalentRate(rate, m, m) / paymentFrequency;
    const double begin = paymentMode == QLatin1String("BEG") ? 1.0 : 0.0;
    return {i, 1.0 + i * begin};
}

TvmModel::Terms TvmModel::terms() const
{
    return termsForAnnualRate(interestRate / 100.0);
}

double TvmModel::futureValueAt(const Terms& t, double n) const
{
    return presentValue * growthFactor(t.i, n) +
           t.annuity * payment * growthFactorMinusOne(t.i, n) / t.i;
}

double TvmModel::presentValueAt(const Terms& t, double n) const
{
    return (futureValue - t.annuity * payment * growthFactorMinusOne(t.i, n) / t.i) /
           growthFactor(t.i, n);
}

double TvmModel::paymentAt(const Terms& t, double n) const
{
    return t.i * (futureValue - presentValue * growthFactor(t.i, n)) /
           (t.annuity * growthFactorMinusOne(t.i, n));
}

double TvmModel::calculateFutureValueWithPeriod(int k) const
{
    return futureValueAt(terms(), k);
}

double TvmModel::calculatePresentValueWithPeriod(int k) const
{
    return presentValueAt(terms(), k);
}

double TvmModel::calculatePaymentWithPeriod(int k) const
{
    return paymentAt(terms(), k);
}

double TvmModel::rateWithPeriod(double n) const
{
    // Bisection on the annual rate between 0 % and 100 %, assuming the
    // future value rises with the rate. At most 1001 future values are
    // evaluated; without convergence the 1002nd midpoint is the answer,
    // unless the search never left a bound (below).
    FinanceMath::clearUpperVectorState();
    double low = 0.0;
    double high = 1.0;
    double rate = 0.5;
    const auto differenceAt = [&](double annual) {
        return futureValueAt(termsForAnnualRate(annual), n) - futureValue;
    };
    for (int evaluations = 0;; ++evaluations) {
        rate = (low + high) / 2;
        if (evaluations == 1001)
            break;
        const double difference = differenceAt(rate);
        if (difference < 0)
            low = rate;
        else
            high = rate;
        if (!(std::fabs(difference) > 1e-6))
            return rate * 100.0;
    }
    // Unconverged at the 0 % or 100 % bound: the rate lies outside the
    // range (below 0 % down to -100 %, above 100 % up to 10,000 % a year)
    // or nowhere, and the search goes on out there; the answer is the rate
    // found, or NaN. An unconverged search inside keeps its last rate.
    if (low == 0.0 || high == 1.0)
        return FinanceMath::rateBeyondBisectionBounds(differenceAt, rate) * 100.0;
    return rate * 100.0;
}

double TvmModel::calculateInterestRateWithPeriod(int k) const
{
    return rateWithPeriod(k);
}

double TvmModel::calculateFutureValue()
{
    return futureValue = futureValueAt(terms(), period);
}

double TvmModel::calculatePresentValue()
{
    return presentValue = presentValueAt(terms(), period);
}

double TvmModel::calculatePayment()
{
    return payment = paymentAt(terms(), period);
}

double TvmModel::calculatePeriod()
{
    const Terms t = terms();
    const double a = payment * t.annuity / t.i;
    period = std::log((futureValue + a) / (presentValue + a)) / std::log1p(t.i);
    return period;
}

double TvmModel::calculateInterestRate()
{
    interestRate = rateWithPeriod(period);
    return interestRate;
}

int TvmModel::chartPeriods() const
{
    if (!(period >= 1))
        return 0;
    return int(std::min(std::trunc(period), double(INT_MAX)));
}

QList<int> TvmModel::chartPeriodList() const
{
    const int periods = chartPeriods();
    QList<int> list;
    list.reserve(std::min(periods, maximumChartPeriods));
    if (periods <= maximumChartPeriods) {
        for (int k = 1; k <= periods; ++k)
            list.append(k);
        return list;
    }
    for (int j = 1; j <= maximumChartPeriods; ++j)
        list.append(int(std::llround(double(j) * periods / maximumChartPeriods)));
    return list;
}

QList<std::optional<double>> TvmModel::dataForLastCalculated() const
{
    QList<std::optional<double>> values;
    const QList<int> periods = chartPeriodList();
    values.reserve(periods.size());
    for (int k : periods) {
        double value = 0.0;
        if (lastCalculated == QLatin1String("FV"))
            value = calculateFutureValueWithPeriod(k);
        else if (lastCalculated == QLatin1String("PV"))
            value = calculatePresentValueWithPeriod(k);
        else if (lastCalculated == QLatin1String("I/Y"))
            value = calculateInterestRateWithPeriod(k);
        else if (lastCalculated == QLatin1String("PMT"))
            value = calculatePaymentWithPeriod(k);
        values.append(value);
    }
    return values;
}

QStringList TvmModel::xAxisLabels() const
{
    // One more label than points: the axis starts at period 0.
    QStringList labels{QStringLiteral("0")};
    for (int k : chartPeriodList())
        labels << QString::number(k);
    return labels;
}

void TvmModel::freezeChart()
{
    m_chartName = lastCalculated;
    m_chartLabels = xAxisLabels();
    m_chartValues = dataForLastCalculated();
}

Rgba TvmModel::colorForTheLineWithLineNumber(int) const
{
    return QVReport::colorFromHexString(chartColor);
}

MultiLineGraphMarker TvmModel::customViewForLineChartTouchWithXValueAndYValue(const QString&,
                                                                              double y) const
{
    return {QStringLiteral("%1: %2").arg(m_chartName, stringFromDouble(y)), QSizeF(100, 30)};
}

void TvmModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Present Value: %1\n").arg(stringFromDouble(presentValue));
    body += QStringLiteral("Future Value: %1\n").arg(stringFromDouble(futureValue));
    body += QStringLiteral("Interest Rate: %1%\n").arg(stringFromDouble(interestRate));
    body += QStringLiteral("Period: %1\n").arg(stringFromDouble(period));
    // The "Payment" line repeats the period: the report format has it so.
    body += QStringLiteral("Payment: %1\n").arg(stringFromDouble(period));
    body += QStringLiteral("Payment Frequency: %1\n").arg(stringFromDouble(paymentFrequency));
    body += QStringLiteral("Mode: %1\n").arg(paymentMode);
    writeReport(userInfo, QStringLiteral("Time Value of Money"), chartColor, body);
    qCDebug(lcTvm) << report().contents;
}
