#include "calculator/CalculatorModel.h"

#include "framework/FinanceMath.h"

#include <QLocale>
#include <cfloat>
#include <cmath>
#include <gtest/gtest.h>

namespace {

CalculatorModel registers(double n, double iy, double pv, double pmt, double fv, int py = 1,
                          double cy = 1, const char* mode = "END")
{
    CalculatorModel m;
    m.period = n;
    m.rate = iy;
    m.pv = pv;
    m.pmt = pmt;
    m.fv = fv;
    m.paymentFrequency = py;
    m.compounding = cy;
    m.paymentMode = QString::fromLatin1(mode);
    return m;
}

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

TEST(TvmSolver, TextbookFutureValueAndMortgagePayment)
{
    // 100 at 10 % for 10 years: 100 x 1.1^10.
    CalculatorModel m = registers(10, 10, 100, 0, 0);
    m.computeFutureValue();
    EXPECT_NEAR(m.fv, 259.374246010, 1e-9);

    // 250,000 over 30 years at 6 % monthly: money is unsigned by direction,
    // so the payment that clears the loan comes out negative.
    m = registers(360, 6, 250000, 0, 0, 12, 12);
    m.computePayment();
    EXPECT_NEAR(m.pmt, -1498.876313, 1e-6);
    m.computePeriod();
    EXPECT_NEAR(m.period, 360, 1e-9);
}

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
        CalculatorModel base = registers(c.n, c.iy, c.pv, c.pmt, c.fv, c.py, c.cy, c.mode);
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

TEST(TvmSolver, BeginModeMultipliesThePaymentTermAndCyIsTruncated)
{
    CalculatorModel end = registers(5, 4, 0, 100, 0);
    CalculatorModel beg = registers(5, 4, 0, 100, 0, 1, 1, "BEG");
    end.computeFutureValue();
    beg.computeFutureValue();
    EXPECT_NEAR(beg.fv, end.fv * 1.04, 1e-9);

    CalculatorModel a = registers(10, 8, 100, 0, 0, 1, 2.9);
    CalculatorModel b = registers(10, 8, 100, 0, 0, 1, 2);
    a.computeFutureValue();
    b.computeFutureValue();
    EXPECT_EQ(a.fv, b.fv) << "C/Y 2.9 acts as 2";
}

TEST(TvmSolver, ZeroRateOrZeroPyGivesNonFiniteResultsNotErrors)
{
    const struct {
        CalculatorModel m;
        void (CalculatorModel::*solve)();
        double CalculatorModel::*reg;
    } cases[] = {
        {registers(10, 0, 100, 10, 0), &CalculatorModel::computeFutureValue, &CalculatorModel::fv},
        {registers(10, 0, 100, 10, 0), &CalculatorModel::computePayment, &CalculatorModel::pmt},
        {registers(10, 0, 100, 10, 500), &CalculatorModel::computePeriod, &CalculatorModel::period},
        {registers(10, 5, 100, 10, 0, 0), &CalculatorModel::computePresentValue,
         &CalculatorModel::pv},
    };
    for (auto c : cases) {
        (c.m.*c.solve)();
        EXPECT_FALSE(std::isfinite(c.m.*c.reg)) << c.m.*c.reg;
    }
}

// CPT I/Y finds the rate wherever it lies, to full precision: with no
// payment against the closed form 100·((FV/PV)^(1/N) − 1) (by hand), with
// payments by putting the rate back and computing FV again; NaN (with a
// reason) where no rate makes the registers agree.
TEST(TvmSolver, RateSolveFindsTheRateWhereverItLies)
{
    struct Case {
        const char* what;
        CalculatorModel m;
        double expected; // percent; NaN for no rate; 0 to check by the round trip
    };
    const Case cases[] = {
        {"1000 doubles in 10 years", registers(10, 0, 1000, 0, 2000),
         100 * (std::pow(2.0, 0.1) - 1)},
        {"tiny amounts", registers(10, 0, 0.0001, 0, 0.0002), 100 * (std::pow(2.0, 0.1) - 1)},
        {"1000 to 900 in 5 years", registers(5, 0, 1000, 0, 900), 100 * (std::pow(0.9, 0.2) - 1)},
        {"1000 to 5000 in 1 year", registers(1, 0, 1000, 0, 5000), 400},
        {"1 to 200 in 1 year", registers(1, 0, 1, 0, 200), 19900},
        {"1 to 1000 in 1 year", registers(1, 0, 1, 0, 1000), 99900},
        {"100 to 50 in 1 year, monthly", registers(12, 0, 100, 0, 50, 12, 12),
         1200 * (std::pow(0.5, 1.0 / 12) - 1)},
        {"mortgage", registers(360, 0, 250000, -1498.8764, 0, 12, 12), 0},
        {"BEG, P/Y 4, C/Y 2", registers(20, 0, 0, 100, 2500, 4, 2, "BEG"), 0},
        {"no rate turns 1000 into -5", registers(5, 0, 1000, 0, -5), NAN},
        {"every register 0", registers(0, 0, 0, 0, 0), NAN},
        {"spreadsheet signs", registers(100000, 0, -1000, 0, 2000, 12, 12), NAN},
    };
    for (Case c : cases) {
        const double target = c.m.fv;
        c.m.computeRate();
        if (std::isnan(c.expected)) {
            EXPECT_TRUE(std::isnan(c.m.rate)) << c.what << ": " << c.m.rate;
            EXPECT_FALSE(c.m.rateNote.isEmpty()) << c.what;
        } else if (c.expected != 0) {
            EXPECT_NEAR(c.m.rate, c.expected, 2e-15 * std::fabs(c.expected)) << c.what;
        } else {
            c.m.computeFutureValue();
            EXPECT_NEAR(c.m.fv, target, 1e-9 * std::max(1.0, c.m.pv)) << c.what;
        }
    }
}

TEST(TvmSolver, KahansPennyASecondStaysExactToTheCent)
{
    // A penny deposited every second for a year at 10 % compounded every
    // second.
    CalculatorModel m = registers(31536000, 10, 0, 0.01, 0, 31536000, 31536000);
    m.computeFutureValue();
    EXPECT_EQ(std::round(m.fv * 10000) / 10000, 331667.0067);
    EXPECT_NEAR(m.fv, 331667.00669, 0.005);
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

TEST(CashFlows, NpvDiscountsEachPeriodAndFrequenciesRepeat)
{
    // -1000, then 300, 400, 500: IRR 8.896 %.
    const CashFlowList textbook = flows({{"-1000", "1"}, {"300", "1"}, {"400", "1"}, {"500", "1"}});
    const double textbookIrr = CalculatorModel::calculateIrr(textbook);
    EXPECT_NEAR(textbookIrr, 0.0889633947, 1e-6);
    EXPECT_NEAR(CalculatorModel::calculateNpvWithRate(textbook, textbookIrr), 0, 1e-6);

    const CashFlowList simple = flows({{"-100", "1"}, {"110", "1"}});
    EXPECT_NEAR(CalculatorModel::calculateNpvWithRate(simple, 0.1), 0, 1e-12);
    EXPECT_NEAR(CalculatorModel::calculateIrr(simple), 0.1, 1e-6);

    // freq 3 takes periods 1..3; 0.2 counts once; 0 is skipped.
    const CashFlowList repeated =
        flows({{"-1000", "1"}, {"300", "3"}, {"50", "0"}, {"200", "0.2"}});
    const double r = 0.05;
    const double expected = -1000 + 300 / 1.05 + 300 / std::pow(1.05, 2) + 300 / std::pow(1.05, 3) +
                            200 / std::pow(1.05, 4);
    EXPECT_NEAR(CalculatorModel::calculateNpvWithRate(repeated, r), expected, 1e-9);
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

// Flows of one sign have no IRR, and say so; all zero give 0 %.
TEST(CashFlows, IrrIsNaNWhereThereIsNone)
{
    for (const CashFlowList& list : {flows({{"100", "1"}, {"110", "1"}}), flows({{"-1", "1"}}),
                                     flows({{"-100", "1"}, {"-5", "3"}})}) {
        const CalculatorModel::Rates rates = CalculatorModel::internalRatesOfReturn(list);
        EXPECT_TRUE(rates.all.empty());
        EXPECT_EQ(rates.reason, "No IRR: the cash flows never change sign.");
        EXPECT_TRUE(std::isnan(CalculatorModel::calculateIrr(list)));
    }
    EXPECT_EQ(CalculatorModel::calculateIrr(CalculatorModel::freshCashFlows()), 0);
}

// The reading rule itself is NumberFormat's; here the process locale is
// the one read, and expressions know no variable but pi.
TEST(NumberFromText, ReadsDisplayTextsBack)
{
    EXPECT_EQ(CalculatorModel::numberFromText(QLocale().toString(12.5)), 12.5);
    EXPECT_FALSE(CalculatorModel::evaluateExpression("x").has_value());
}

} // namespace
