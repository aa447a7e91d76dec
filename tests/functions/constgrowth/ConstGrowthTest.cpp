#include "functions/ScreenTest.h"
#include "functions/constgrowth/ConstGrowthController.h"

#include <cmath>

namespace {

// The value of a share as the discounted sum of a growing dividend stream:
// D1 in year 1, growing by g each year after, discounted at r. For r > g
// this converges to the closed form the calculator uses, so it checks the
// formula from first principles.
double discountedDividends(double nextDividend, double r, double g)
{
    double value = 0;
    double term = nextDividend / (1 + r);
    for (int year = 1; year <= 20000; ++year) {
        value += term;
        term *= (1 + g) / (1 + r);
    }
    return value;
}

class ConstGrowthTest : public ScreenTest<ConstGrowthController> {
protected:
    void choose(const QString& word) { ScreenTest::choose("dividendTypeButton", word); }
    void enter(const char* dividend, const char* returnRate, const char* growthRate)
    {
        type("dividendField", local(dividend));
        type("returnRateField", local(returnRate));
        type("growthRateField", local(growthRate));
    }
    QString price() const { return view->text("priceResultLabel"); }
    const ConstGrowthModel& model() const { return *screen->constGrowthModel(); }
};

TEST_F(ConstGrowthTest, PriceFromTheCurrentOrTheNextDividend)
{
    EXPECT_EQ(view->title(), "Constant Growth");
    EXPECT_TRUE(view->descriptionHtml().contains("constant-growth"));

    choose("Current (D0)");
    EXPECT_EQ(view->text("dividendTypeButton"), "Current (D0)");
    enter("2", "10", "5");
    EXPECT_EQ(model().dividendType, "Current (D0)");
    EXPECT_DOUBLE_EQ(model().price, 42) << "D1 = 2.1";
    EXPECT_EQ(price(), "42");

    choose("Next (D1)");
    EXPECT_EQ(view->text("dividendTypeButton"), "Next (D1)");
    EXPECT_DOUBLE_EQ(model().price, 40) << "the choice recomputes without another edit";
    EXPECT_EQ(price(), "40");

    struct Row {
        const char* type;
        double dividend, r, g;
    };
    const Row rows[] = {{"Current (D0)", 1.8, 9, 4},
                        {"Next (D1)", 3.25, 12.5, 0},
                        {"Current (D0)", 0.75, 8, -2},
                        {"Next (D1)", 100, 30, 29}};
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.type) + " r=" + std::to_string(row.r) +
                     " g=" + std::to_string(row.g));
        choose(row.type);
        type("dividendField", QLocale().toString(row.dividend));
        type("returnRateField", QLocale().toString(row.r));
        type("growthRateField", QLocale().toString(row.g));
        const double g = row.g / 100;
        const double d1 =
            QLatin1String(row.type) == "Next (D1)" ? row.dividend : row.dividend * (1 + g);
        const double expected = discountedDividends(d1, row.r / 100, g);
        EXPECT_NEAR(model().price, expected, 1e-9 * expected);
    }

    // Rates that meet or cross.
    struct Edge {
        const char *type, *dividend, *r, *g, *shown;
    };
    const Edge edges[] = {
        {"Current (D0)", "2", "5", "5", "Infinity"},
        {"Current (D0)", "0", "5", "5", "NaN"},
        {"Current (D0)", "-1", "5", "5", "-Infinity"},
        {"Next (D1)", "1", "5", "7", "-50"}, // growth above return is not an error
    };
    for (const Edge& row : edges) {
        choose(row.type);
        enter(row.dividend, row.r, row.g);
        EXPECT_EQ(price(), row.shown) << row.dividend << " " << row.r << " " << row.g;
    }
}

TEST_F(ConstGrowthTest, DividendTypeSheetOffersTwoTypesAndNoCancel)
{
    EXPECT_EQ(view->text("dividendTypeButton"), ConstGrowthController::unchosenTitle);
    enter("2", "10", "5");
    EXPECT_EQ(price(), "0") << "no type chosen: the price is untouched";
    EXPECT_EQ(model().dividendType, ConstGrowthController::unchosenTitle);

    choose("Next (D1)");
    ASSERT_EQ(presenter.requests.size(), 1u);
    const AlertRequest& sheet = presenter.requests.front();
    EXPECT_EQ(sheet.kind, AlertRequest::Kind::ActionSheet);
    EXPECT_EQ(sheet.title, "Dividend Type");
    EXPECT_EQ(sheet.message, "Please choose a type for dividends.");
    EXPECT_EQ(sheet.anchor, "dividendTypeButton");
    ASSERT_EQ(sheet.actions.size(), 2);
    EXPECT_EQ(sheet.actions[0].title, "Current (D0)");
    EXPECT_EQ(sheet.actions[1].title, "Next (D1)");
    EXPECT_FALSE(sheet.actions[0].cancel || sheet.actions[1].cancel);
    EXPECT_EQ(price(), "40");

    // A sheet closed without a choice (or answered with a foreign word)
    // changes nothing.
    choose("");
    choose("Cancel");
    EXPECT_EQ(view->text("dividendTypeButton"), "Next (D1)");
    EXPECT_EQ(price(), "40");

    // Typing a foreign title into the button stops the pricing: the last
    // price stays on screen.
    view->setText("dividendTypeButton", "Preferred");
    type("dividendField", "4");
    EXPECT_EQ(price(), "40");
}

TEST_F(ConstGrowthTest, ReportListsTheInputsAndThePrice)
{
    screen->sendReportRequestedNotification("Fresh");
    EXPECT_EQ(reportBody(), "Dividend Type: \nDividend: 0\nRequired Rate of Return: 0%\n"
                            "Growth Rate: 0%\nPrice of Stock: 0\n")
        << "before any edit the type is none";

    choose("Current (D0)");
    enter("2.5", "8", "3");
    screen->sendReportRequestedNotification("Utility");
    EXPECT_EQ(reportBody(), "Dividend Type: Current (D0)\nDividend: " + local("2.5") +
                                "\nRequired Rate of Return: 8%\nGrowth Rate: 3%\n"
                                "Price of Stock: " +
                                local("51.5") + "\n");
    EXPECT_EQ(report().title, "Utility");
    expectReport("Constant Growth",
                 "const-growth_Fresh_05-03-2024 14:07_report.txt_Utility_"
                 "05-03-2024 14:07_report.txt",
                 "Const-Gr", Rgba(0x35, 0x44, 0x58));
}

} // namespace
