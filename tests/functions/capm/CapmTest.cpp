#include "functions/ScreenTest.h"
#include "functions/capm/CapmController.h"

#include <cmath>

namespace {

class CapmTest : public ScreenTest<CapmController> {
protected:
    // Fills all four fields: a value for each, the one to solve gets `junk`.
    void fill(double rs, double rm, double rf, double beta, const QString& unknown,
              const QString& junk = QStringLiteral("?"))
    {
        const std::pair<const char*, double> values[] = {
            {"stockReturn", rs}, {"marketReturn", rm}, {"riskFreeRate", rf}, {"beta", beta}};
        for (const auto& [name, value] : values)
            type(QLatin1String(name) + QStringLiteral("Field"),
                 QLatin1String(name) == unknown ? junk : exact(value));
    }
    void solve(double rs, double rm, double rf, double beta, const QString& unknown,
               const QString& junk = QStringLiteral("?"))
    {
        fill(rs, rm, rf, beta, unknown, junk);
        screen->solve(unknown);
    }
    const CapmModel& model() const { return *screen->capmModel(); }
};

// Rs is built from Rf, Rm and beta by the textbook line; each button solves
// its own field back from the other three, whatever that field held. The
// first row: Rf 3 %, Rm 8 %, beta 1.2 give Rs = 3 + 1.2 × 5 = 9 %.
TEST_F(CapmTest, EachButtonInvertsTheSecurityMarketLine)
{
    EXPECT_EQ(view->title(), "Capm Calculator");
    const QStringList names = screen->solveButtons();
    ASSERT_EQ(names, QStringList({"stockReturn", "marketReturn", "riskFreeRate", "beta"}));
    const QString junk[] = {"55", "?", "-7", ""};
    const char* firstRowShown[] = {"9", "8", "3", "1.2"};
    struct Row {
        double rf, rm, beta;
        const char* what;
    };
    const Row rows[] = {
        {3, 8, 1.2, "aggressive stock"},
        {4, 2, 1.5, "market below the rate"},
        {1, 9, -0.4, "negative beta"},
        {-0.5, 6, 2.75, "negative rate"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const double rs = row.rf + row.beta * (row.rm - row.rf);
        const double expected[] = {rs, row.rm, row.rf, row.beta};
        for (int i = 0; i < names.size(); ++i) {
            SCOPED_TRACE(names[i].toStdString());
            solve(rs, row.rm, row.rf, row.beta, names[i], junk[i]);
            const double solved = model().property(names[i].toLatin1()).toDouble();
            EXPECT_NEAR(solved, expected[i], 1e-12 * (1 + std::abs(expected[i])));
            EXPECT_EQ(view->text(names[i] + "Field"), QVFunctionModel::stringFromDouble(solved));
            if (&row == rows) {
                EXPECT_EQ(view->text(names[i] + "Field"), local(firstRowShown[i]));
            }
        }
        // The other fields keep their text.
        EXPECT_EQ(view->text("stockReturnField"), exact(rs));
        EXPECT_EQ(view->text("marketReturnField"), exact(row.rm));
        EXPECT_EQ(view->text("riskFreeRateField"), exact(row.rf));
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

// The field shows the division's result and, under it, why; the next solve
// clears the line again, under every field.
TEST_F(CapmTest, UnguardedDivisionsShowInfinityOrNaNAndSayWhy)
{
    struct Row {
        double rs, rm, rf, beta;
        const char *unknown, *shown, *why;
    };
    const Row rows[] = {
        {9, 8, 0, 1, "riskFreeRate", "Infinity", "beta 1: 0.01 / 0"},
        {8, 8, 0, 1, "riskFreeRate", "NaN", "beta 1 with Rs = Rm: 0 / 0"},
        {9, 0, 3, 0, "marketReturn", "Infinity", "beta 0"},
        {2, 5, 5, 0, "beta", "-Infinity", "Rm = Rf"},
        {0, 0, 0, 0, "beta", "NaN", "all zero: 0 / 0"},
    };
    const QString fields[] = {"stockReturnField", "marketReturnField", "riskFreeRateField",
                              "betaField"};
    for (const Row& row : rows) {
        solve(row.rs, row.rm, row.rf, row.beta, row.unknown);
        const QString field = QLatin1String(row.unknown) + "Field";
        EXPECT_EQ(view->text(field), row.shown) << row.why;
        EXPECT_EQ(view->note(field), model().note(row.unknown)) << row.why;
        EXPECT_FALSE(view->note(field).isEmpty()) << row.why;
        solve(9, 8, 3, 1.2, "stockReturn");
        for (const QString& each : fields)
            EXPECT_TRUE(view->note(each).isEmpty()) << row.why << " " << each.toStdString();
    }
}

TEST_F(CapmTest, ReportShowsTheValuesOfTheLastSolve)
{
    solve(0, 8, 3, 1.2, "stockReturn");
    type("betaField", "2"); // not read until the next solve
    screen->sendReportRequestedNotification("Acme");
    EXPECT_EQ(reportBody(), "Exp. Return (Stock): 9%\nExp. Return (Market): 8%\n"
                            "Risk Free Rate: 3%\nBeta: " +
                                local("1.2") + "\n");
    expectReport("Capital Asset Pricing Model", "capm_Acme_05-03-2024 14:07_report.txt", "Capm",
                 Rgba(0x35, 0x44, 0x58));
    EXPECT_GT(view->descriptionHtml().size(), 500);
}

} // namespace
