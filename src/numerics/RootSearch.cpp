#include "numerics/RootSearch.h"

#include "numerics/FinanceMath.h"
#include "numerics/NumberFormat.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace RootSearch {

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr int maximumSteps = 200;

// The grid, from −100 % up: ever closer to −100 % by powers of ten (where
// the values of long series change fastest), every 1 % to −20 %, every
// 0.5 % from −20 % to 50 % (where nearly every real rate lies, so two roots
// there are told apart when half a percent apart), every 1 % to 100 %, then
// 5 % more each step up to 10⁶ %. Multiples of a step are computed from
// their integer count, so 0 and the round rates are exact.
const std::vector<double>& grid()
{
    static const std::vector<double> rates = [] {
        std::vector<double> r;
        for (int k = 12; k >= 3; --k)
            r.push_back(-1.0 + std::pow(10.0, -k));
        r.push_back(-0.995);
        for (int k = -99; k < -20; ++k)
            r.push_back(k * 0.01);
        for (int k = -40; k < 100; ++k)
            r.push_back(k * 0.005);
        for (int k = 50; k < 100; ++k)
            r.push_back(k * 0.01);
        for (double rate = 1.0; rate < highestRate; rate = (1.0 + rate) * 1.05 - 1.0)
            r.push_back(rate);
        r.push_back(highestRate);
        return r;
    }();
    return rates;
}

bool sameSign(double a, double b)
{
    return std::signbit(a) == std::signbit(b);
}

} // namespace

double Roots::nearest(double preferred) const
{
    double best = noNumber;
    for (double root : all) {
        if (std::isnan(best) || std::fabs(root - preferred) < std::fabs(best - preferred))
            best = root;
    }
    return best;
}

double refine(const Function& value, double low, double lowValue, double high, double highValue)
{
    if (lowValue == 0)
        return low;
    if (highValue == 0)
        return high;
    // Regula falsi with the Illinois change (the end that stays put has its
    // value halved, so the steps do not crawl from one side), falling back
    // to halving when a value is infinite, when a step would leave the
    // bracket, and every third step that did not at least halve the width.
    double a = low, b = high;
    double fa = lowValue, fb = highValue; // as used for the steps (halved)
    double trueA = lowValue, trueB = highValue;
    int side = 0;
    double widthBefore = b - a;
    for (int step = 0; step < maximumSteps; ++step) {
        const double mid = a + (b - a) * 0.5;
        if (mid <= a || mid >= b)
            break; // adjacent doubles: as narrow as it gets
        if (b - a <=
            2 * std::numeric_limits<double>::epsilon() * std::max(std::fabs(a), std::fabs(b)))
            break;
        double c = mid;
        const bool halve = step % 3 == 2 && (b - a) > widthBefore * 0.5;
        if (step % 3 == 2)
            widthBefore = b - a;
        if (!halve && std::isfinite(fa) && std::isfinite(fb)) {
            const double secant = (a * fb - b * fa) / (fb - fa);
            if (secant > a && secant < b)
                c = secant;
        }
        const double fc = value(c);
        if (fc == 0)
            return c;
        if (std::isnan(fc))
            return noNumber;
        if (sameSign(fc, trueB)) {
            b = c;
            fb = trueB = fc;
            if (side == 1)
                fa *= 0.5;
            side = 1;
        } else {
            a = c;
            fa = trueA = fc;
            if (side == -1)
                fb *= 0.5;
            side = -1;
        }
    }
    return std::fabs(trueA) <= std::fabs(trueB) ? a : b;
}

Roots findRoots(const Function& value, double lowest, double highest)
{
    FinanceMath::clearUpperVectorState();
    std::vector<double> rates;
    rates.reserve(grid().size() + 2);
    rates.push_back(lowest);
    for (double rate : grid()) {
        if (rate > lowest && rate < highest)
            rates.push_back(rate);
    }
    rates.push_back(highest);

    Roots roots;
    std::vector<double> values(rates.size());
    bool allZero = true;
    for (size_t k = 0; k < rates.size(); ++k) {
        values[k] = value(rates[k]);
        allZero = allZero && values[k] == 0;
    }
    if (allZero) {
        roots.everywhere = true;
        return roots;
    }
    for (size_t k = 0; k < rates.size(); ++k) {
        const double here = values[k];
        if (here == 0) {
            roots.all.push_back(rates[k]);
            continue;
        }
        if (k + 1 == rates.size())
            break;
        const double next = values[k + 1];
        if (std::isnan(here) || std::isnan(next) || next == 0 || sameSign(here, next))
            continue;
        const double root = refine(value, rates[k], here, rates[k + 1], next);
        if (!std::isnan(root))
            roots.all.push_back(root);
    }
    return roots;
}

Roots findOnlyRoot(const Function& value, double preferred)
{
    FinanceMath::clearUpperVectorState();
    const std::vector<double>& rates = grid();
    const auto nearest = std::lower_bound(rates.begin(), rates.end(), preferred);
    const size_t start = std::min<size_t>(size_t(nearest - rates.begin()), rates.size() - 1);
    Roots roots;
    const double startValue = value(rates[start]);
    if (startValue == 0) {
        roots.all.push_back(rates[start]);
        return roots;
    }
    // The last value met on each side, and where.
    size_t below = start, above = start;
    double belowValue = startValue, aboveValue = startValue;
    const auto bracketed = [](double a, double b) {
        return !std::isnan(a) && !std::isnan(b) && !sameSign(a, b);
    };
    while (below > 0 || above + 1 < rates.size()) {
        if (above + 1 < rates.size()) {
            const double next = value(rates[above + 1]);
            if (next == 0 || bracketed(aboveValue, next)) {
                const double root =
                    next == 0 ? rates[above + 1]
                              : refine(value, rates[above], aboveValue, rates[above + 1], next);
                if (!std::isnan(root))
                    roots.all.push_back(root);
                return roots;
            }
            ++above;
            aboveValue = next;
        }
        if (below > 0) {
            const double next = value(rates[below - 1]);
            if (next == 0 || bracketed(next, belowValue)) {
                const double root =
                    next == 0 ? rates[below - 1]
                              : refine(value, rates[below - 1], next, rates[below], belowValue);
                if (!std::isnan(root))
                    roots.all.push_back(root);
                return roots;
            }
            --below;
            belowValue = next;
        }
    }
    return roots;
}

int signChanges(const std::vector<double>& amounts)
{
    int changes = 0;
    int last = 0; // the sign of the last amount that was not 0
    for (double amount : amounts) {
        const int sign = amount > 0 ? 1 : amount < 0 ? -1 : 0;
        if (sign == 0)
            continue;
        changes += last != 0 && sign != last;
        last = sign;
    }
    return changes;
}

Roots tvmRoots(double n, double pv, double pmt, double fv, bool beginning, double preferred)
{
    const Function value = [=](double i) {
        return FinanceMath::futureValueDifference(i, n, pv, pmt, beginning, fv);
    };
    if (n >= 1 && n == std::floor(n)) {
        const std::vector<double> amounts{beginning ? pv + pmt : pv, n >= 2 ? pmt : 0.0,
                                          beginning ? -fv : pmt - fv};
        if (signChanges(amounts) <= 1)
            return findOnlyRoot(value, preferred);
    }
    return findRoots(value);
}

QString noTvmRateReason(bool everywhere, double pv, double pmt, double fv,
                        const std::function<bool(double, double, double)>& solvable)
{
    if (everywhere)
        return QStringLiteral("No rate: with these values every rate fits.");
    if ((pv < 0 && fv > 0) || (pv > 0 && fv < 0)) {
        // The same money with PV (and the payments with it) and FV made
        // positive: what this calculator's sign convention expects.
        const double s = pv < 0 ? -1.0 : 1.0;
        const double t = fv < 0 ? -1.0 : 1.0;
        if (solvable(pv * s, pmt * s, fv * t))
            return QStringLiteral("No rate found. This calculator takes money paid and money "
                                  "received with the same sign: enter PV %1 and FV %2.")
                .arg(NumberFormat::stringFromDouble(pv * s),
                     NumberFormat::stringFromDouble(fv * t));
    }
    return QStringLiteral("No rate found: no rate between -100 % and 1,000,000 % a period gives "
                          "this FV.");
}

QString noRateReason(const QString& name, bool anyPositive, bool anyNegative)
{
    if (!anyPositive || !anyNegative)
        return QStringLiteral("No %1: the cash flows never change sign.").arg(name);
    return QStringLiteral("No %1: no rate between -100 % and 1,000,000 % makes the NPV 0.")
        .arg(name);
}

} // namespace RootSearch
