#include "NpvModel.h"

#include "numerics/RootSearch.h"
#include "platform/NotificationCenter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// How many of `cashFlows` the first `count` are: none for a count below 0,
// all of them for one beyond the list.
qsizetype flowsInUse(const QList<double>& cashFlows, int count)
{
    return std::min<qsizetype>(std::max(count, 0), cashFlows.size());
}

// The present value of the first `count` flows at a rate given as a
// fraction: Σ CF[t] / (1 + x)^t, the first flow undiscounted.
double presentValue(const QList<double>& cashFlows, int count, double x)
{
    const qsizetype n = flowsInUse(cashFlows, count);
    double sum = 0;
    for (qsizetype t = 0; t < n; ++t)
        sum += cashFlows.at(t) / std::pow(1.0 + x, double(t));
    return sum;
}

} // namespace

NpvModel::NpvModel(QObject* parent) : QVFunctionModel(parent), cashArray(cashFlowCapacity, 0.0)
{
    // Cash flows come from the table, whoever posts them.
    NotificationCenter::defaultCenter().addObserver(
        this, QStringLiteral("CashChangedNotification"),
        [this](const Notification& n) { cashChangedNotificationReceived(n.userInfo); });
}

void NpvModel::configureNames()
{
    setNames({QStringLiteral("NpvReportCreatedNotification"),
              QStringLiteral("NpvReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("NPV Calculator"),
              QStringLiteral("npv_description"), QStringLiteral("npv"), QStringLiteral("Npv")});
}

double NpvModel::netPresentValue(const QList<double>& cashFlows, int count, double rate)
{
    return presentValue(cashFlows, count, rate / 100.0);
}

NpvModel::Rates NpvModel::internalRatesOfReturn(const QList<double>& cashFlows, int count)
{
    // The shared rate search replaces a bisection between −100 % and 100 %
    // that stopped when the NPV came within 1e-6 of 0 and assumed the NPV
    // falls as the rate rises: that one gave NaN for a borrower's flows
    // (money in first), for rates above 100 % and often for two roots. This
    // one finds every rate in its range to full precision; where the old
    // one found a rate, the answers differ only beyond its tolerance.
    const qsizetype n = flowsInUse(cashFlows, count);
    bool anyPositive = false;
    bool anyNegative = false;
    for (qsizetype t = 0; t < n; ++t) {
        anyPositive = anyPositive || cashFlows.at(t) > 0;
        anyNegative = anyNegative || cashFlows.at(t) < 0;
    }
    if (!anyPositive && !anyNegative)
        return {{0.0}, {}}; // all 0 (or none): every rate fits; 0 is the plainest
    if (!anyPositive || !anyNegative)
        return {{}, RootSearch::noRateReason(QStringLiteral("IRR"), anyPositive, anyNegative)};
    // Σ CF[t]·v^t with v = 1/(1 + x), by Horner's rule from the last flow.
    const auto presentValueAt = [&](double x) {
        const double v = 1.0 / (1.0 + x);
        double sum = 0;
        for (qsizetype t = n; t-- > 0;)
            sum = sum * v + cashFlows.at(t);
        return sum;
    };
    const std::vector<double> amounts(cashFlows.cbegin(), cashFlows.cbegin() + n);
    const RootSearch::Roots roots = RootSearch::signChanges(amounts) <= 1
                                        ? RootSearch::findOnlyRoot(presentValueAt, 0.1)
                                        : RootSearch::findRoots(presentValueAt);
    if (roots.empty())
        return {{}, RootSearch::noRateReason(QStringLiteral("IRR"), true, true)};
    Rates rates;
    for (double root : roots.all)
        rates.all.append(root * 100.0);
    return rates;
}

double NpvModel::internalRateOfReturn(const QList<double>& cashFlows, int count)
{
    RootSearch::Roots roots;
    for (double rate : internalRatesOfReturn(cashFlows, count).all)
        roots.all.push_back(rate);
    return roots.nearest(10.0);
}

double NpvModel::calculateNpvWithCashFlowsAndRate(const QList<double>& cashFlows, double rate) const
{
    return netPresentValue(cashFlows, period, rate);
}

double NpvModel::calculateIrrWithCashFlows(const QList<double>& cashFlows) const
{
    return internalRateOfReturn(cashFlows, period);
}

NpvModel::Figure NpvModel::modifiedRateOfReturn(const QList<double>& cashFlows, int count,
                                                double financeRate, double reinvestRate)
{
    const qsizetype n = flowsInUse(cashFlows, count);
    if (n < 2)
        return {noNumber, QStringLiteral("MIRR needs at least two cash flows.")};
    // Σ inflow·(1 + reinvest)^(n−1−t) and Σ outflow / (1 + finance)^t.
    const double growInflow = std::log1p(reinvestRate / 100);
    const double growOutflow = std::log1p(financeRate / 100);
    double inflows = 0;
    double outflows = 0;
    for (qsizetype t = 0; t < n; ++t) {
        const double flow = cashFlows.at(t);
        if (flow > 0)
            inflows += flow * std::exp(growInflow * double(n - 1 - t));
        else if (flow < 0)
            outflows += flow * std::exp(-growOutflow * double(t));
    }
    if (inflows == 0 || outflows == 0)
        return {noNumber, QStringLiteral("MIRR needs a cash flow in and a cash flow out.")};
    if (financeRate <= -100 || reinvestRate <= -100)
        return {noNumber, QStringLiteral("The finance and reinvestment rates must be above "
                                         "-100 %.")};
    const double value = std::expm1(std::log(inflows / -outflows) / double(n - 1)) * 100;
    return {value, std::isfinite(value) ? QString() : tooLarge()};
}

NpvModel::Figure NpvModel::paybackPeriods(const QList<double>& cashFlows, int count, double rate)
{
    const qsizetype n = flowsInUse(cashFlows, count);
    const double discount = std::log1p(rate / 100);
    double sum = 0;
    for (qsizetype t = 0; t < n; ++t) {
        const double flow = cashFlows.at(t) * std::exp(-discount * double(t));
        const double before = sum;
        sum += flow;
        if (sum >= 0) {
            // Paid back within period t: the part of its flow the shortfall
            // took. Never negative to begin with: nothing to pay back.
            if (t == 0 || before >= 0)
                return {0, {}};
            return {double(t - 1) - before / flow, {}};
        }
    }
    if (n == 0)
        return {noNumber, QStringLiteral("Enter the cash flows.")};
    return {noNumber, rate == 0 ? QStringLiteral("The cash flows never pay back the outlay.")
                                : QStringLiteral("The discounted cash flows never pay back the "
                                                 "outlay.")};
}

void NpvModel::calculateResult()
{
    npv = calculateNpvWithCashFlowsAndRate(cashArray, discountRate);
    const Rates rates = internalRatesOfReturn(cashArray, period);
    irrAll = rates.all;
    RootSearch::Roots roots;
    roots.all.assign(rates.all.cbegin(), rates.all.cend());
    irr = roots.nearest(10.0);
    // The other rates, when there are several: "also: 20 %".
    QStringList others;
    for (double rate : rates.all) {
        if (rate != irr)
            others << stringFromDouble(rate) + QStringLiteral(" %");
    }
    setNote(QStringLiteral("irr"),
            others.isEmpty() ? rates.reason : QStringLiteral("also: ") + others.join(u", "));

    financeRate = financeRateEntry.value_or(discountRate);
    reinvestRate = reinvestRateEntry.value_or(discountRate);
    const Figure modified = modifiedRateOfReturn(cashArray, period, financeRate, reinvestRate);
    mirr = modified.value;
    setNote(QStringLiteral("mirr"), modified.reason);
    // The NPV less CF0 is the present value of the later flows.
    const double outlay = period > 0 ? -cashArray.value(0) : 0;
    const bool hasOutlay = outlay > 0;
    profitabilityIndex = hasOutlay ? (npv + outlay) / outlay : noNumber;
    setNote(QStringLiteral("profitabilityIndex"),
            hasOutlay ? QString()
                      : QStringLiteral("The profitability index needs an outlay (a negative "
                                       "CF0)."));
    const Figure plain = paybackPeriods(cashArray, period, 0);
    payback = plain.value;
    setNote(QStringLiteral("payback"), plain.reason);
    const Figure discounted = paybackPeriods(cashArray, period, discountRate);
    discountedPayback = discounted.value;
    setNote(QStringLiteral("discountedPayback"),
            discountRate <= -100 ? QStringLiteral("The discount rate must be above -100 %.")
                                 : discounted.reason);
    NotificationCenter::defaultCenter().post(QStringLiteral("ResultCalculatedNotification"), this);
}

void NpvModel::cashChangedNotificationReceived(const QVariantMap& userInfo)
{
    bool ok = false;
    const int tag = userInfo.value(QStringLiteral("tag")).toInt(&ok);
    if (!ok || tag < 0 || tag >= cashArray.size())
        return;
    cashArray[tag] = userInfo.value(QStringLiteral("value")).toDouble();
    calculateResult();
}

void NpvModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Discount Rate: %1%\n").arg(stringFromDouble(discountRate));
    body += QStringLiteral("Period: %1\n").arg(period);
    const int shown = std::min<int>(period, int(cashArray.size()));
    for (int t = 0; t < shown; ++t)
        body += QStringLiteral("CF%1: %2\n").arg(t).arg(stringFromDouble(cashArray.at(t)));
    body += QStringLiteral("NPV: %1\n").arg(stringFromDouble(npv));
    body += QStringLiteral("IRR: %1%\n").arg(stringFromDouble(irr));
    // This calculator's reports carry the compound-interest heading.
    writeReport(userInfo, QStringLiteral("Compound Interest"), QStringLiteral("#DB3340"), body);
}
