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
    FinanceMath::clearUpperVectorState();
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
    const double mid = (low + high) * 0.5;
    qCDebug(lcSolver, "%f, iteration:%d", mid, maximumIterations);
    // Not reached inside. A search that never left its 0 % or 100 % bound
    // has its answer outside the range (a falling value, a rate above
    // 100 %) or none: it goes on out there and takes that rate, or NaN.
    // Any other unconverged search keeps the rate where it ended.
    if (low == 0.0 || high == 1.0) {
        rate = FinanceMath::rateBeyondBisectionBounds(
                   [&](double annual) { return futureValueAt(annual) - fv; }, mid) *
               100.0;
        return;
    }
    rate = mid * 100.0;
}

namespace {

// A cash flow read once: its amount and its whole number of periods.
struct ParsedFlow {
    double cash;
    double repeats;
};

// The default locale asks the system for its symbols on every number it
// reads (a tenth of a microsecond or more each). The named locale of the
// same language and country holds the same symbols in its own data; when
// every symbol that reading depends on agrees, it reads each text exactly as
// the default one would, without the asking.
QLocale readingLocale()
{
    const QLocale system;
    QLocale named(system.name());
    named.setNumberOptions(system.numberOptions());
    const bool same =
        named.decimalPoint() == system.decimalPoint() &&
        named.groupSeparator() == system.groupSeparator() &&
        named.zeroDigit() == system.zeroDigit() && named.negativeSign() == system.negativeSign() &&
        named.positiveSign() == system.positiveSign() &&
        named.exponential() == system.exponential() && named.percent() == system.percent();
    return same ? named : system;
}

// The list's texts read once for a whole compute, with one locale. Reading
// a text through the locale costs far more than a solver pass, so a text
// equal to the one read just before (the untouched "0" and "1" slots, a
// frequency repeated down the list) takes that value again.
std::vector<ParsedFlow> parsed(const CashFlowList& flows)
{
    const QLocale locale = readingLocale();
    QString lastCash, lastFreq;
    double cash = 0, repeats = 1;
    bool first = true;
    std::vector<ParsedFlow> out;
    out.reserve(flows.size());
    for (const CashFlow& flow : flows) {
        if (first || flow.cash != lastCash) {
            lastCash = flow.cash;
            cash = NumberFormat::numberFromText(flow.cash, locale);
        }
        if (first || flow.freq != lastFreq) {
            lastFreq = flow.freq;
            repeats = std::ceil(NumberFormat::numberFromText(flow.freq, locale));
        }
        first = false;
        out.push_back({cash, repeats});
    }
    return out;
}

// NPV = Σ cash / (1 + r)^p over every period p, written in the discount
// factor v = 1 / (1 + r) and taken from the last entry back (Horner's
// rule): each entry's run of k equal flows is one closed-form term,
// cash · (1 − v^k) / (1 − v), and the total so far is carried back over the
// entry's k periods by v^k. So one pass costs a multiply-add per entry and
// a power per distinct frequency, whatever the frequencies are. The
// rounding differs from the period-by-period sum only in the last bits.
// Entries with no whole period (freq ≤ 0 or unreadable) are skipped.
double npvOf(const std::vector<ParsedFlow>& flows, double rate)
{
    const double logGrowth = std::log1p(rate);
    const double v = 1.0 / (1.0 + rate);
    // v^k and 1 + v + … + v^(k−1) of the last frequency met.
    double cachedRepeats = 1.0;
    double vk = v;
    double runSum = 1.0;
    double npv = 0.0;
    for (auto flow = flows.rbegin(); flow != flows.rend(); ++flow) {
        const double k = flow->repeats;
        if (!(k > 0))
            continue;
        if (k != cachedRepeats) {
            cachedRepeats = k;
            if (rate == 0.0) {
                vk = 1.0;
                runSum = k;
            } else {
                vk = std::exp(-k * logGrowth);
                runSum = std::expm1(-k * logGrowth) / std::expm1(-logGrowth);
            }
        }
        npv = npv * vk + flow->cash * runSum;
    }
    return npv;
}

} // namespace

double CalculatorModel::calculateNpvWithRate(const CashFlowList& flows, double rate)
{
    const std::vector<ParsedFlow> values = parsed(flows);
    if (lcSolver().isDebugEnabled()) {
        double p = 0;
        for (const auto& [cash, repeats] : values) {
            if (repeats > 0) {
                qCDebug(lcSolver, "cash:%f period:%.0f repeats:%.0f", cash, p, repeats);
                p += repeats;
            }
        }
    }
    return npvOf(values, rate);
}

double CalculatorModel::calculateIrr(const CashFlowList& flows)
{
    const std::vector<ParsedFlow> values = parsed(flows);
    FinanceMath::clearUpperVectorState();
    constexpr int maximumIterations = 10001;
    double low = -1.0;
    double high = 1.0;
    double previousMid = std::numeric_limits<double>::quiet_NaN();
    for (int iteration = 1;; ++iteration) {
        const double mid = (low + high) * 0.5;
        const double value = npvOf(values, mid);
        // An NPV that is not a number (the unused entries' terms turn 0/0
        // or ∞·0 near -100 %) means there is no rate to find: NaN, rather
        // than the rate where the search happened to be.
        if (std::isnan(value))
            return std::numeric_limits<double>::quiet_NaN();
        if (value > 0)
            low = mid;
        else
            high = mid;
        if (std::fabs(value) <= 1e-6)
            return mid;
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
