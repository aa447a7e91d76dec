#include "functions/ScreenTest.h"
#include "functions/blackscholes/BlackScholesController.h"

#include <array>
#include <cmath>
#include <numbers>

namespace {

double normalCdf(double x)
{
    return x >= 0 ? 0.5 * (1 + std::erf(x / std::numbers::sqrt2))
                  : 0.5 * std::erfc(-x / std::numbers::sqrt2);
}

double normalDensity(double x)
{
    return std::exp(-x * x / 2) / std::sqrt(2 * std::numbers::pi);
}

// The model's properties, in call/put pairs: price, delta, gamma, vega,
// theta, rho.
const char* const resultNames[] = {"callPrice", "putPrice", "callDelta", "putDelta",
                                   "callGamma", "putGamma", "callVega",  "putVega",
                                   "callTheta", "putTheta", "callRho",   "putRho"};

// Prices and greeks written out independently of the model, in the order of
// resultNames: the put comes from N(−d) instead of 1 − N(d), N from erf in
// the upper half, and gamma, vega, theta and rho from the forms that use
// K·e^(−rT)·φ(d2) (equal to S·φ(d1)) and put-call parity. The greeks are per
// unit of S, of volatility (1.00, not one point), of T and of rate.
std::array<double, 12> reference(double S, double K, double T, double volPercent,
                                 double ratePercent)
{
    const double sigma = volPercent / 100, r = ratePercent / 100;
    const double spread = sigma * std::sqrt(T);
    const double d2 = (std::log(S / K) + (r - sigma * sigma / 2) * T) / spread;
    const double d1 = d2 + spread;
    const double pv = K * std::exp(-r * T); // present value of the strike
    const double gamma = pv * normalDensity(d2) / (S * S * spread);
    const double vega = pv * normalDensity(d2) * std::sqrt(T);
    const double callTheta =
        -pv * normalDensity(d2) * sigma / (2 * std::sqrt(T)) - r * pv * normalCdf(d2);
    const double callRho = T * pv * normalCdf(d2);
    const double call = S * normalCdf(d1) - pv * normalCdf(d2);
    const double put = pv * normalCdf(-d2) - S * normalCdf(-d1);
    return {call, put,  normalCdf(d1), -normalCdf(-d1),    gamma,   gamma,
            vega, vega, callTheta,     callTheta + r * pv, callRho, callRho - T * pv};
}

void expectRelative(double actual, double expected, double tolerance, const char* what)
{
    EXPECT_LE(std::abs(actual - expected), tolerance * std::abs(expected))
        << what << ": " << actual << " vs " << expected;
}

struct Inputs {
    double S, K, T, vol, rate;
    const char* source;
};

class BlackScholesTest : public ScreenTest<BlackScholesController> {
protected:
    void enter(const Inputs& in)
    {
        type("assetPriceField", exact(in.S));
        type("exercisePriceField", exact(in.K));
        type("timeToExpirationField", exact(in.T));
        type("standardDeviationField", exact(in.vol));
        type("riskFreeRateField", exact(in.rate));
    }
    // The labels in call/put pairs: price, delta, gamma, theta, vega, rho.
    QStringList labels() const
    {
        QStringList texts;
        for (const char* name : {"Price", "Delta", "Gamma", "Theta", "Vega", "Rho"}) {
            texts << view->text(QStringLiteral("call%1Label").arg(QLatin1String(name)));
            texts << view->text(QStringLiteral("put%1Label").arg(QLatin1String(name)));
        }
        return texts;
    }
    const BlackScholesModel& model() const { return *screen->blackScholesModel(); }
};

TEST_F(BlackScholesTest, PricesAndGreeksAgreeWithIndependentReference)
{
    const Inputs rows[] = {
        {100, 100, 1, 20, 5, "at the money, one year"},
        {42, 40, 0.5, 20, 10, "textbook call 4.7594, put 0.8086"},
        {80, 100, 0.75, 25, -1, "negative rate"},
        {1000, 950, 1.0 / 12, 15, 3, "one month"},
    };
    for (const Inputs& row : rows) {
        SCOPED_TRACE(row.source);
        enter(row);
        const auto ref = reference(row.S, row.K, row.T, row.vol, row.rate);
        for (size_t i = 0; i < ref.size(); ++i)
            expectRelative(model().property(resultNames[i]).toDouble(), ref[i], 1e-9,
                           resultNames[i]);
        EXPECT_DOUBLE_EQ(model().n_d1, ref[2]);
        EXPECT_NEAR(model().d1 - model().d2, row.vol / 100 * std::sqrt(row.T), 1e-12);
    }

    // N itself: symmetric, exact at 0, tails from erfc.
    EXPECT_EQ(BlackScholesModel::cumulativeNormal(0), 0.5);
    EXPECT_NEAR(BlackScholesModel::cumulativeNormal(1.96), 0.9750021048517795, 1e-15);
    EXPECT_NEAR(BlackScholesModel::cumulativeNormal(-1.96), 0.024997895148220435, 1e-16);
    expectRelative(BlackScholesModel::cumulativeNormal(-10), 7.619853024160527e-24, 1e-12,
                   "lower tail");
    EXPECT_NEAR(BlackScholesModel::standardPdf(0), 0.3989422804014327, 1e-16);

    // The classic textbook case's published figures.
    enter({42, 40, 0.5, 20, 10, ""});
    EXPECT_NEAR(model().d1, 0.7693, 5e-5);
    EXPECT_NEAR(model().d2, 0.6278, 5e-5);
    EXPECT_NEAR(model().callPrice, 4.7594, 5e-5);
    EXPECT_NEAR(model().putPrice, 0.8086, 5e-5);
}

TEST_F(BlackScholesTest, ScreenAndReportShowTwelveResults)
{
    EXPECT_EQ(view->title(), "Black Scholes");
    type("assetPriceField", "100");
    type("exercisePriceField", "100");
    type("timeToExpirationField", "1");
    type("standardDeviationField", "20");
    EXPECT_EQ(view->text("callPriceLabel"), local("7.966")) << "a rate of 0 while it is empty";
    type("riskFreeRateField", "5");
    EXPECT_EQ(labels(), locals({"10.451", "5.574", "0.637", "-0.363", "0.019", "0.019", "-6.414",
                                "-1.658", "37.524", "37.524", "53.232", "-41.89"}));
    screen->sendReportRequestedNotification("Option A");
    EXPECT_EQ(reportBody(), local("Asset Price: 100\nExercise Price: 100\nTime to Expiration: 1\n"
                                  "Standard Deviation: 20%\nRisk Free Rate: 5%\n\n"
                                  "Price Call: 10.451, Price Put: 5.574\n"
                                  "Delta Call: 0.637, Delta Put: -0.363\n"
                                  "Gamma Call: 0.019, Gamma Put: 0.019\n"
                                  "Theta Call: -6.414, Theta Put: -1.658\n"
                                  "Vega Call: 37.524, Vega Put: 37.524\n"
                                  "Rho Call: 53.232, Rho Put: -41.89\n"));
    expectReport("Black Scholes Model", "black-scholes_Option A_05-03-2024 14:07_report.txt", "Bsm",
                 Rgba(0x35, 0x44, 0x58));
    EXPECT_GT(view->descriptionHtml().size(), 500);

    // Volatility and rate are percentages: a fraction typed is a tiny rate.
    type("standardDeviationField", local("0.2"));
    expectRelative(model().callPrice, reference(100, 100, 1, 0.2, 5)[0], 1e-9,
                   "volatility of 0.2 percent");
}

TEST_F(BlackScholesTest, ImpossibleInputsShowNaNOrInfinity)
{
    type("assetPriceField", "");
    EXPECT_EQ(labels(), QStringList(12, "NaN")) << "an empty form is 0/0 inside the logarithm";

    enter({100, 100, 1, 20, 5, ""});
    type("timeToExpirationField", "soon");
    EXPECT_EQ(model().timeToExpiration, 0) << "unreadable text is 0";
    EXPECT_EQ(view->text("callPriceLabel"), "NaN") << "T = 0 at the money divides 0 by 0";

    enter({110, 100, 1, 20, 5, ""});
    type("standardDeviationField", "0");
    EXPECT_TRUE(std::isinf(model().d1));
    EXPECT_EQ(texts({"callDeltaLabel", "callGammaLabel"}), QStringList({"1", "NaN"}))
        << "0 density over 0 volatility";

    enter({0, 100, 1, 20, 5, ""});
    EXPECT_EQ(model().d1, -INFINITY);
    EXPECT_EQ(texts({"callPriceLabel", "putDeltaLabel"}), QStringList({"0", "-1"}));

    enter({100, 0, 1, 20, 5, ""});
    EXPECT_EQ(model().d1, INFINITY);
    EXPECT_EQ(texts({"callPriceLabel", "putRhoLabel"}), QStringList({"100", "0"}));
}

} // namespace
