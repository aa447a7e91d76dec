#include "TvmModel.h"

#include "numerics/FinanceMath.h"
#include "numerics/RootSearch.h"
#include "store/QVReport.h"

#include <QLoggingCategory>
#include <climits>
#include <cmath>
#include <limits>

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

TvmModel::RateAnswer TvmModel::rateWithPeriod(double n) const
{
    // The shared rate search over the rate per period i (every rate from
    // just above −100 % a period up, whichever way the future value runs);
    // of several rates the one nearest 10 % a year. The annual rate is i
    // times the payments a year.
    const double f = paymentFrequency;
    if (!(f >= 1))
        return {std::numeric_limits<double>::quiet_NaN(),
                QStringLiteral("No rate: choose a payment frequency.")};
    const bool beginning = paymentMode == QLatin1String("BEG");
    const auto solve = [&](double pv, double pmt, double fv) {
        return RootSearch::tvmRoots(n, pv, pmt, fv, beginning, 0.1 / f);
    };
    const RootSearch::Roots roots = solve(presentValue, payment, futureValue);
    if (!roots.empty())
        return {roots.nearest(0.1 / f) * f * 100.0, {}};
    return {std::numeric_limits<double>::quiet_NaN(),
            RootSearch::noTvmRateReason(
                roots.everywhere, presentValue, payment, futureValue,
                [&](double pv, double pmt, double fv) { return !solve(pv, pmt, fv).empty(); })};
}

double TvmModel::calculateInterestRateWithPeriod(int k) const
{
    return rateWithPeriod(k).rate;
}

void TvmModel::explainSolve(const char* solved, const QString& reason)
{
    explainEntries({"presentValue", "futureValue", "interestRate", "period", "payment"});
    setNote(QString::fromLatin1(solved), {});
    const double f = paymentFrequency;
    QString rateProblem;
    if (!(f >= 1))
        rateProblem = QStringLiteral("Choose a payment frequency.");
    else if (interestRate == 0)
        rateProblem =
            QStringLiteral("I/Y 0 divides by zero in these formulas: enter a rate other than 0.");
    else if (terms().i <= -1)
        // At -100 % a period nothing is left to grow; below it the growth
        // is a power of a negative number.
        rateProblem = QStringLiteral("I/Y must be above %1 % (-100 % a period).").arg(-100 * f);
    explain(solved, {rateProblem, reason, tooLarge()});
}

double TvmModel::calculateFutureValue()
{
    futureValue = futureValueAt(terms(), period);
    explainSolve("futureValue", {});
    return futureValue;
}

double TvmModel::calculatePresentValue()
{
    presentValue = presentValueAt(terms(), period);
    explainSolve("presentValue", {});
    return presentValue;
}

double TvmModel::calculatePayment()
{
    payment = paymentAt(terms(), period);
    // No periods, no payments to spread the difference over.
    explainSolve("payment",
                 period == 0 ? QStringLiteral("Enter the number of periods, N.") : QString());
    return payment;
}

double TvmModel::calculatePeriod()
{
    const Terms t = terms();
    const double a = payment * t.annuity / t.i;
    const double from = presentValue + a;
    const double to = futureValue + a;
    period = std::log(to / from) / std::log1p(t.i);
    // (1 + i)^N = (FV + a) / (PV + a) has one N when the ratio is above 0;
    // at 0 / 0 the balance never moves and every N fits.
    QString reason;
    if (from == 0 && to == 0)
        reason = QStringLiteral(
            "Every N fits: PMT just offsets the interest, so the balance never changes.");
    else if (std::isfinite(from) && std::isfinite(to))
        reason = QStringLiteral("No N: no number of periods gives this FV from PV and PMT.");
    explainSolve("period", reason);
    return period;
}

double TvmModel::calculateInterestRate()
{
    const RateAnswer answer = rateWithPeriod(period);
    interestRate = answer.rate;
    explainEntries({"presentValue", "futureValue", "period", "payment"});
    setNote(QStringLiteral("interestRate"), answer.reason);
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
