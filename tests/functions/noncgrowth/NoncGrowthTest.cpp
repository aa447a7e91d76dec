#include "functions/ScreenTest.h"
#include "functions/noncgrowth/NoncGrowthController.h"

#include <QSignalSpy>
#include <cmath>

namespace {

class NoncGrowthTest : public ScreenTest<NoncGrowthController> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        model = screen->noncGrowthModel();
        table = screen->table();
    }
    // One row's two edits, as its fields send them.
    void rates(int row, const QString& returnRate, const QString& growthRate)
    {
        table->returnRateChanged(row, returnRate);
        table->growthRateChanged(row, growthRate);
    }
    // Two years of 20 % and 15 % growth, then 5 %, all at a return of 10 %.
    void threeStages()
    {
        type("dividendField", "2");
        type("periodField", "3");
        rates(0, "10", "20");
        rates(1, "10", "15");
        rates(2, "10", "5");
    }
    QString price() const { return view->text("priceResultLabel"); }

    NoncGrowthModel* model = nullptr;
    GrowthTableController* table = nullptr;
};

TEST_F(NoncGrowthTest, FreshScreen)
{
    EXPECT_EQ(view->title(), "Nonconstant Growth");
    EXPECT_TRUE(view->descriptionHtml().contains("Gordon"));
    EXPECT_EQ(view->text("periodField"), "4");
    EXPECT_EQ(model->period, 4.0);
    EXPECT_EQ(table->yearLabelTexts(), QStringList({"1", "2", "3", "4"}));
    EXPECT_EQ(table->returnRateTexts(), QStringList(4, "")) << "zeros show as empty";
    EXPECT_EQ(table->growthRateTexts(), QStringList(4, ""));
    EXPECT_TRUE(price().isEmpty()) << "nothing computed yet";

    // All-zero rates: three dividends of D0, then D0 / 0 in the last period.
    for (const auto& [dividend, shown] :
         {std::pair("2", "Infinity"), std::pair("-2", "-Infinity"), std::pair("", "NaN")}) {
        type("dividendField", dividend);
        EXPECT_EQ(price(), shown) << dividend;
    }
}

TEST_F(NoncGrowthTest, PriceOfTheThreeStageExample)
{
    threeStages();
    EXPECT_NEAR(model->price, 2.4 / 1.1 + 2.76 / 1.21 + (2.898 / 0.05) / 1.21, 1e-9);
    EXPECT_EQ(price(), local("52.364"));
    EXPECT_EQ(table->returnRateTexts(), QStringList({"10", "10", "10"}));
    const double three = model->price;

    // One period: the terminal value itself, not discounted at all; the
    // hidden rows keep their rates.
    type("periodField", "1");
    EXPECT_NEAR(model->price, 2.4 / (0.1 - 0.2), 1e-9) << "a negative perpetuity";
    type("periodField", "3");
    EXPECT_EQ(model->price, three);
    EXPECT_EQ(table->growthRateTexts(), QStringList({"20", "15", "5"}));
    type("periodField", "1");
    rates(0, "10", "5");
    EXPECT_NEAR(model->price, 42, 1e-9);
    EXPECT_EQ(price(), "42");

    // A fractional period has no perpetuity: ceil(2.5) = 3 plain dividends,
    // one period more than the table shows.
    rates(0, "10", "20");
    type("periodField", local("2.5"));
    EXPECT_EQ(model->period, 2.5);
    EXPECT_EQ(table->numberOfRows(), 2);
    EXPECT_NEAR(model->price, 2.4 / 1.1 + 2.76 / 1.21 + 2.898 / 1.331, 1e-9);

    // The description page's example: two years of 30 % growth, then 6 %.
    type("dividendField", "1");
    type("periodField", "3");
    rates(0, "12", "30");
    rates(1, "12", "30");
    rates(2, "11", "6");
    EXPECT_NEAR(model->price, 1.3 / 1.12 + 1.69 / 1.2544 + 1.7914 / 0.05 / 1.2544, 1e-9);
    EXPECT_EQ(price(), local("31.07"));
}

// With the same rates in every period the stages collapse into the
// one-stage Gordon value D0 (1 + g) / (r - g), whatever the period.
TEST_F(NoncGrowthTest, ConstantRatesGiveTheGordonValue)
{
    type("dividendField", local("1.5"));
    for (int row = 0; row < 99; ++row)
        rates(row, "12", local("4.5"));
    const double gordon = 1.5 * 1.045 / (0.12 - 0.045);
    for (const char* n : {"1", "2", "7", "40", "99"}) {
        type("periodField", n);
        EXPECT_NEAR(model->price, gordon, 1e-9 * gordon) << "period " << n;
    }
    EXPECT_EQ(price(), local("20.9"));

    // r equal to g in the last period divides by zero.
    rates(98, "7", "7");
    EXPECT_EQ(price(), "Infinity");
}

TEST_F(NoncGrowthTest, PeriodEdits)
{
    QSignalSpy reloads(table, &GrowthTableController::reloaded);
    // Kept whole with as many rows as whole periods; 100, 0, negatives,
    // unreadable text and overflows ignored; half a period has no rows.
    const std::tuple<QString, double, int> edits[] = {
        {local("2.9"), 2.9, 2}, {"100", 2.9, 2},         {"0", 2.9, 2},  {"-1", 2.9, 2},
        {"abc", 2.9, 2},        {overflowing(), 2.9, 2}, {"99", 99, 99}, {local("0.5"), 0.5, 0}};
    for (const auto& [text, period, rows] : edits) {
        type("periodField", text);
        EXPECT_EQ(std::pair(model->period, table->numberOfRows()), std::pair(period, rows))
            << text.toStdString();
    }
    EXPECT_EQ(reloads.count(), 8) << "the table reloads even when the period stays";

    // A dividend edit after a period edit is a dividend edit.
    type("dividendField", "3");
    EXPECT_EQ(model->dividend, 3);
    EXPECT_EQ(model->period, 0.5);
    EXPECT_EQ(reloads.count(), 8);
    EXPECT_NEAR(model->price, 3, 1e-12) << "one plain dividend, at rates of 0";

    type("periodField", "2");
    rates(0, "10", "5");
    rates(1, "10", "5");
    type("dividendField", "1");
    const double before = model->price;
    // "±" on the period changes its text without a change action.
    view->setText("periodField", "-2");
    type("dividendField", "2");
    EXPECT_EQ(model->dividend, 2) << "the dividend edit was taken for a period edit";
    EXPECT_NEAR(model->price, 2 * before, 1e-9 * before);
    EXPECT_EQ(model->period, 2.0);
}

TEST_F(NoncGrowthTest, BadCellsNeverBreakTheScreen)
{
    rates(0, "abc", "");
    EXPECT_EQ(model->rates[0].returnRate, 0);
    rates(0, local("0.08"), "3%");
    EXPECT_EQ(model->rates[0].returnRate, 0.08) << "fractions are taken as percent";
    EXPECT_EQ(model->rates[0].growthRate, 0) << "cells read like fields: \"3%\" is unreadable";

    // Rows outside the table are ignored, wherever the edit comes from.
    table->returnRateChanged(-1, "5");
    table->growthRateChanged(100, "5");
    auto& centre = NotificationCenter::defaultCenter();
    centre.post("RateChangedNotification", nullptr,
                {{"type", "return-rate"}, {"tag", 1000}, {"value", 1.0}});
    centre.post("RateChangedNotification", nullptr, {});
    EXPECT_EQ(model->rates.size(), 100);
    centre.post("PeriodChangedNotification", nullptr, {{"period", 100000}});
    EXPECT_EQ(table->numberOfRows(), 100);
    EXPECT_EQ(table->returnRateText(100000), "");

    // The table inputs of the command line.
    type("periodField", "2");
    type("dividendField", "1");
    ASSERT_TRUE(screen->setTableInput("return-rate", {"10", "10"}));
    ASSERT_TRUE(screen->setTableInput("growthRate", {"0", "0"}));
    EXPECT_NEAR(model->price, 1 / 1.1 + 1 / 0.1 / 1.1, 1e-9);
    EXPECT_EQ(model->returnRates().mid(0, 3), QList<double>({10, 10, 0}));
    EXPECT_FALSE(screen->setTableInput("growth-rate", QStringList(101, "1")));
    EXPECT_FALSE(screen->setTableInput("probability", {"1"}));
}

TEST_F(NoncGrowthTest, ReportCarriesTheConstantGrowthHeading)
{
    threeStages();
    type("dividendField", local("2.25"));
    type("periodField", "4");
    rates(3, local("9.5"), "4");
    screen->sendReportRequestedNotification("Plan A");
    EXPECT_EQ(reportBody(), local("Dividend: 2.25\nPeriod: 4\n"
                                  "Period 1 - Required Return: 10%, Growth Rate: 20%\n"
                                  "Period 2 - Required Return: 10%, Growth Rate: 15%\n"
                                  "Period 3 - Required Return: 10%, Growth Rate: 5%\n"
                                  "Period 4 - Required Return: 9.5%, Growth Rate: 4%\n"
                                  "\nPrice of Stock: ") +
                                price() + "\n");
    expectReport("Constant Growth", "nonconst-growth_Plan A_05-03-2024 14:07_report.txt", "Nonc-Gr",
                 Rgba(0x35, 0x44, 0x58));

    // A fractional period lists every period begun.
    type("periodField", local("2.5"));
    screen->sendReportRequestedNotification("");
    EXPECT_TRUE(reportBody().startsWith(local("Dividend: 2.25\nPeriod: 2\nPeriod 1 ")));
    EXPECT_TRUE(reportBody().contains("Period 3 - "));
    EXPECT_FALSE(reportBody().contains("Period 4 - "));
}

} // namespace
