#include "functions/ScreenTest.h"
#include "functions/expreturn/ExpReturnController.h"

#include <QSignalSpy>
#include <cmath>

namespace {

// Mean and deviation by the moment formula E[X²] − E[X]², written apart
// from the model's two passes; probabilities as fractions that add up to 1.
std::pair<double, double> moments(const QList<double>& p, const QList<double>& x)
{
    double m1 = 0;
    double m2 = 0;
    for (qsizetype i = 0; i < p.size(); ++i) {
        m1 += p[i] * x[i];
        m2 += p[i] * x[i] * x[i];
    }
    return {m1, std::sqrt(m2 - m1 * m1)};
}

class ExpReturnTest : public ScreenTest<ExpReturnController> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        model = screen->expReturnModel();
        table = screen->table();
    }
    // One edit per cell of a row, as its three fields send them.
    void state(int row, const QString& probability, const QString& a, const QString& b)
    {
        table->probabilityChanged(row, probability);
        table->stockAChanged(row, a);
        table->stockBChanged(row, b);
    }
    // The three states of the textbook example.
    void threeStates()
    {
        type("periodField", "3");
        state(0, "30", "20", "10");
        state(1, "40", "10", "5");
        state(2, "30", "-5", "0");
    }
    QStringList labels() const
    {
        return texts({"expReturnAResultLabel", "expReturnBResultLabel",
                      "standardDeviationAResultLabel", "standardDeviationBResultLabel"});
    }

    ExpReturnModel* model = nullptr;
    ExpReturnTableController* table = nullptr;
};

TEST_F(ExpReturnTest, FreshScreen)
{
    EXPECT_EQ(view->title(), "Expected Return");
    EXPECT_TRUE(view->descriptionHtml().contains("standard deviation"));
    EXPECT_EQ(view->text("periodField"), "4");
    EXPECT_EQ(model->period, 4);
    EXPECT_EQ(table->stateLabelTexts(), QStringList({"1", "2", "3", "4"}));
    EXPECT_EQ(table->probabilityTexts(), QStringList(4, "")) << "zeros show as empty";
    EXPECT_EQ(table->stockATexts(), QStringList(4, ""));
    EXPECT_EQ(table->stockBTexts(), QStringList(4, ""));
    EXPECT_TRUE(view->text("expReturnAResultLabel").isEmpty()) << "nothing computed yet";

    // An all-zero table gives zeros everywhere.
    type("periodField", "4");
    EXPECT_EQ(labels(), QStringList(4, "0%"));
}

// Three states with probabilities adding up to 100 %: the model's two passes
// against the moment formula, and the labels as the screen shows them.
TEST_F(ExpReturnTest, ResultsMatchTheMomentFormula)
{
    threeStates();
    EXPECT_NEAR(model->expectedReturnA, 8.5, 1e-12);
    EXPECT_NEAR(model->expectedReturnB, 5, 1e-12);
    EXPECT_NEAR(model->standardDeviationA, moments({0.3, 0.4, 0.3}, {20, 10, -5}).second, 1e-9);
    EXPECT_NEAR(model->standardDeviationB, moments({0.3, 0.4, 0.3}, {10, 5, 0}).second, 1e-9);
    EXPECT_NEAR(model->standardDeviationA, 9.7596, 5e-5);
    EXPECT_NEAR(model->standardDeviationB, 3.8730, 5e-5);
    EXPECT_EQ(labels(), locals({"8.5%", "5%", "9.76%", "3.873%"}));
    EXPECT_EQ(table->stockBTexts(), QStringList({"10", "5", ""})) << "an edited 0 shows as empty";

    // Probabilities summing to 50 halve the expected returns, silently.
    state(0, "15", "20", "10");
    state(1, "20", "10", "5");
    state(2, "15", "-5", "0");
    EXPECT_NEAR(model->expectedReturnA, 4.25, 1e-12);
    EXPECT_NEAR(model->expectedReturnB, 2.5, 1e-12);
    // Deviation about the halved mean, with the half-weights as entered.
    const double va = 0.15 * std::pow(0.2 - 0.0425, 2) + 0.2 * std::pow(0.1 - 0.0425, 2) +
                      0.15 * std::pow(-0.05 - 0.0425, 2);
    EXPECT_NEAR(model->standardDeviationA, std::sqrt(va) * 100, 1e-9);

    // One certain state: no spread at all.
    type("periodField", "1");
    state(0, "100", local("7.25"), "-3");
    EXPECT_EQ(labels(), locals({"7.25%", "-3%", "0%", "0%"}));

    // An overflowing return: the mean is infinite and the deviation NaN,
    // the deviation A written like the other labels.
    table->stockAChanged(0, overflowing());
    EXPECT_EQ(labels().mid(0, 3), QStringList({"Infinity%", "-3%", "NaN%"}));
    table->stockAChanged(0, "-" + overflowing());
    EXPECT_EQ(labels().mid(0, 3), QStringList({"-Infinity%", "-3%", "NaN%"})) << "B untouched";
}

TEST_F(ExpReturnTest, PeriodEdits)
{
    QSignalSpy reloads(table, &ExpReturnTableController::reloaded);
    // Truncated; 100, 0, negatives, unreadable text and overflows ignored;
    // no leading number is unreadable, exponents read; blanks are fine.
    const std::pair<QString, int> edits[] = {
        {local("2.9"), 2},  {"100", 2}, {"0", 2},         {"-3", 2},   {"", 2},   {"abc", 2},
        {overflowing(), 2}, {"99", 99}, {"5 states", 99}, {"1e1", 10}, {" 5 ", 5}};
    for (const auto& [text, period] : edits) {
        type("periodField", text);
        EXPECT_EQ(std::pair(model->period, table->numberOfRows()), std::pair(period, period))
            << text.toStdString();
    }
    EXPECT_EQ(reloads.count(), 11) << "the table reloads even when the period stays";
    EXPECT_EQ(table->stateLabelTexts().last(), "5");
}

TEST_F(ExpReturnTest, HiddenStatesKeepTheirValuesAndTheReportListsTheShownOnes)
{
    threeStates();
    const QStringList three = labels();
    type("periodField", "1");
    // 0.3 × 20 and 0.3 × 10; each deviation about its own smaller mean.
    EXPECT_EQ(labels(), locals({"6%", "3%", "7.668%", "3.834%"}));
    screen->sendReportRequestedNotification("Short");
    EXPECT_FALSE(reportBody().contains("State 2"));

    type("periodField", "3");
    EXPECT_EQ(labels(), three) << "the second and third states count again";
    EXPECT_EQ(table->stockATexts(), QStringList({"20", "10", "-5"}));

    table->probabilityChanged(1, local("40.25"));
    screen->sendReportRequestedNotification("Plan A");
    const QStringList shown = labels();
    EXPECT_EQ(reportBody(),
              local("Period: 3\nState 1 -  Probability: 30%, Stock A: 20%, Stock B: 10%\n"
                    "State 2 -  Probability: 40.25%, Stock A: 10%, Stock B: 5%\n"
                    "State 3 -  Probability: 30%, Stock A: -5%, Stock B: 0%\n"
                    "\nExpected Return A: ") +
                  shown[0] + ", Expected Return B: " + shown[1] + "\nStandard Deviation A: " +
                  shown[2] + ", Standard Deviation B: " + shown[3] + "\n");
    expectReport(
        "Expected Return",
        "expected-return_Short_05-03-2024 14:07_report.txt_Plan A_05-03-2024 14:07_report.txt",
        "Exp", Rgba(0x35, 0x44, 0x58));
}

TEST_F(ExpReturnTest, NotificationTraffic)
{
    NotificationLog log(
        {"PeriodChangedNotification", "RateChangedNotification", "ResultCalculatedNotification"});
    // Delivery is synchronous: the model, listening since before the log,
    // recomputes while the edit is being delivered, so the log hears the
    // result first.
    table->stockBChanged(2, local("12.5"));
    ASSERT_EQ(log.names(),
              QStringList({"ResultCalculatedNotification", "RateChangedNotification"}));
    expectNotification(log.seen[0], model, {});
    expectNotification(log.seen[1], table, {{"tag", 2}, {"type", "stock-b"}, {"value", 12.5}});
    EXPECT_EQ(model->rates[2].stockB, 12.5);
    EXPECT_EQ(table->stockBText(2), local("12.5"));

    log.seen.clear();
    type("periodField", "7");
    ASSERT_EQ(log.names(),
              QStringList({"PeriodChangedNotification", "ResultCalculatedNotification"}));
    expectNotification(log.seen[0], screen.get(), {{"period", 7}});

    // A rejected period still tells the table the old one.
    log.seen.clear();
    type("periodField", "0");
    ASSERT_EQ(log.seen.size(), 2u);
    EXPECT_EQ(log.seen[0].userInfo.value("period").toInt(), 7);

    // The model hears any sender (the growth screen's traffic is in
    // SharedNotificationsTest); the table keeps its own copy.
    NotificationCenter::defaultCenter().post(
        "RateChangedNotification", nullptr, {{"type", "probability"}, {"tag", 0}, {"value", 50.0}});
    EXPECT_EQ(model->rates[0].probability, 50);
    EXPECT_EQ(table->probabilityText(0), "");
}

// Probabilities -50 % and 150 % give A an expected return of -0.5 × 10 +
// 1.5 × 20 = 25 % and a negative variance, -0.5 × 0.15² + 1.5 × 0.05² =
// -0.0075: no deviation, and a line under it says why until the cell is
// put right.
TEST_F(ExpReturnTest, ANegativeProbabilityLeavesNoDeviationAndSaysWhy)
{
    type("periodField", "2");
    state(0, "-50", "10", "0");
    state(1, "150", "20", "0");
    EXPECT_EQ(view->text("expReturnAResultLabel"), local("25%"));
    EXPECT_TRUE(view->note("expReturnAResultLabel").isEmpty());
    EXPECT_EQ(view->text("standardDeviationAResultLabel"), "NaN%");
    EXPECT_EQ(view->note("standardDeviationAResultLabel"), "Probabilities cannot be negative.");
    EXPECT_TRUE(view->note("standardDeviationBResultLabel").isEmpty()) << "B has no spread: 0";
    table->probabilityChanged(0, "50");
    EXPECT_TRUE(view->note("standardDeviationAResultLabel").isEmpty());
}

TEST_F(ExpReturnTest, BadCellsNeverBreakTheScreen)
{
    state(0, "abc", "", "25%");
    EXPECT_EQ(model->rates[0].probability, 0);
    EXPECT_EQ(model->rates[0].stockA, 0);
    EXPECT_EQ(model->rates[0].stockB, 0) << "cells read like fields: \"25%\" is unreadable";

    // Rows outside the table are ignored, wherever the edit comes from.
    table->probabilityChanged(-1, "5");
    table->stockAChanged(100, "5");
    auto& centre = NotificationCenter::defaultCenter();
    centre.post("RateChangedNotification", nullptr,
                {{"type", "stock-a"}, {"tag", 1000}, {"value", 1.0}});
    centre.post("RateChangedNotification", nullptr, {});
    EXPECT_EQ(model->rates.size(), 100);
    centre.post("PeriodChangedNotification", nullptr, {{"period", 100000}});
    EXPECT_EQ(table->numberOfRows(), 100);
    EXPECT_EQ(table->stockAText(100000), "");
    centre.post("PeriodChangedNotification", nullptr, {{"period", -4}});
    EXPECT_EQ(table->numberOfRows(), 0);

    // 99 states through the table inputs the command line uses.
    type("periodField", "99");
    ASSERT_TRUE(screen->setTableInput("probability", QStringList(99, "1")));
    ASSERT_TRUE(screen->setTableInput("stock-a", QStringList(99, "4")));
    ASSERT_TRUE(screen->setTableInput("stockB", QStringList(99, "-2")));
    EXPECT_NEAR(model->expectedReturnA, 3.96, 1e-9);
    EXPECT_NEAR(model->expectedReturnB, -1.98, 1e-9);
    EXPECT_EQ(model->probabilities().mid(98), QList<double>({1, 0}));
    EXPECT_FALSE(screen->setTableInput("stock-a", QStringList(101, "1")));
    EXPECT_FALSE(screen->setTableInput("cashArray", {"1"}));
}

} // namespace
