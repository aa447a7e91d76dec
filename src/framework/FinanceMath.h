#pragma once

#include <climits>
#include <cmath>
#include <limits>

// Growth factors of compound interest, evaluated so that tiny rates over
// huge numbers of periods stay exact: (1 + x)^y as exp(y·log1p(x)) and
// (1 + x)^y − 1 as expm1(y·log1p(x)). Outside the domain where that form
// holds (x ≤ −1, infinite or NaN arguments) the plain power gives the
// IEEE answer.
namespace FinanceMath {

// Marks the upper halves of the AVX registers clean (vzeroupper) on CPUs
// that have them. Library code that runs 256-bit AVX instructions and
// returns without a vzeroupper leaves them dirty (QtGui's image fill does,
// so the GUI process's main thread is in that state once anything has been
// drawn); from then on every non-VEX SSE instruction, which is all of this
// program's floating-point code, and the maths routines too, run several
// times slower. The solvers call this once before their loops, which
// themselves dirty nothing; it costs a cycle.
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
__attribute__((target("avx"))) inline void clearUpperVectorStateAvx()
{
    __builtin_ia32_vzeroupper();
}
inline void clearUpperVectorState()
{
    static const bool hasAvx = __builtin_cpu_supports("avx");
    if (hasAvx)
        clearUpperVectorStateAvx();
}
#else
inline void clearUpperVectorState() {}
#endif

inline bool usesLogForm(double x, double y)
{
    return x > -1.0 && std::isfinite(x) && std::isfinite(y);
}

// (1 + x)^y
inline double growthFactor(double x, double y)
{
    return usesLogForm(x, y) ? std::exp(y * std::log1p(x)) : std::pow(1.0 + x, y);
}

// (1 + x)^y − 1. An exact zero is +0 as the power form gives it: the log
// form would give −0 for a negative exponent (y = 0 with x < 0, or x = 0 with
// y < 0), and a division by it would flip the sign of an infinity.
inline double growthFactorMinusOne(double x, double y)
{
    if (!usesLogForm(x, y))
        return std::pow(1.0 + x, y) - 1.0;
    const double result = std::expm1(y * std::log1p(x));
    return result == 0.0 ? 0.0 : result;
}

// The nominal annual rate (a fraction) that, compounded `newCompounding`
// times a year, is worth `rate` compounded `compounding` times a year:
// n × ((1 + rate/m)^(m/n) − 1).
inline double equivalentRate(double rate, int compounding, int newCompounding)
{
    const double m = compounding;
    const double n = newCompounding;
    return n * growthFactorMinusOne(rate / m, m / n);
}

// Where a rate bisection over the annual rates 0 to 1 (0 % to 100 %) goes
// on when it ended at one of those bounds without meeting its tolerance:
// the answer lies outside, or nowhere. `difference(rate)` is the solved
// quantity at an annual rate (a fraction) less its target; `edge` is the
// last rate the bisection tried, next to the bound it ended at.
//
// Rule: from the bound the search walks outward (below 0 % down to -100 %,
// above 100 % up to 10,000 % a year) over a fixed grid, takes the first
// step over which the difference changes sign, and halves that step until
// it can shrink no more (or the difference is exactly 0); that rate is the
// answer. When the difference keeps one sign all the way (or is not a
// number), there is no rate: NaN. No assumption is made about which way
// the difference runs, and the work is bounded: 64 grid points and at most
// 1100 halvings.
template <typename Difference>
double rateBeyondBisectionBounds(const Difference& difference, double edge)
{
    constexpr int gridSteps = 64;
    const bool upward = edge > 0.5;
    // Grid point j: downward linear in the rate to -1; upward geometric in
    // 1 + rate from 2 to 101.
    const auto gridRate = [upward](int j) {
        const double t = double(j) / gridSteps;
        return upward ? 2.0 * std::pow(101.0 / 2.0, t) - 1.0 : -t;
    };
    double near = edge;
    double nearValue = difference(edge);
    for (int j = 1; j <= gridSteps; ++j) {
        double far = gridRate(j);
        double farValue = difference(far);
        if (farValue == 0.0)
            return far;
        if (std::isnan(nearValue) || std::isnan(farValue) || (nearValue < 0) == (farValue < 0)) {
            near = far;
            nearValue = farValue;
            continue;
        }
        // A sign change between near and far: halve down to adjacent doubles.
        for (int halving = 0; halving < 1100; ++halving) {
            const double mid = (near + far) * 0.5;
            if (mid == near || mid == far)
                return std::fabs(nearValue) <= std::fabs(farValue) ? near : far;
            const double value = difference(mid);
            if (value == 0.0)
                return mid;
            if (std::isnan(value))
                return std::numeric_limits<double>::quiet_NaN();
            if ((value < 0) == (nearValue < 0)) {
                near = mid;
                nearValue = value;
            } else {
                far = mid;
                farValue = value;
            }
        }
        return (near + far) * 0.5;
    }
    return std::numeric_limits<double>::quiet_NaN();
}

// The integer part of `value`, saturating at the int range instead of
// overflowing; NaN counts as 0.
inline int saturatedInteger(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= double(INT_MAX))
        return INT_MAX;
    if (value <= double(INT_MIN))
        return INT_MIN;
    return int(value);
}

} // namespace FinanceMath
