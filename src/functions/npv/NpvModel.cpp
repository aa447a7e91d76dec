#include "NpvModel.h"

#include "platform/NotificationCenter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// The present value of the first `count` flows at a rate given as a
// fraction: Σ CF[t] / (1 + x)^t, the first flow undiscounted.
double presentValue(const QList<double>& cashFlows, int count, double x)
{
    const qsizetype n = std::min<qsizetype>(std::max(count, 0), cashFlows.size());
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

double NpvModel::internalRateOfReturn(const QList<double>& cashFlows, int count)
{
    // Bisection between -100 % and +100 %, assuming the present value falls
    // as the rate rises (an outlay followed by returns). The pass limit is
    // checked before the tolerance, so the pass after the last allowed one
    // fails even when it lands on the root.
    double lo = -1.0;
    double hi = 1.0;
    for (int pass = 0;; ++pass) {
        const double x = (lo + hi) / 2.0;
        const double v = presentValue(cashFlows, count, x);
        if (pass == maximumIrrPasses)
            return std::numeric_limits<double>::quiet_NaN();
        // A present value that is not a number (the flows' terms overflow
        // or cancel to 0/0 near -100 %) means there is no rate to find:
        // the answer is NaN at once, not the point where the search was.
        if (std::isnan(v))
            return std::numeric_limits<double>::quiet_NaN();
        if (v > 0)
            lo = x;
        else
            hi = x;
        if (std::fabs(v) <= irrTolerance)
            return x * 100.0;
    }
}

double NpvModel::calculateNpvWithCashFlowsAndRate(const QList<double>& cashFlows, double rate) const
{
    return netPresentValue(cashFlows, period, rate);
}

double NpvModel::calculateIrrWithCashFlows(const QList<double>& cashFlows) const
{
    return internalRateOfReturn(cashFlows, period);
}

void NpvModel::calculateResult()
{
    npv = calculateNpvWithCashFlowsAndRate(cashArray, discountRate);
    irr = calculateIrrWithCashFlows(cashArray);
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
