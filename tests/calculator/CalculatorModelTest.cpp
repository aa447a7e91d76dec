#include "calculator/CalculatorModel.h"

#include "numerics/FinanceMath.h"

#include <QLocale>
#include <cfloat>
#include <cmath>
#include <gtest/gtest.h>

namespace {

CashFlowList flows(std::initializer_list<std::pair<const char*, const char*>> entries)
{
    CashFlowList list = CalculatorModel::freshCashFlows();
    size_t i = 0;
    for (const auto& [cash, freq] : entries)
        list[i++] = {QString::fromLatin1(cash), QString::fromLatin1(freq)};
    return list;
}

TEST(RateConversion, EqualCompoundingKeepsTheRate)
{
    EXPECT_DOUBLE_EQ(
        CalculatorModel::equivalentRatePerPeriodWithRateAndCompoundingAndNewCompounding(0.12, 12,
                                                                                        12),
        0.01);
    // 12 % compounded monthly, paid annually: (1.01)^12 - 1.
    EXPECT_NEAR(CalculatorModel::equivalentRateOfRateAndCompoundingAndNewCompounding(0.12, 12, 1),
                std::pow(1.01, 12) - 1, 1e-15);
    // 6 % compounded annually, paid monthly: 12((1.06)^(1/12) - 1).
    EXPECT_NEAR(CalculatorModel::equivalentRateOfRateAndCompoundingAndNewCompounding(0.06, 1, 12),
                12 * (std::pow(1.06, 1.0 / 12) - 1), 1e-15);
}

// The registers' textbook values, rates and non-finite results are cases of
// tests/vectors/keypad.jsonl; here every register is solved back from the
// other four over a grid of cases.
TEST(TvmSolver, SolvingAnyRegisterFromTheOtherFourReproducesIt)
{
    struct Case {
        double n, iy, pv, pmt, fv;
        int py;
        double cy;
        const char* mode;
    };
    const Case cases[] = {
        {360, 6, 250000, -1498.876313, 0, 12, 12, "END"},
        {10, 10, 100, 0, 0, 1, 1, "END"},
        {20, 7.5, 5000, 200, 0, 1, 1, "BEG"},
        {48, 3.9, 25000, -500, 0, 12, 4, "END"},
        {15.5, 2.25, 1000, 50, 0, 2, 365, "BEG"},
    };
    for (const Case& c : cases) {
        // P/Y, N, I/Y, PV, PMT, FV, C/Y, mode; NPV, IRR and the note unused.
        CalculatorModel base{c.py, c.n, c.iy, c.pv, c.pmt, c.fv, c.cy, c.mode, 0, 0, {}};
        base.computeFutureValue(); // a consistent set of five
        const auto check = [&](void (CalculatorModel::*solve)(), double CalculatorModel::*reg,
                               const char* name) {
            CalculatorModel m = base;
            m.*reg = 12345.678; // garbage that must be overwritten
            (m.*solve)();
            EXPECT_NEAR(m.*reg, base.*reg, 1e-6 * std::max(1.0, std::fabs(base.*reg)))
                << name << " for N=" << c.n << " I/Y=" << c.iy << " " << c.mode;
        };
        check(&CalculatorModel::computePresentValue, &CalculatorModel::pv, "PV");
        check(&CalculatorModel::computePayment, &CalculatorModel::pmt, "PMT");
        check(&CalculatorModel::computePeriod, &CalculatorModel::period, "N");
        check(&CalculatorModel::computeFutureValue, &CalculatorModel::fv, "FV");
        CalculatorModel m = base;
        m.rate = 0;
        m.computeRate();
        EXPECT_NEAR(m.rate, base.rate, 1e-5) << "I/Y for N=" << c.n;
    }
}

TEST(FinanceMath, GrowthFactorsMatchThePowerWhereItIsExact)
{
    EXPECT_DOUBLE_EQ(FinanceMath::growthFactor(0.1, 2), 1.21);
    EXPECT_DOUBLE_EQ(FinanceMath::growthFactorMinusOne(0.1, 2), 0.21);
    EXPECT_EQ(FinanceMath::growthFactor(-1, 2), 0);
    EXPECT_EQ(FinanceMath::growthFactor(-1, 0), 1) << "0^0 is 1, as pow says";
    EXPECT_EQ(FinanceMath::growthFactor(-1.5, 2), 0.25);
    EXPECT_TRUE(std::isinf(FinanceMath::growthFactor(-1, -1)));
    // (1 + 1e-12)^3 - 1 = 3e-12 + 3e-24 + 1e-36: the second term survives.
    EXPECT_NEAR(FinanceMath::growthFactorMinusOne(1e-12, 3), 3e-12 + 3e-24, 1e-27);
}

// A stored frequency of 0 skips its flow (the keys refuse one; the rest of
// the cash-flow rules are cases of tests/vectors/keypad.jsonl).
TEST(CashFlows, AFrequencyOfZeroSkipsItsFlow)
{
    const CashFlowList list = flows({{"-1000", "1"}, {"300", "3"}, {"50", "0"}, {"200", "0.2"}});
    EXPECT_NEAR(CalculatorModel::calculateNpvWithRate(list, 0.05),
                -1000 + 300 / 1.05 + 300 / std::pow(1.05, 2) + 300 / std::pow(1.05, 3) +
                    200 / std::pow(1.05, 4),
                1e-9);
    // Nor does a skipped flow's sign count: one outflow alone has no IRR.
    const CalculatorModel::Rates none =
        CalculatorModel::internalRatesOfReturn(flows({{"-1000", "1"}, {"50", "0"}}));
    EXPECT_TRUE(none.all.empty());
    EXPECT_EQ(none.reason, "No IRR: the cash flows never change sign.");
}

// Each run of equal flows is one closed-form term; the result may differ
// from the period-by-period sum Σ c/(1 + r)^p only by rounding: at most
// 16 ulps per period of the sum of the terms' magnitudes.
TEST(CashFlows, ClosedFormRunsStayWithinRoundingOfTheTermByTermSum)
{
    const std::vector<std::vector<std::pair<double, int>>> lists = {
        {{-100, 1}, {110, 1}},
        {{-1000, 1}, {300, 3}, {50, 0}, {200, 1}},
        {{-5000, 1}, {100, 360}},
        {{-10000, 1}, {0, 2}, {4000, 4}},
        {{-2500, 1}, {12.5, 1000}, {-40, 64}, {3, 7}, {1000, 1}},
        {{1e6, 1}, {-1e4, 99}, {-3e5, 1}},
    };
    const double rates[] = {-0.5, -0.05, -1e-9, 0.0, 1e-9, 0.004, 0.1, 0.9};
    for (const auto& entries : lists) {
        CashFlowList list = CalculatorModel::freshCashFlows();
        for (size_t e = 0; e < entries.size(); ++e)
            list[e] = {QString::number(entries[e].first, 'f', 6),
                       QString::number(entries[e].second)};
        for (const double r : rates) {
            double sum = 0, magnitude = 0;
            int p = 0;
            for (const auto& [cash, freq] : entries) {
                for (int k = 0; k < freq; ++k, ++p) {
                    sum += cash / std::pow(1 + r, p);
                    magnitude += std::fabs(cash / std::pow(1 + r, p));
                }
            }
            if (!std::isfinite(magnitude))
                continue;                           // the terms themselves overflow
            p += int(list.size() - entries.size()); // the unused entries' periods
            const double npv = CalculatorModel::calculateNpvWithRate(list, r);
            EXPECT_LE(std::fabs(npv - sum), 16 * p * DBL_EPSILON * magnitude)
                << entries.size() << " entries at " << r << ": " << npv << " vs " << sum;
        }
    }

    // A frequency no loop could walk still answers at once.
    const CashFlowList huge = flows({{"-100", "1"}, {"1", "1000000000000000"}});
    EXPECT_NEAR(CalculatorModel::calculateNpvWithRate(huge, 0.01), -100 + 1 / 0.01, 1e-9);
}

// The reading rule itself is NumberFormat's; here the process locale is
// the one read, and expressions know no variable but pi.
TEST(NumberFromText, ReadsDisplayTextsBack)
{
    EXPECT_EQ(CalculatorModel::numberFromText(QLocale().toString(12.5)), 12.5);
    EXPECT_FALSE(CalculatorModel::evaluateExpression("x").has_value());
}

} // namespace
