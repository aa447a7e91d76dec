#pragma once

// The rate searches the shared root search replaced, kept only to measure
// how far the new answers moved (tests/numerics/RootSearchTest.cpp and
// tools/CompareRootSearch.cpp):
// - IRR: bisection between −100 % and 100 % a period that assumes the NPV
//   falls as the rate rises and stops once |NPV| ≤ 1e-6 (the form gave up
//   after 1001 passes, the keypad after 10001 or when the bounds stopped
//   moving); NaN when it gave up;
// - I/Y: bisection between 0 % and 100 % a year that assumes the future
//   value rises with the rate and stops once it is within 1e-6 of the
//   target, then, when it ended at a bound, a walk outward over a grid
//   (down to −100 %, up to 10,000 %) halving the first step with a sign
//   change.

#include <cmath>
#include <functional>
#include <limits>

namespace OldRateSearches {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// `npv(rate)` at a rate per period; the rate as a fraction or NaN.
inline double irr(const std::function<double(double)>& npv, int maximumPasses = 10001)
{
    double low = -1.0, high = 1.0, previous = noNumber;
    for (int pass = 1;; ++pass) {
        const double mid = (low + high) * 0.5;
        const double value = npv(mid);
        if (std::isnan(value))
            return noNumber;
        if (value > 0)
            low = mid;
        else
            high = mid;
        if (std::fabs(value) <= 1e-6)
            return mid;
        if (pass >= maximumPasses || mid == previous)
            return noNumber;
        previous = mid;
    }
}

inline double beyondBounds(const std::function<double(double)>& difference, double edge)
{
    constexpr int gridSteps = 64;
    const bool upward = edge > 0.5;
    const auto gridRate = [upward](int j) {
        const double t = double(j) / gridSteps;
        return upward ? 2.0 * std::pow(101.0 / 2.0, t) - 1.0 : -t;
    };
    double near = edge;
    double nearValue = difference(edge);
    for (int j = 1; j <= gridSteps; ++j) {
        const double far = gridRate(j);
        const double farValue = difference(far);
        if (farValue == 0.0)
            return far;
        if (std::isnan(nearValue) || std::isnan(farValue) || (nearValue < 0) == (farValue < 0)) {
            near = far;
            nearValue = farValue;
            continue;
        }
        double f = far;
        for (int halving = 0; halving < 1100; ++halving) {
            const double mid = (near + f) * 0.5;
            if (mid == near || mid == f)
                return near;
            const double value = difference(mid);
            if (value == 0.0)
                return mid;
            if (std::isnan(value))
                return noNumber;
            if ((value < 0) == (nearValue < 0)) {
                near = mid;
                nearValue = value;
            } else {
                f = mid;
            }
        }
        return (near + f) * 0.5;
    }
    return noNumber;
}

// `difference(annual)`: the future value at an annual rate (a fraction)
// less the target. The annual rate as a fraction, or NaN.
inline double annualRate(const std::function<double(double)>& difference)
{
    double low = 0.0, high = 1.0, rate = 0.5;
    for (int evaluations = 0;; ++evaluations) {
        rate = (low + high) / 2;
        if (evaluations == 1001)
            break;
        const double d = difference(rate);
        if (d < 0)
            low = rate;
        else
            high = rate;
        if (!(std::fabs(d) > 1e-6))
            return rate;
    }
    if (low == 0.0 || high == 1.0)
        return beyondBounds(difference, rate);
    return rate;
}

} // namespace OldRateSearches
