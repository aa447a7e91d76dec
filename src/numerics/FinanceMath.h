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

// What a rate search solves for TVM: the future value of `pv` and a level
// payment `pmt` (at the start of each period when `beginning`) after `n`
// periods at `i` a period, less the target `fv`; money carries no sign by
// direction. Its sign is all a search needs, so above 0 % it is taken in
// present-value terms (divided by (1 + i)^n, which keeps huge rates over
// long terms finite) and at 0 % it is the limit PV + n·PMT − FV instead of
// a division by zero.
inline double futureValueDifference(double i, double n, double pv, double pmt, bool beginning,
                                    double fv)
{
    if (i == 0)
        return pv + pmt * n - fv;
    const double due = beginning ? 1.0 + i : 1.0;
    if (i > 0) {
        // (1 − (1 + i)^−n) / i, the present value of 1 a period.
        const double annuity = -growthFactorMinusOne(i, -n) / i;
        return pv + pmt * due * annuity - fv / growthFactor(i, n);
    }
    return pv * growthFactor(i, n) + pmt * due * growthFactorMinusOne(i, n) / i - fv;
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
