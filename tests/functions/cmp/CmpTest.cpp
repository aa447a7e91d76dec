#include "functions/ScreenTest.h"
#include "functions/cmp/CmpController.h"
#include "platform/ReviewPrompt.h"
#include "platform/Services.h"

#include <QElapsedTimer>
#include <QLocale>
#include <QSignalSpy>
#include <cmath>
#include <limits>

namespace {

// The balance of the monthly schedule in closed form, worked out here from
// the textbook formulas: the principal grown as a lump sum plus the monthly
// deposits as an ordinary annuity ("END") or an annuity due ("BEG"), at the
// monthly rate equivalent to the nominal rate compounded m times a year.
double referenceBalance(double principal, double ratePercent, int m, double months, double deposit,
                        bool due)
{
    const double i = std::pow(1.0 + ratePercent / 100.0 / m, m / 12.0) - 1.0;
    const double growth = std::pow(1.0 + i, months);
    const double annuity = i == 0 ? months : (growth - 1.0) / i;
    return principal * growth + deposit * annuity * (due ? 1.0 + i : 1.0);
}

class CmpTest : public ScreenTest<CmpController> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        model = screen->cmpModel();
    }
    void enter(const char* principal, const char* rate, const char* years, const char* deposit)
    {
        type("principalAmountField", local(principal));
        type("annualRateField", local(rate));
        type("periodField", local(years));
        type("paymentField", local(deposit));
    }
    QStringList results() const
    {
        return texts({"balanceResultLabel", "interestAmounResultLabel", "totalPrincipalResultLabel",
                      "apyResultLabel"});
    }

    CmpModel* model = nullptr;
};

TEST_F(CmpTest, MonthlyDepositsAtEitherEndOfTheMonthAndTheReport)
{
    EXPECT_EQ(view->title(), "Interest Calculator");
    EXPECT_TRUE(view->descriptionHtml().contains("compound-interest calculator"));
    EXPECT_EQ(view->text("modeButton"), "END");
    EXPECT_EQ(view->text("frequencyButton"), "Monthly");
    enter("1000", "6", "1", "100");
    EXPECT_EQ(results(), locals({"2295.234", "95.234", "2200", "6.168%"}));
    // The report repeats the total principal label for the interest.
    screen->sendReportRequestedNotification("Savings");
    EXPECT_EQ(reportBody(), local("Principal Amount: 1000\nAnnual Rate: 6\nYears: 1\nPayment: 100\n"
                                  "Mode: END\nCompounding: Monthly\nTotal Principal: 2200\n"
                                  "Total Principal: 95.234\nBalance: 2295.234\nAPY: 6.168%\n"));
    expectReport("Compound Interest", "cmp_Savings_05-03-2024 14:07_report.txt", "Cmp",
                 Rgba(0xF7, 0xEA, 0xC8));

    choose("modeButton", "BEG");
    EXPECT_EQ(view->text("modeButton"), "BEG");
    EXPECT_EQ(results().mid(0, 2), locals({"2301.402", "101.402"}));

    choose("modeButton", "END");
    choose("frequencyButton", "Annually");
    EXPECT_EQ(model->compoundingValue, 1);
    EXPECT_EQ(view->text("balanceResultLabel"), local("2292.653"));
    EXPECT_EQ(view->text("apyResultLabel"), "6%");
}

TEST_F(CmpTest, ScheduleAgreesWithLumpSumPlusAnnuity)
{
    struct Row {
        const char* frequency;
        int m;
        const char* mode;
        double principal, rate, years, deposit;
    };
    const Row rows[] = {
        {"Monthly", 12, "END", 1000, 6, 1, 100},     {"Monthly", 12, "BEG", 1000, 6, 1, 100},
        {"Quarterly", 4, "END", 10000, 5, 10, 200},  {"Quarterly", 4, "BEG", 10000, 5, 10, 200},
        {"Semiannually", 2, "BEG", 0, 3.5, 30, 250}, {"Annually", 1, "END", 5000, 12, 40, 0},
        {"Monthly", 12, "END", 2000, -4, 20, 50},    {"Annually", 1, "BEG", 750, 0, 7, 10},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.frequency) + " " + row.mode + " " + std::to_string(row.years) +
                     " years");
        choose("frequencyButton", row.frequency);
        choose("modeButton", row.mode);
        type("principalAmountField", QString::number(row.principal));
        type("annualRateField", QLocale().toString(row.rate));
        type("periodField", QString::number(row.years));
        type("paymentField", QString::number(row.deposit));
        const double expected = referenceBalance(row.principal, row.rate, row.m, 12 * row.years,
                                                 row.deposit, QLatin1String(row.mode) == "BEG");
        EXPECT_NEAR(model->balance, expected, 1e-9 * std::max(1.0, std::fabs(expected)));
        EXPECT_DOUBLE_EQ(model->totalPrincipal, row.principal + 12 * row.years * row.deposit);
        EXPECT_NEAR(model->interestAmount, expected - model->totalPrincipal,
                    1e-9 * std::max(1.0, std::fabs(expected)));
        EXPECT_NEAR(model->apy, (std::pow(1 + row.rate / 100 / row.m, row.m) - 1) * 100, 1e-9);
    }
}

TEST_F(CmpTest, FractionalTermsRunWholeMonthsButCountEveryDeposit)
{
    enter("1000", "6", "0.5", "100");
    EXPECT_NEAR(model->balance, referenceBalance(1000, 6, 12, 6, 100, false), 1e-9);
    type("periodField", local("0.55"));
    EXPECT_NEAR(model->balance, referenceBalance(1000, 6, 12, 7, 100, false), 1e-9)
        << "a part month runs as a whole one";
    EXPECT_NEAR(model->totalPrincipal, 1660, 1e-9) << "6.6 deposits";
    EXPECT_EQ(view->text("totalPrincipalResultLabel"), "1660");

    for (const char* term : {"0", "-2"}) {
        type("periodField", local(term));
        EXPECT_EQ(model->balance, 1000) << term;
        EXPECT_EQ(model->totalPrincipal, 1000 + 12 * 100 * std::atof(term)) << term;
        EXPECT_FALSE(screen->chartShown()) << term;
    }
    type("periodField", typed(1e-30));
    EXPECT_NEAR(model->balance, 1105, 1e-9) << "the first month always runs";
}

TEST_F(CmpTest, UnknownWordsLeaveCompoundingAndDepositsOut)
{
    // A model that never saw a compounding word: no growth and no yield.
    auto fresh = QVFunctionModel::create<CmpModel>();
    fresh->principalAmount = 1000;
    fresh->annualRate = 6;
    fresh->period = 1;
    fresh->payment = 100;
    fresh->mode = "END";
    fresh->calculateResult();
    EXPECT_EQ(fresh->compoundingValue, 0);
    EXPECT_EQ(fresh->balance, 2200);
    EXPECT_EQ(fresh->interestAmount, 0);
    EXPECT_EQ(fresh->apy, 0);

    fresh->compounding = "Quarterly";
    fresh->calculateResult();
    fresh->compounding = "Weekly";
    fresh->mode = "Later";
    fresh->calculateResult();
    EXPECT_EQ(fresh->compoundingValue, 4) << "an unknown word keeps the last count";
    EXPECT_NEAR(fresh->balance, 1000 * std::pow(1.015, 4), 1e-9) << "no deposits at all";
    EXPECT_EQ(fresh->totalPrincipal, 2200) << "counted all the same";
}

TEST_F(CmpTest, ChoiceSheetsAskForAReviewAndRecompute)
{
    enter("1000", "6", "1", "100");
    choose("modeButton", "Cancel");
    choose("frequencyButton", "Quarterly");
    ASSERT_EQ(presenter.requests.size(), 2u);
    const AlertRequest& mode = presenter.requests[0];
    EXPECT_EQ(mode.title, "Mode");
    EXPECT_EQ(mode.message, "Please choose a mode for your payments.");
    EXPECT_TRUE(mode.anchor.isEmpty()) << "centred, no arrow";
    const AlertRequest& compounding = presenter.requests[1];
    EXPECT_EQ(compounding.title, "Compounding");
    EXPECT_EQ(compounding.message, "Please choose compounding.");
    QStringList titles;
    for (const AlertAction& action : compounding.actions)
        titles << action.title;
    EXPECT_EQ(titles.size(), 5);
    for (const char* word : {"Monthly", "Quarterly", "Semiannually", "Annually", "Cancel"})
        EXPECT_TRUE(titles.contains(word)) << word;
    EXPECT_EQ(static_cast<CountingReviewPrompt&>(Services::reviewPrompt()).requestCount(), 2);

    EXPECT_EQ(view->text("modeButton"), "END") << "cancelled";
    EXPECT_EQ(model->compounding, "Quarterly");
    EXPECT_NEAR(model->balance, referenceBalance(1000, 6, 4, 12, 100, false), 1e-9);
}

TEST_F(CmpTest, HugeTermsFinishAtOnce)
{
    QElapsedTimer timer;
    timer.start();
    enter("1000", "0", "1000000000000", "1");
    EXPECT_DOUBLE_EQ(model->balance, 1000 + 12e12) << "no interest: every deposit counts";
    type("annualRateField", "5");
    EXPECT_EQ(view->text("balanceResultLabel"), "Infinity");
    type("annualRateField", "-5");
    // A shrinking balance settles where the interest lost equals the deposit.
    const double q = std::pow(1 - 0.05 / 12, 1) - 1;
    EXPECT_NEAR(model->balance, -1 / q, 1e-6);
    type("periodField", "Infinity");
    EXPECT_NEAR(model->balance, -1 / q, 1e-6);
    type("periodField", typed(1e300));
    EXPECT_LT(timer.elapsed(), 2000);
    EXPECT_EQ(model->yearlyBalances().size(), CmpModel::maximumScheduledMonths / 12 + 1)
        << "the chart stops at year 1000";

    // Past the stepped months the closed form takes over without a seam.
    type("annualRateField", local("0.5"));
    type("paymentField", "10");
    type("periodField", "1500");
    EXPECT_NEAR(model->balance / referenceBalance(1000, 0.5, 12, 18000, 10, false), 1, 1e-10);
    choose("modeButton", "BEG");
    EXPECT_NEAR(model->balance / referenceBalance(1000, 0.5, 12, 18000, 10, true), 1, 1e-10);
}

TEST_F(CmpTest, ChartShowsTheBalanceAtEachYearEnd)
{
    QSignalSpy redraws(screen.get(), &CmpController::chartChanged);
    enter("1000", "6", "2.5", "100");
    EXPECT_EQ(redraws.count(), 4);
    EXPECT_TRUE(screen->chartShown());
    EXPECT_EQ(screen->chartDataSource(), screen->model());
    const auto* source = qobject_cast<MultiLineGraphDataSource*>(screen->chartDataSource());
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(source->dataForXAxisWithLineNumber(0), QStringList({"0", "1", "2", "3"}));
    const auto values = source->dataForYAxisWithLineNumber(0);
    ASSERT_EQ(values.size(), 4);
    EXPECT_EQ(*values[0], 1000);
    EXPECT_NEAR(*values[1], referenceBalance(1000, 6, 12, 12, 100, false), 1e-9);
    EXPECT_NEAR(*values[2], referenceBalance(1000, 6, 12, 24, 100, false), 1e-9);
    EXPECT_EQ(*values[3], model->balance) << "the part year ends with the term";
    EXPECT_EQ(source->nameForTheLineWithLineNumber(0), "Balance");
    const auto* delegate = qobject_cast<MultiLineGraphDelegate*>(screen->chartDataSource());
    ASSERT_NE(delegate, nullptr);
    EXPECT_EQ(delegate->customViewForLineChartTouchWithXValueAndYValue("1", 1100).text,
              "Year 1: 1100");
}

} // namespace
