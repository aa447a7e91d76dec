#include "CalculatorModel.h"

#include "expression/EPExpression.h"
#include "numerics/FinanceMath.h"
#include "numerics/NumberFormat.h"
#include "numerics/RootSearch.h"

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

// CPT I/Y and CPT IRR use the app's one rate search instead of the
// bisections they had (0 % to 100 % a year for I/Y, −100 % to 100 % for
// IRR, each stopping once its value came within 1e-6): those lost rates
// outside their range, borrowers' flows (whose NPV rises with the rate) and
// the last digits of rates on small amounts. Where they found a rate, the
// answers differ only within what their tolerance left open.
void CalculatorModel::computeRate()
{
    rateNote.clear();
    const int periods = compoundingPeriods();
    if (paymentFrequency < 1 || periods < 1) {
        rate = std::numeric_limits<double>::quiet_NaN();
        rateNote = QStringLiteral("No rate: P/Y and C/Y must be at least 1.");
        return;
    }
    // Searched as the rate per payment period i; the annual rate compounded
    // C/Y times a year that gives it is C/Y·((1 + i)^(P/Y ÷ C/Y) − 1).
    const double toCompounding = double(paymentFrequency) / periods;
    const auto annualOf = [&](double i) {
        return periods * growthFactorMinusOne(i, toCompounding);
    };
    const double preferred = equivalentRatePerPeriodWithRateAndCompoundingAndNewCompounding(
        0.1, periods, paymentFrequency);
    const bool beginning = paymentMode == QLatin1String("BEG");
    const auto solveWith = [&](double presentValue, double payment, double futureValue) {
        return RootSearch::tvmRoots(period, presentValue, payment, futureValue, beginning,
                                    preferred);
    };
    const RootSearch::Roots roots = solveWith(pv, pmt, fv);
    qCDebug(lcSolver, "%zu rates found", roots.all.size());
    if (!roots.empty()) {
        rate = annualOf(roots.nearest(preferred)) * 100.0;
        return;
    }
    rate = std::numeric_limits<double>::quiet_NaN();
    rateNote = RootSearch::noTvmRateReason(
        roots.everywhere, pv, pmt, fv,
        [&](double p, double m, double f) { return !solveWith(p, m, f).empty(); });
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
        // Zero terms stay out: near −100 % a run's factors overflow, and
        // 0·∞ would make the whole sum NaN.
        if (npv != 0)
            npv *= vk;
        if (flow->cash != 0)
            npv += flow->cash * runSum;
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

CalculatorModel::Rates CalculatorModel::internalRatesOfReturn(const CashFlowList& flows)
{
    const std::vector<ParsedFlow> values = parsed(flows);
    bool anyPositive = false;
    bool anyNegative = false;
    for (const ParsedFlow& flow : values) {
        if (flow.repeats > 0) {
            anyPositive = anyPositive || flow.cash > 0;
            anyNegative = anyNegative || flow.cash < 0;
        }
    }
    if (!anyPositive && !anyNegative)
        return {{0.0}, {}}; // all 0: every rate fits, and 0 is the plainest
    if (!anyPositive || !anyNegative)
        return {{}, RootSearch::noRateReason(QStringLiteral("IRR"), anyPositive, anyNegative)};
    std::vector<double> amounts;
    for (const ParsedFlow& flow : values) {
        if (flow.repeats > 0)
            amounts.push_back(flow.cash);
    }
    const auto npv = [&values](double rate) { return npvOf(values, rate); };
    RootSearch::Roots roots = RootSearch::signChanges(amounts) <= 1
                                  ? RootSearch::findOnlyRoot(npv, 0.1)
                                  : RootSearch::findRoots(npv);
    if (roots.empty())
        return {{}, RootSearch::noRateReason(QStringLiteral("IRR"), true, true)};
    return {std::move(roots.all), {}};
}

double CalculatorModel::calculateIrr(const CashFlowList& flows)
{
    const Rates rates = internalRatesOfReturn(flows);
    RootSearch::Roots roots;
    roots.all = rates.all;
    return roots.nearest(0.1);
}

std::optional<double> CalculatorModel::evaluateExpression(const QString& text)
{
    return numberByParsingExpression(text, nullptr);
}

double CalculatorModel::numberFromText(const QString& text)
{
    return NumberFormat::numberFromText(text);
}
