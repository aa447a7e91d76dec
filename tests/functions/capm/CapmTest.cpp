#include "TestSupport.h"
#include "functions/capm/CapmController.h"

#include <QLocale>
#include <cmath>

namespace {

class CapmTest : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        screen = std::make_unique<CapmController>();
        screen->setPresenter(&presenter);
        view = screen->qvFunctionView();
    }
    void type(const QString& outlet, const QString& text) { screen->editField(outlet, text); }
    // Fills all four fields: a value for each, the one to solve gets `junk`.
    void fill(double rs, double rm, double rf, double beta, const QString& unknown,
              const QString& junk = QStringLiteral("?"))
    {
        const std::pair<const char*, double> values[] = {
            {"stockReturn", rs}, {"marketReturn", rm}, {"riskFreeRate", rf}, {"beta", beta}};
        for (const auto& [name, value] : values) {
            const QString outlet = QLatin1String(name) + QStringLiteral("Field");
            type(outlet, QLatin1String(name) == unknown ? junk : number(value));
        }
    }
    static QString number(double value)
    {
        return QString::number(value, 'g', 17).replace('.', QLocale().decimalPoint());
    }
    const CapmModel& model() const { return *screen->capmModel(); }

    ScriptedPresenter presenter;
    std::unique_ptr<CapmController> screen;
    QVFunctionView* view = nullptr;
};

TEST_F(CapmTest, EachButtonSolvesItsFieldFromTheOtherThree)
{
    EXPECT_EQ(view->title(), "Capm Calculator");
    EXPECT_EQ(screen->solveButtons(),
              QStringList({"stockReturn", "marketReturn", "riskFreeRate", "beta"}));

    // Rf 3 %, Rm 8 %, beta 1.2: Rs = 3 + 1.2 × 5 = 9 %.
    fill(0, 8, 3, 1.2, "stockReturn", "55");
    screen->solve("stockReturn");
    EXPECT_NEAR(model().stockReturn, 9, 1e-12);
    EXPECT_EQ(view->text("stockReturnField"), "9") << "the typed 55 is replaced";

    fill(9, 0, 3, 1.2, "marketReturn");
    screen->solve("marketReturn");
    EXPECT_NEAR(model().marketReturn, 8, 1e-12);
    EXPECT_EQ(view->text("marketReturnField"), "8");

    fill(9, 8, 0, 1.2, "riskFreeRate", "-7");
    screen->solve("riskFreeRate");
    EXPECT_NEAR(model().riskFreeRate, 3, 1e-12);
    EXPECT_EQ(view->text("riskFreeRateField"), "3");

    fill(9, 8, 3, 0, "beta", "");
    screen->solve("beta");
    EXPECT_NEAR(model().beta, 1.2, 1e-12);
    EXPECT_EQ(view->text("betaField"), local("1.2"));

    // The other fields keep their text.
    EXPECT_EQ(view->text("stockReturnField"), "9");
    EXPECT_EQ(view->text("marketReturnField"), "8");
    EXPECT_EQ(view->text("riskFreeRateField"), "3");
}

// Rs is built from Rf, Rm and beta by the textbook line; solving any one of
// the four back from the other three gives it again.
TEST_F(CapmTest, SolvingAnyValueInvertsTheSecurityMarketLine)
{
    struct Row {
        double rf, rm, beta;
        const char* what;
    };
    const Row rows[] = {
        {3, 8, 1.2, "aggressive stock"},      {2.5, 7.25, 0.6, "defensive stock"},
        {4, 2, 1.5, "market below the rate"}, {1, 9, -0.4, "negative beta"},
        {-0.5, 6, 2.75, "negative rate"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const double rs = row.rf + row.beta * (row.rm - row.rf);
        const double expected[] = {rs, row.rm, row.rf, row.beta};
        const QStringList names = screen->solveButtons();
        for (int i = 0; i < names.size(); ++i) {
            SCOPED_TRACE(names[i].toStdString());
            fill(rs, row.rm, row.rf, row.beta, names[i]);
            screen->solve(names[i]);
            const double solved = model().property(names[i].toLatin1()).toDouble();
            EXPECT_NEAR(solved, expected[i], 1e-12 * (1 + std::abs(expected[i])));
            EXPECT_EQ(view->text(names[i] + "Field"), QVFunctionModel::stringFromDouble(solved));
        }
    }
}

TEST_F(CapmTest, EditsComputeNothingAndShownRoundingFeedsTheNextSolve)
{
    fill(10, 9, 3, 0, "beta");
    screen->fieldChanged();
    EXPECT_EQ(model().stockReturn, 0) << "the fields reach the model only on a solve";

    screen->solve("beta"); // 7 / 6
    EXPECT_NEAR(model().beta, 7.0 / 6.0, 1e-15);
    EXPECT_EQ(view->text("betaField"), local("1.167"));

    // The next solve reads the rounded beta the field now shows.
    screen->solve("stockReturn");
    EXPECT_NEAR(model().beta, 1.167, 1e-15);
    EXPECT_NEAR(model().stockReturn, 3 + 1.167 * 6, 1e-12);
    EXPECT_EQ(view->text("stockReturnField"), local("10.002"));

    screen->solve("dividend");
    EXPECT_EQ(view->text("stockReturnField"), local("10.002")) << "unknown names do nothing";
}

TEST_F(CapmTest, UnguardedDivisionsShowInfinityOrNaN)
{
    fill(9, 8, 0, 1, "riskFreeRate");
    screen->solve("riskFreeRate");
    EXPECT_EQ(view->text("riskFreeRateField"), "Infinity") << "beta 1: 0.01 / 0";
    fill(8, 8, 0, 1, "riskFreeRate");
    screen->solve("riskFreeRate");
    EXPECT_EQ(view->text("riskFreeRateField"), "NaN") << "beta 1 with Rs = Rm: 0 / 0";

    fill(9, 0, 3, 0, "marketReturn");
    screen->solve("marketReturn");
    EXPECT_EQ(view->text("marketReturnField"), "Infinity") << "beta 0";

    fill(2, 5, 5, 0, "beta");
    screen->solve("beta");
    EXPECT_EQ(view->text("betaField"), "-Infinity") << "Rm = Rf";

    // An empty form: the stock return is 0, beta is 0 / 0.
    for (const char* outlet :
         {"stockReturnField", "marketReturnField", "riskFreeRateField", "betaField"})
        type(outlet, "");
    screen->solve("stockReturn");
    EXPECT_EQ(view->text("stockReturnField"), "0");
    screen->solve("beta");
    EXPECT_EQ(view->text("betaField"), "NaN");
}

TEST_F(CapmTest, ReportShowsTheValuesOfTheLastSolve)
{
    fill(0, 8, 3, 1.2, "stockReturn");
    screen->solve("stockReturn");
    type("betaField", "2"); // not read until the next solve
    screen->sendReportRequestedNotification("Acme");
    const QVReport& report = model().report();
    const QString expected = "Financial Report - Capital Asset Pricing Model\n"
                             "Date: 05-03-2024 14:07\n"
                             "\n-----------------------------\n\n"
                             "Exp. Return (Stock): 9%\nExp. Return (Market): 8%\n"
                             "Risk Free Rate: 3%\nBeta: " +
                             local("1.2") + "\n";
    EXPECT_EQ(report.contents, expected);
    EXPECT_EQ(report.fileName, "capm_Acme_05-03-2024 14:07_report.txt");
    EXPECT_EQ(report.functionTitle, "Capm");
    EXPECT_EQ(report.colorTag, Rgba(0x35, 0x44, 0x58));
    EXPECT_EQ(readDocument(report.fileName), expected);
    EXPECT_EQ(model().reportRequestedNotificationName(), "CapmReportRequestedNotification");
    EXPECT_GT(view->descriptionHtml().size(), 500);
}

} // namespace
