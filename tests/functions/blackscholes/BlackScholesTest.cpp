#include "TestSupport.h"
#include "functions/blackscholes/BlackScholesController.h"

#include <QLocale>
#include <cmath>
#include <numbers>

namespace {

// Prices and greeks written out independently of the model: the put comes
// from N(−d) instead of 1 − N(d), N from erf in the upper half, and gamma,
// vega, theta and rho from the forms that use K·e^(−rT)·φ(d2) (equal to
// S·φ(d1)) and put-call parity.
struct Reference {
    double call, put;
    double callDelta, putDelta;
    double gamma, vega;
    double callTheta, putTheta;
    double callRho, putRho;
};

double normalCdf(double x)
{
    return x >= 0 ? 0.5 * (1 + std::erf(x / std::numbers::sqrt2))
                  : 0.5 * std::erfc(-x / std::numbers::sqrt2);
}

double normalDensity(double x)
{
    return std::exp(-x * x / 2) / std::sqrt(2 * std::numbers::pi);
}

Reference reference(double S, double K, double T, double volPercent, double ratePercent)
{
    const double sigma = volPercent / 100, r = ratePercent / 100;
    const double spread = sigma * std::sqrt(T);
    const double d2 = (std::log(S / K) + (r - sigma * sigma / 2) * T) / spread;
    const double d1 = d2 + spread;
    const double pv = K * std::exp(-r * T); // present value of the strike
    Reference ref{};
    ref.call = S * normalCdf(d1) - pv * normalCdf(d2);
    ref.put = pv * normalCdf(-d2) - S * normalCdf(-d1);
    ref.callDelta = normalCdf(d1);
    ref.putDelta = -normalCdf(-d1);
    ref.gamma = pv * normalDensity(d2) / (S * S * spread);
    ref.vega = pv * normalDensity(d2) * std::sqrt(T);
    ref.callTheta = -pv * normalDensity(d2) * sigma / (2 * std::sqrt(T)) - r * pv * normalCdf(d2);
    ref.putTheta = ref.callTheta + r * pv;
    ref.callRho = T * pv * normalCdf(d2);
    ref.putRho = ref.callRho - T * pv;
    return ref;
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

class BlackScholesTest : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        screen = std::make_unique<BlackScholesController>();
        screen->setPresenter(&presenter);
        view = screen->qvFunctionView();
    }
    void type(const QString& outlet, const QString& text) { screen->editField(outlet, text); }
    void enter(const Inputs& in)
    {
        type("assetPriceField", number(in.S));
        type("exercisePriceField", number(in.K));
        type("timeToExpirationField", number(in.T));
        type("standardDeviationField", number(in.vol));
        type("riskFreeRateField", number(in.rate));
    }
    static QString number(double value)
    {
        return QString::number(value, 'g', 17).replace('.', QLocale().decimalPoint());
    }
    static QStringList localList(std::initializer_list<const char*> numbers)
    {
        QStringList texts;
        for (const char* n : numbers)
            texts << local(n);
        return texts;
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

    ScriptedPresenter presenter;
    std::unique_ptr<BlackScholesController> screen;
    QVFunctionView* view = nullptr;
};

const Inputs referenceRows[] = {
    {100, 100, 1, 20, 5, "at the money, one year"},
    {42, 40, 0.5, 20, 10, "textbook call 4.7594, put 0.8086"},
    {50, 55, 0.25, 30, 4, "out-of-the-money call, three months"},
    {120, 100, 2, 35, 2.5, "in-the-money call, two years, high volatility"},
    {80, 100, 0.75, 25, -1, "negative rate"},
    {1000, 950, 1.0 / 12, 15, 3, "one month"},
};

TEST_F(BlackScholesTest, PricesAndGreeksAgreeWithIndependentReference)
{
    for (const Inputs& row : referenceRows) {
        SCOPED_TRACE(row.source);
        enter(row);
        const Reference ref = reference(row.S, row.K, row.T, row.vol, row.rate);
        const BlackScholesModel& m = model();
        expectRelative(m.callPrice, ref.call, 1e-9, "call price");
        expectRelative(m.putPrice, ref.put, 1e-9, "put price");
        expectRelative(m.callDelta, ref.callDelta, 1e-9, "call delta");
        expectRelative(m.putDelta, ref.putDelta, 1e-9, "put delta");
        expectRelative(m.callGamma, ref.gamma, 1e-9, "call gamma");
        expectRelative(m.putGamma, ref.gamma, 1e-9, "put gamma");
        expectRelative(m.callVega, ref.vega, 1e-9, "call vega");
        expectRelative(m.putVega, ref.vega, 1e-9, "put vega");
        expectRelative(m.callTheta, ref.callTheta, 1e-9, "call theta");
        expectRelative(m.putTheta, ref.putTheta, 1e-9, "put theta");
        expectRelative(m.callRho, ref.callRho, 1e-9, "call rho");
        expectRelative(m.putRho, ref.putRho, 1e-9, "put rho");
        EXPECT_DOUBLE_EQ(m.n_d1, ref.callDelta);
        EXPECT_NEAR(m.d1 - m.d2, row.vol / 100 * std::sqrt(row.T), 1e-12);
    }
}

TEST_F(BlackScholesTest, PublishedFigures)
{
    // The classic textbook case.
    enter({42, 40, 0.5, 20, 10, ""});
    EXPECT_NEAR(model().d1, 0.7693, 5e-5);
    EXPECT_NEAR(model().d2, 0.6278, 5e-5);
    EXPECT_NEAR(model().callPrice, 4.7594, 5e-5);
    EXPECT_NEAR(model().putPrice, 0.8086, 5e-5);

    // At the money: d1 = 0.35 and d2 = 0.15 exactly.
    enter({100, 100, 1, 20, 5, ""});
    EXPECT_NEAR(model().d1, 0.35, 1e-15);
    EXPECT_NEAR(model().d2, 0.15, 1e-15);
    EXPECT_NEAR(model().callPrice, 10.4506, 5e-5);
    EXPECT_NEAR(model().putPrice, 5.5735, 5e-5);
    EXPECT_NEAR(model().callDelta, 0.6368, 5e-5);
    EXPECT_NEAR(model().putDelta, -0.3632, 5e-5);
    EXPECT_NEAR(model().callGamma, 0.018762, 5e-7);
    EXPECT_NEAR(model().callVega, 37.524, 5e-4);
    EXPECT_NEAR(model().callTheta, -6.414, 5e-4);
    EXPECT_NEAR(model().putTheta, -1.658, 5e-4);
    EXPECT_NEAR(model().callRho, 53.232, 5e-4);
    EXPECT_NEAR(model().putRho, -41.890, 5e-4);
}

// The greeks are the derivatives of the prices in the units the screen
// states: per unit of S, of volatility (1.00, not one point), of T and of
// rate. Central differences of the model's own prices confirm that; the
// steps are small enough that the differences' own error stays below 1e-7.
TEST_F(BlackScholesTest, GreeksAreDerivativesOfThePricesPerUnit)
{
    struct Prices {
        double call, put;
    };
    const auto prices = [this](const Inputs& in) {
        enter(in);
        return Prices{model().callPrice, model().putPrice};
    };
    // Slopes of both prices along one input moved by ±h.
    const auto slope = [&](const Inputs& at, double Inputs::*input, double h) {
        Inputs up = at, down = at;
        up.*input += h;
        down.*input -= h;
        const Prices a = prices(up), b = prices(down);
        return Prices{(a.call - b.call) / (2 * h), (a.put - b.put) / (2 * h)};
    };
    for (const Inputs& row : referenceRows) {
        SCOPED_TRACE(row.source);
        enter(row);
        const BlackScholesModel& m = model();
        const double callDelta = m.callDelta, putDelta = m.putDelta, gamma = m.callGamma;
        const double vega = m.callVega, callTheta = m.callTheta, putTheta = m.putTheta;
        const double callRho = m.callRho, putRho = m.putRho;

        const Prices bySpot = slope(row, &Inputs::S, row.S * 1e-5);
        expectRelative(bySpot.call, callDelta, 1e-6, "call delta");
        expectRelative(bySpot.put, putDelta, 1e-6, "put delta");
        const double hS = row.S * 1e-4;
        Inputs up = row, down = row;
        up.S += hS;
        down.S -= hS;
        const double curvature =
            (prices(up).call - 2 * prices(row).call + prices(down).call) / (hS * hS);
        expectRelative(curvature, gamma, 1e-5, "gamma");

        // Volatility and rate are typed in percent: a step of h points is
        // h/100 in the unit the greeks use.
        const Prices byVol = slope(row, &Inputs::vol, 1e-4);
        expectRelative(byVol.call * 100, vega, 1e-6, "call vega per unit of volatility");
        expectRelative(byVol.put * 100, vega, 1e-6, "put vega");

        const Prices byTime = slope(row, &Inputs::T, row.T * 1e-5);
        expectRelative(-byTime.call, callTheta, 1e-6, "call theta per unit of T");
        expectRelative(-byTime.put, putTheta, 1e-6, "put theta");

        const Prices byRate = slope(row, &Inputs::rate, 1e-4);
        expectRelative(byRate.call * 100, callRho, 1e-6, "call rho per unit of rate");
        expectRelative(byRate.put * 100, putRho, 1e-6, "put rho");
    }
}

TEST_F(BlackScholesTest, PutFromOneMinusNAgreesWithParity)
{
    for (const Inputs& row : referenceRows) {
        SCOPED_TRACE(row.source);
        enter(row);
        const double pvStrike = row.K * std::exp(-row.rate / 100 * row.T);
        EXPECT_NEAR(model().callPrice - model().putPrice, row.S - pvStrike, 1e-12 * row.S);
        const double putFromMinusD = pvStrike * BlackScholesModel::cumulativeNormal(-model().d2) -
                                     row.S * BlackScholesModel::cumulativeNormal(-model().d1);
        EXPECT_NEAR(model().putPrice, putFromMinusD, 1e-12 * row.S);
        EXPECT_NEAR(model().callDelta - model().putDelta, 1, 1e-15);
    }

    // N itself: symmetric, exact at 0, tails from erfc.
    EXPECT_EQ(BlackScholesModel::cumulativeNormal(0), 0.5);
    EXPECT_NEAR(BlackScholesModel::cumulativeNormal(1.96), 0.9750021048517795, 1e-15);
    EXPECT_NEAR(BlackScholesModel::cumulativeNormal(-1.96), 0.024997895148220435, 1e-16);
    expectRelative(BlackScholesModel::cumulativeNormal(-10), 7.619853024160527e-24, 1e-12,
                   "lower tail");
    EXPECT_NEAR(BlackScholesModel::standardPdf(0), 0.3989422804014327, 1e-16);
}

TEST_F(BlackScholesTest, ScreenShowsTwelveResultsOnEveryEdit)
{
    EXPECT_EQ(view->title(), "Black Scholes");
    type("assetPriceField", "100");
    type("exercisePriceField", "100");
    type("timeToExpirationField", "1");
    type("standardDeviationField", "20");
    EXPECT_EQ(view->text("callPriceLabel"), local("7.966")) << "a rate of 0 while it is empty";
    type("riskFreeRateField", "5");
    EXPECT_EQ(labels(), localList({"10.451", "5.574", "0.637", "-0.363", "0.019", "0.019", "-6.414",
                                   "-1.658", "37.524", "37.524", "53.232", "-41.89"}));

    // Volatility and rate are percentages: a fraction typed is a tiny rate.
    type("standardDeviationField", local("0.2"));
    EXPECT_DOUBLE_EQ(model().standardDeviation, 0.2);
    const Reference ref = reference(100, 100, 1, 0.2, 5);
    expectRelative(model().callPrice, ref.call, 1e-9, "volatility of 0.2 percent");
    EXPECT_EQ(view->text("callPriceLabel"), local("4.877"));
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
    EXPECT_EQ(view->text("callDeltaLabel"), "1");
    EXPECT_EQ(view->text("callGammaLabel"), "NaN") << "0 density over 0 volatility";

    enter({0, 100, 1, 20, 5, ""});
    EXPECT_EQ(model().d1, -INFINITY);
    EXPECT_EQ(view->text("callPriceLabel"), "0");
    EXPECT_EQ(view->text("putDeltaLabel"), "-1");

    enter({100, 0, 1, 20, 5, ""});
    EXPECT_EQ(model().d1, INFINITY);
    EXPECT_EQ(view->text("callPriceLabel"), "100");
    EXPECT_EQ(view->text("putRhoLabel"), "0");
}

TEST_F(BlackScholesTest, ReportListsInputsThenPairs)
{
    enter({100, 100, 1, 20, 5, ""});
    screen->sendReportRequestedNotification("Option A");
    const QVReport& report = model().report();
    const QString expected = "Financial Report - Black Scholes Model\nDate: 05-03-2024 14:07\n"
                             "\n-----------------------------\n\n"
                             "Asset Price: 100\nExercise Price: 100\nTime to Expiration: 1\n"
                             "Standard Deviation: 20%\nRisk Free Rate: 5%\n\n"
                             "Price Call: " +
                             local("10.451") + ", Price Put: " + local("5.574") +
                             "\nDelta Call: " + local("0.637") + ", Delta Put: " + local("-0.363") +
                             "\nGamma Call: " + local("0.019") + ", Gamma Put: " + local("0.019") +
                             "\nTheta Call: " + local("-6.414") +
                             ", Theta Put: " + local("-1.658") + "\nVega Call: " + local("37.524") +
                             ", Vega Put: " + local("37.524") + "\nRho Call: " + local("53.232") +
                             ", Rho Put: " + local("-41.89") + "\n";
    EXPECT_EQ(report.contents, expected);
    EXPECT_EQ(report.fileName, "black-scholes_Option A_05-03-2024 14:07_report.txt");
    EXPECT_EQ(report.functionTitle, "Bsm");
    EXPECT_EQ(report.colorTag, Rgba(0x35, 0x44, 0x58));
    EXPECT_EQ(readDocument(report.fileName), expected);
    EXPECT_EQ(model().reportCreatedNotificationName(), "BlackScholesReportCreatedNotification");
    EXPECT_EQ(model().descriptionName(), "blackscholes_description");
    EXPECT_GT(view->descriptionHtml().size(), 500);
}

} // namespace
