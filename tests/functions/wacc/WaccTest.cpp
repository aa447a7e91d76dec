#include "functions/ScreenTest.h"
#include "functions/wacc/WaccController.h"

#include <cmath>

namespace {

struct Capital {
    double ke, equity, kd, debt, tax;
    const char* what;
};

// The textbook form: the weights first, then the after-tax cost of debt.
double referenceWacc(const Capital& c)
{
    const double equityWeight = c.equity / (c.equity + c.debt);
    const double debtWeight = 1 - equityWeight;
    const double afterTaxDebt = c.kd * (100 - c.tax) / 100;
    return equityWeight * c.ke + debtWeight * afterTaxDebt;
}

class WaccTest : public ScreenTest<WaccController> {
protected:
    void enter(const Capital& c)
    {
        type("costOfEquityField", typed(c.ke));
        type("equityField", typed(c.equity));
        type("costOfDebtField", typed(c.kd));
        type("debtField", typed(c.debt));
        type("corporateTaxRateField", typed(c.tax));
    }
    QString result() const { return view->text("waccResultLabel"); }
    double wacc() const { return screen->waccModel()->weightedAverageCostOfCapital; }
};

TEST_F(WaccTest, WeighsEquityAndAfterTaxDebtByValue)
{
    EXPECT_EQ(view->title(), "Wacc Calculator");
    type("costOfEquityField", "12");
    EXPECT_EQ(result(), "NaN%") << "equity and debt still empty: 0 / 0";

    const Capital rows[] = {
        {12, 600, 8, 400, 30, "60/40 split, 30 % tax"},
        {14, 250, 9, 750, 21, "mostly debt"},
        {9.5, 1, 4.25, 1e-9, 35, "almost no debt"},
        {11, 500, 7, 500, -10, "negative tax rate raises the debt cost"},
    };
    for (const Capital& row : rows) {
        SCOPED_TRACE(row.what);
        enter(row);
        EXPECT_NEAR(wacc(), referenceWacc(row), 1e-12 * referenceWacc(row));
    }

    enter(rows[0]); // 0.6 × 12 + 0.4 × 8 × 0.7
    EXPECT_NEAR(wacc(), 9.44, 1e-12);
    EXPECT_EQ(result(), local("9.44") + "%");
    screen->sendReportRequestedNotification("");
    EXPECT_EQ(reportBody(), "Cost of Equity: 12%\nEquity: 600\nCost of Debt: 8%\nDebt: 400\n"
                            "Corporate Tax Rate: 30%\n"
                            "Weighted Average Cost of Capital: " +
                                local("9.44") + "%\n");
    expectReport("Weighted Average Cost of Capital", "wacc__05-03-2024 14:07_report.txt", "Wacc",
                 Rgba(0x35, 0x44, 0x58));
    EXPECT_GT(view->descriptionHtml().size(), 500);

    // Boundary structures.
    const std::pair<Capital, double> bounds[] = {
        {{12, 600, 8, 0, 30, "no debt: the cost of equity"}, 12},
        {{12, 0, 8, 400, 30, "no equity: the after-tax cost of debt"}, 5.6},
        {{12, 600, 8, 400, 100, "tax rate 100: the debt term vanishes"}, 7.2},
    };
    for (const auto& [capital, expected] : bounds) {
        enter(capital);
        EXPECT_DOUBLE_EQ(wacc(), expected) << capital.what;
    }
    type("corporateTaxRateField", "");
    EXPECT_DOUBLE_EQ(wacc(), 0.6 * 12 + 0.4 * 8) << "empty tax field: no tax shield";
}

} // namespace
