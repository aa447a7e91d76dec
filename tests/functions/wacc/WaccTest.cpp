#include "TestSupport.h"
#include "functions/wacc/WaccController.h"

#include <QLocale>
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

class WaccTest : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        screen = std::make_unique<WaccController>();
        screen->setPresenter(&presenter);
        view = screen->qvFunctionView();
    }
    void type(const QString& outlet, const QString& text) { screen->editField(outlet, text); }
    void enter(const Capital& c)
    {
        type("costOfEquityField", number(c.ke));
        type("equityField", number(c.equity));
        type("costOfDebtField", number(c.kd));
        type("debtField", number(c.debt));
        type("corporateTaxRateField", number(c.tax));
    }
    static QString number(double value) { return typed(value); }
    QString result() const { return view->text("waccResultLabel"); }
    double wacc() const { return screen->waccModel()->weightedAverageCostOfCapital; }

    ScriptedPresenter presenter;
    std::unique_ptr<WaccController> screen;
    QVFunctionView* view = nullptr;
};

TEST_F(WaccTest, WeighsEquityAndAfterTaxDebtByValue)
{
    const Capital rows[] = {
        {12, 600, 8, 400, 30, "60/40 split, 30 % tax"},
        {10, 3e6, 6, 2e6, 25, "large firm"},
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
}

TEST_F(WaccTest, BoundaryStructures)
{
    enter({12, 600, 8, 0, 30, ""});
    EXPECT_DOUBLE_EQ(wacc(), 12) << "no debt: the cost of equity";
    EXPECT_EQ(result(), "12%");

    enter({12, 0, 8, 400, 30, ""});
    EXPECT_DOUBLE_EQ(wacc(), 5.6) << "no equity: the after-tax cost of debt";

    enter({12, 600, 8, 400, 100, ""});
    EXPECT_DOUBLE_EQ(wacc(), 7.2) << "tax rate 100: the debt term vanishes";

    type("corporateTaxRateField", "");
    EXPECT_DOUBLE_EQ(wacc(), 0.6 * 12 + 0.4 * 8) << "empty tax field: no tax shield";
}

TEST_F(WaccTest, NoCapitalGivesNaN)
{
    EXPECT_EQ(view->title(), "Wacc Calculator");
    type("costOfEquityField", "12");
    EXPECT_EQ(result(), "NaN%") << "equity and debt still empty: 0 / 0";

    enter({12, 600, 8, 400, 30, ""});
    type("equityField", "six hundred");
    EXPECT_EQ(screen->waccModel()->equity, 0) << "unreadable text is 0";
    EXPECT_EQ(result(), local("5.6") + "%");
    type("debtField", "0");
    EXPECT_EQ(result(), "NaN%");
}

TEST_F(WaccTest, ReportListsInputsAndResult)
{
    enter({12, 600, 8, 400, 30, ""});
    screen->sendReportRequestedNotification("");
    const QVReport& report = screen->waccModel()->report();
    const QString expected = "Financial Report - Weighted Average Cost of Capital\n"
                             "Date: 05-03-2024 14:07\n"
                             "\n-----------------------------\n\n"
                             "Cost of Equity: 12%\nEquity: 600\nCost of Debt: 8%\nDebt: 400\n"
                             "Corporate Tax Rate: 30%\n"
                             "Weighted Average Cost of Capital: " +
                             local("9.44") + "%\n";
    EXPECT_EQ(report.contents, expected);
    EXPECT_EQ(report.fileName, "wacc__05-03-2024 14:07_report.txt") << "an empty title";
    EXPECT_EQ(report.functionTitle, "Wacc");
    EXPECT_EQ(report.colorTag, Rgba(0x35, 0x44, 0x58));
    EXPECT_EQ(readDocument(report.fileName), expected);
    EXPECT_EQ(screen->waccModel()->reportCreatedNotificationName(),
              "WaccReportCreatedNotification");
    EXPECT_GT(view->descriptionHtml().size(), 500);
}

} // namespace
