#include "numerics/RootSearch.h"

#include "numerics/FinanceMath.h"
#include "support/OldRateSearches.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

// Σ CF[t]·(1 + x)^−t, the plain way.
double npv(const std::vector<double>& flows, double x)
{
    double sum = 0;
    for (size_t t = 0; t < flows.size(); ++t)
        sum += flows[t] / std::pow(1.0 + x, double(t));
    return sum;
}

RootSearch::Roots rootsOf(const std::vector<double>& flows)
{
    return RootSearch::findRoots([&flows](double x) { return npv(flows, x); });
}

// Every root of a series, whichever way its value runs, from just above
// −100 % to beyond 10⁵ %, each as close as the value's own rounding allows
// (ε·Σ|terms| over the slope: below 1e-14 of the rate for these series).
// The roots are exact by hand: for (a, b, c) the roots of a + b·v + c·v² = 0
// in v = 1/(1 + x); for two flows x = −CF1/CF0 − 1.
TEST(RootSearch, FindsEveryRootInTheRange)
{
    struct Case {
        std::vector<double> flows;
        std::vector<double> roots;
    } cases[] = {
        {{-100, 110}, {0.1}},                 // an investment: 110/100 − 1
        {{100, -110}, {0.1}},                 // a borrower's flows, money in first
        {{-100, 230, -132}, {0.1, 0.2}},      // −100 + 230v − 132v² = 0: v = 1/1.1, 1/1.2
        {{-100, 300}, {2.0}},                 // 200 %, above the old search's 100 %
        {{-1, 5000}, {4999.0}},               // 499,900 % a period
        {{-1, 0.000001}, {-0.999999}},        // just above −100 %
        {{-100, 50, 50}, {0.0}},              // exactly 0 % (a grid rate)
        {{-0.01, 0.011}, {0.011 / 0.01 - 1}}, // tiny amounts: no absolute tolerance
    };
    for (const Case& c : cases) {
        const RootSearch::Roots roots = rootsOf(c.flows);
        ASSERT_EQ(roots.all.size(), c.roots.size()) << "flows " << c.flows[0] << ", " << c.flows[1];
        for (size_t k = 0; k < c.roots.size(); ++k)
            EXPECT_NEAR(roots.all[k], c.roots[k], 1e-14 * std::max(1.0, std::fabs(c.roots[k])))
                << "flows " << c.flows[0] << ", " << c.flows[1];
        // With one sign change there is one root, and the walk from 10 %
        // finds the same.
        if (RootSearch::signChanges(c.flows) <= 1) {
            const RootSearch::Roots only =
                RootSearch::findOnlyRoot([&c](double x) { return npv(c.flows, x); }, 0.1);
            ASSERT_EQ(only.all.size(), 1u);
            EXPECT_EQ(only.all[0], roots.all[0]);
        }
    }
    EXPECT_NEAR(rootsOf({-100, 230, -132}).nearest(0.1), 0.1, 1e-14) << "of two, the nearer";
    EXPECT_NEAR(rootsOf({-100, 230, -132}).nearest(0.16), 0.2, 1e-14);
}

// A value that is 0 at every rate (all amounts 0) is told apart from one
// that is 0 nowhere; NaN values bracket nothing.
TEST(RootSearch, TellsEverywhereFromNowhere)
{
    const RootSearch::Roots zero = rootsOf({0, 0, 0});
    EXPECT_TRUE(zero.everywhere);
    EXPECT_TRUE(zero.empty());
    const RootSearch::Roots oneSign = rootsOf({100, 200});
    EXPECT_FALSE(oneSign.everywhere);
    EXPECT_TRUE(oneSign.empty());
    EXPECT_TRUE(std::isnan(oneSign.nearest(0.1)));
    EXPECT_TRUE(RootSearch::findRoots([](double) { return std::nan(""); }).empty());
}

// Against the bisections it replaced, on 1,000 random cases each: where
// the old search found a rate (inside its −100 %…100 % or 0 %…100 %
// bounds) and there is one root there, the new one is the same rate up to
// what the old tolerance allowed: the change of rate that moves the value
// by 1e-6, |Δrate| ≤ 1e-6 / |value′(rate)| (twice that, for the slope's
// own error, plus 1e-12).
TEST(RootSearch, AgreesWithTheOldBisectionsWithinTheirTolerance)
{
    std::mt19937_64 random(25);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    int compared = 0;
    for (int n = 0; n < 1000; ++n) {
        std::vector<double> flows{-(1 + unit(random) * 1e5)};
        const int count = 1 + int(unit(random) * 9);
        for (int t = 0; t < count; ++t)
            flows.push_back((unit(random) - 0.2) * -flows[0] * 0.6);
        const double old = OldRateSearches::irr([&](double x) { return npv(flows, x); }, 1001);
        const RootSearch::Roots roots = rootsOf(flows);
        std::vector<double> inside;
        for (double r : roots.all) {
            if (r > -1 && r < 1)
                inside.push_back(r);
        }
        if (std::isnan(old) || inside.size() != 1)
            continue;
        const double r = inside.front();
        const double h = 1e-7 * std::max(1.0, std::fabs(r));
        const double slope = (npv(flows, r + h) - npv(flows, r - h)) / (2 * h);
        EXPECT_LE(std::fabs(r - old), 2e-6 / std::fabs(slope) + 1e-12) << "case " << n;
        ++compared;
    }
    for (int n = 0; n < 1000; ++n) {
        const double pv = std::exp(unit(random) * 16) * 1e-3;
        const double pmt = unit(random) < 0.5 ? 0.0 : pv * unit(random) * 0.2;
        const double periods = std::ceil(std::exp(unit(random) * 7));
        const double fv = (pv + pmt * periods) * (0.5 + unit(random) * 4);
        const auto difference = [&](double annual) {
            const double i = annual / 12;
            return pv * FinanceMath::growthFactor(i, periods) +
                   pmt * FinanceMath::growthFactorMinusOne(i, periods) / i - fv;
        };
        const double old = OldRateSearches::annualRate(difference);
        const RootSearch::Roots roots = RootSearch::findRoots([&](double i) {
            return FinanceMath::futureValueDifference(i, periods, pv, pmt, false, fv);
        });
        if (std::isnan(old) || !(old > 0 && old < 1) || roots.all.size() != 1)
            continue;
        const double r = roots.all.front() * 12;
        const double h = 1e-7 * std::max(1.0, std::fabs(r));
        const double slope = (difference(r + h) - difference(r - h)) / (2 * h);
        EXPECT_LE(std::fabs(r - old), 2e-6 / std::fabs(slope) + 1e-12) << "case " << n;
        ++compared;
    }
    EXPECT_GT(compared, 1000) << "the sample should mostly hold cases both searches solve";
}

} // namespace
