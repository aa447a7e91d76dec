#include "CalculatorModel.h"

#include "expression/EPExpression.h"
#include "framework/FinanceMath.h"
#include "framework/NumberFormat.h"

#include <QLocale>
#include <QLoggingCategory>
#include <cmath>
#include <limits>

Q_LOGGING_CATEGORY(lcSolver, "tallyvane.solver", QtWarningMsg)

using FinanceMath::growthFactor;
using FinanceMath::growthFactorMinusOne;

namespace {

// Repetitions of one cash flow up to this many are summed term by term;
// longer runs use the geometric series, so no frequency can stall a search.
constexpr double termByTermLimit = 64;

} // namespace

double CalculatorModel::equivalentRateOfRateAndCompoundingAndNewCompounding(double rate,
                                                                            int compounding,
                                                                            int newCompounding)
{
    return FinanceMath::equivalentRate(rate, compounding, newCompounding);
}

double CalculatorModel::equivalentRatePerPeriodWithRateAndCompoundingAndNewCompounding(
    double rate, int compounding, int newCompounding)
{
    return FinanceMath::equivalentRate(rate, compounding, newCompounding) / newCompounding;
}

int CalculatorModel::compoundingPeriods() const
{
    return FinanceMath::saturatedInteger(compounding);
}

double CalculatorModel::ratePerPeriod() const
{
    return equivalentRatePerPeriodWithRateAndCompoundingAndNewCompounding(
        rate / 100.0, compoundingPeriods(), paymentFrequency);
}

double CalculatorModel::beginFactor(double i) const
{
    return paymentMode == QLatin1String("BEG") ? 1.0 + i : 1.0;
}

void CalculatorModel::computeFutureValue()
{
    const double i = ratePerPeriod();
    fv = pv * growthFactor(i, period) + beginFactor(i) * pmt * growthFactorMinusOne(i, period) / i;
}

void CalculatorModel::computePresentValue()
{
    const double i = ratePerPeriod();
    pv =
        (fv - beginFactor(i) * pmt * growthFactorMinusOne(i, period) / i) / growthFactor(i, period);
}

void CalculatorModel::computePayment()
{
    const double i = ratePerPeriod();
    pmt = i * (fv - pv * growthFactor(i, period)) /
          (beginFactor(i) * growthFactorMinusOne(i, period));
}

void CalculatorModel::computePeriod()
{
    const double i = ratePerPeriod();
    const double a = pmt * beginFactor(i) / i;
    period = std::log((fv + a) / (pv + a)) / std::log1p(i);
}

void CalculatorModel::computeRate()
{
    double low = 0.0;
    double high = 1.0;
    const int periods = compoundingPeriods();
    const auto futureValueAt = [&](double annual) {
        const double i = equivalentRatePerPeriodWithRateAndCompoundingAndNewCompounding(
            annual, periods, paymentFrequency);
        return pv * growthFactor(i, period) +
               pmt * growthFactorMinusOne(i, period) / i * beginFactor(i);
    };
    constexpr int maximumIterations = 1001;
    for (int iteration = 1; iteration <= maximumIterations; ++iteration) {
        const double mid = (low + high) * 0.5;
        const double difference = futureValueAt(mid) - fv;
        if (difference < 0)
            low = mid;
        else
            high = mid;
        if (std::fabs(difference) <= 1e-6) {
            qCDebug(lcSolver, "%f, iteration:%d", mid, iteration);
            rate = mid * 100.0;
            return;
        }
    }
    // Not reached: the rate ends at the edge of the range all the same.
    const double mid = (low + high) * 0.5;
    qCDebug(lcSolver, "%f, iteration:%d", mid, maximumIterations);
    rate = mid * 100.0;
}

namespace {

// A cash flow read once: its amount and its whole number of periods.
struct ParsedFlow {
    double cash;
    double repeats;
};

std::vector<ParsedFlow> parsed(const CashFlowList& flows)
{
    std::vector<ParsedFlow> out;
    out.reserve(flows.size());
    for (const CashFlow& flow : flows)
        out.push_back({CalculatorModel::numberFromText(flow.cash),
                       std::ceil(CalculatorModel::numberFromText(flow.freq))});
    return out;
}

double npvOf(const std::vector<ParsedFlow>& flows, double rate)
{
    double npv = 0.0;
    double p = 0.0; // the period of the next flow
    const bool logging = lcSolver().isDebugEnabled();
    for (const auto& [cash, repeats] : flows) {
        if (!(repeats > 0))
            continue; // no periods at all
        if (repeats <= termByTermLimit) {
            for (int k = 0; k < int(repeats); ++k) {
                if (logging)
                    qCDebug(lcSolver, "cash:%f period:%d", cash, int(p));
                npv += cash / growthFactor(rate, p);
                p += 1.0;
            }
            continue;
        }
        // cash · Σ (1 + r)^−(p + j) for j < repeats, as a geometric series.
        const double first = cash / growthFactor(rate, p);
        const double sum =
            rate == 0.0 ? repeats : -growthFactorMinusOne(rate, -repeats) * (1.0 + rate) / rate;
        if (logging)
            qCDebug(lcSolver, "cash:%f periods:%f from:%f", cash, repeats, p);
        npv += first * sum;
        p += repeats;
    }
    return npv;
}

} // namespace

double CalculatorModel::calculateNpvWithRate(const CashFlowList& flows, double rate)
{
    return npvOf(parsed(flows), rate);
}

double CalculatorModel::calculateIrr(const CashFlowList& flows)
{
    const std::vector<ParsedFlow> values = parsed(flows);
    constexpr int maximumIterations = 10001;
    double low = -1.0;
    double high = 1.0;
    double previousMid = std::numeric_limits<double>::quiet_NaN();
    for (int iteration = 1;; ++iteration) {
        const double mid = (low + high) * 0.5;
        const double value = npvOf(values, mid);
        if (value > 0)
            low = mid;
        else
            high = mid;
        if (!(std::fabs(value) > 1e-6))
            return mid; // within tolerance (or NaN, which also ends the search)
        // Out of steps, or the bounds no longer move: the search would only
        // repeat itself until the step limit, which gives NaN.
        if (iteration >= maximumIterations || mid == previousMid)
            return std::numeric_limits<double>::quiet_NaN();
        previousMid = mid;
    }
}

std::optional<double> CalculatorModel::evaluateExpression(const QString& text)
{
    return numberByParsingExpression(text, nullptr);
}

double CalculatorModel::numberFromText(const QString& text)
{
    return NumberFormat::numberFromText(text);
}
