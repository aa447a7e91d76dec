#include "functions/ScreenTest.h"
#include "functions/periodreturn/PeriodReturnController.h"

#include <cmath>

namespace {

class PeriodReturnTest : public ScreenTest<PeriodReturnController> {
protected:
    void enter(const char* initial, const char* ending, const char* income)
    {
        type("initialValueField", local(initial));
        type("endingValueField", local(ending));
        type("incomeField", local(income));
    }
    QString shown() const { return view->text("hprResultLabel"); }
    const PeriodReturnModel& model() const { return *screen->periodReturnModel(); }
};

TEST_F(PeriodReturnTest, ReturnFollowsEveryEdit)
{
    EXPECT_EQ(view->title(), "Holding Period Return");
    EXPECT_TRUE(view->descriptionHtml().contains("holding-period-return"));
    EXPECT_TRUE(shown().isEmpty()) << "nothing shown before an edit";
    type("initialValueField", "100");
    EXPECT_EQ(shown(), "-100%") << "ending value still 0";
    type("endingValueField", "110");
    EXPECT_EQ(shown(), "10%");
    type("incomeField", "5");
    EXPECT_EQ(shown(), "15%");

    struct Row {
        const char *initial, *ending, *income, *shown, *why;
    };
    const Row rows[] = {
        {"48.5", "52.75", "1.2", "11.237%", ""},
        {"1000", "1000", "3", "0.3%", ""},
        {"100", "80", "", "-20%", "a fall, no income"},
        {"0", "110", "5", "Infinity%", ""},
        {"0", "-10", "5", "-Infinity%", ""},
        {"0", "0", "0", "NaN%", ""},
    };
    for (const Row& row : rows) {
        enter(row.initial, row.ending, row.income);
        EXPECT_EQ(shown(), local(row.shown)) << row.initial << " " << row.ending << " " << row.why;
    }
}

TEST_F(PeriodReturnTest, ReportListsInputsAndReturn)
{
    screen->sendReportRequestedNotification("");
    EXPECT_EQ(reportBody(), "Initial Value: 0\nEnding Value: 0\nIncome: 0\nHPR: 0%\n")
        << "before any edit";
    EXPECT_EQ(report().fileName, "period-return__05-03-2024 14:07_report.txt");

    enter("48.5", "52.75", "1.2");
    setNow(fixedNow().addSecs(120));
    screen->sendReportRequestedNotification("Shares");
    EXPECT_EQ(reportBody(), "Initial Value: " + local("48.5") +
                                "\nEnding Value: " + local("52.75") + "\nIncome: " + local("1.2") +
                                "\nHPR: " + local("11.237") + "%\n");
    expectReport("Holding Period Return",
                 "period-return__05-03-2024 14:07_report.txt_Shares_05-03-2024 14:09_report.txt",
                 "Hpr", Rgba(0x35, 0x44, 0x58), "05-03-2024 14:09");
}

} // namespace
