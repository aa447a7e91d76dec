#pragma once

#include <climits>
#include <cmath>

// Growth factors of compound interest, evaluated so that tiny rates over
// huge numbers of periods stay exact: (1 + x)^y as exp(y·log1p(x)) and
// (1 + x)^y − 1 as expm1(y·log1p(x)). Outside the domain where that form
// holds (x ≤ −1, infinite or NaN arguments) the plain power gives the
// IEEE answer.
namespace FinanceMath {

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
