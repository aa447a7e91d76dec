#include "TestSupport.h"
#include "functions/periodreturn/PeriodReturnController.h"

#include <QLocale>
#include <cmath>

namespace {

class PeriodReturnTest : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        screen = std::make_unique<PeriodReturnController>();
        view = screen->qvFunctionView();
        model = screen->periodReturnModel();
    }
    void enter(const QString& initial, const QString& ending, const QString& income)
    {
        screen->editField("initialValueField", initial);
        screen->editField("endingValueField", ending);
        screen->editField("incomeField", income);
    }
    QString reportBody() const
    {
        const QString contents = model->report().contents;
        return contents.mid(contents.indexOf("-----------------------------\n\n") + 31);
    }

    std::unique_ptr<PeriodReturnController> screen;
    QVFunctionView* view = nullptr;
    PeriodReturnModel* model = nullptr;
};

TEST_F(PeriodReturnTest, ReturnFollowsEveryEdit)
{
    EXPECT_EQ(view->title(), "Holding Period Return");
    EXPECT_TRUE(view->descriptionHtml().contains("holding-period-return"));
    EXPECT_TRUE(view->text("hprResultLabel").isEmpty()) << "nothing shown before an edit";

    screen->editField("initialValueField", "100");
    EXPECT_EQ(view->text("hprResultLabel"), "-100%") << "ending value still 0";
    screen->editField("endingValueField", "110");
    EXPECT_EQ(view->text("hprResultLabel"), "10%");
    screen->editField("incomeField", "5");
    EXPECT_EQ(view->text("hprResultLabel"), "15%");

    enter(local("48.5"), local("52.75"), local("1.2"));
    EXPECT_EQ(view->text("hprResultLabel"), local("11.237%"));
    enter("1000", "1000", "3");
    EXPECT_EQ(view->text("hprResultLabel"), local("0.3%"));
}

TEST_F(PeriodReturnTest, AgreesWithTheGrowthFactorOfTheHolding)
{
    // HPR is the growth factor of one unit held over the period, income
    // counted with the ending value, less one: (P1 + I) / P0 - 1.
    struct Row {
        double initial, ending, income;
    };
    const Row rows[] = {{100, 110, 5},      {48.5, 52.75, 1.2}, {2500, 1875.5, 0},
                        {0.37, 0.41, 0.02}, {1e6, 1.25e6, 3e4}, {-200, -150, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.initial) + " -> " + std::to_string(row.ending));
        enter(typed(row.initial), typed(row.ending), typed(row.income));
        const double expected = ((row.ending + row.income) / row.initial - 1) * 100;
        EXPECT_NEAR(model->hpr, expected, 1e-12 * std::max(1.0, std::fabs(expected)));
    }
}

TEST_F(PeriodReturnTest, LossesAndAZeroStart)
{
    enter("100", "80", "");
    EXPECT_EQ(view->text("hprResultLabel"), "-20%") << "a fall with no income";
    enter("100", "90", "2");
    EXPECT_EQ(view->text("hprResultLabel"), "-8%");

    enter("0", "110", "5");
    EXPECT_EQ(view->text("hprResultLabel"), "Infinity%");
    enter("0", "-10", "5");
    EXPECT_EQ(view->text("hprResultLabel"), "-Infinity%");
    enter("0", "0", "0");
    EXPECT_EQ(view->text("hprResultLabel"), "NaN%");

    enter("abc", "110", "5");
    EXPECT_EQ(model->initialValue, 0) << "unreadable text counts as 0";
    EXPECT_EQ(view->text("hprResultLabel"), "Infinity%");
}

TEST_F(PeriodReturnTest, ReportListsInputsAndReturn)
{
    screen->sendReportRequestedNotification("");
    EXPECT_EQ(reportBody(), "Initial Value: 0\nEnding Value: 0\nIncome: 0\nHPR: 0%\n")
        << "before any edit";
    EXPECT_EQ(model->report().fileName, "period-return__05-03-2024 14:07_report.txt");

    enter(local("48.5"), local("52.75"), local("1.2"));
    setNow(fixedNow().addSecs(120));
    screen->sendReportRequestedNotification("Shares");
    const QVReport& report = model->report();
    EXPECT_TRUE(report.contents.startsWith(
        "Financial Report - Holding Period Return\nDate: 05-03-2024 14:09\n"
        "\n-----------------------------\n\n"));
    EXPECT_EQ(reportBody(), "Initial Value: " + local("48.5") +
                                "\nEnding Value: " + local("52.75") + "\nIncome: " + local("1.2") +
                                "\nHPR: " + local("11.237") + "%\n");
    EXPECT_EQ(report.functionTitle, "Hpr");
    EXPECT_EQ(report.colorTag, Rgba(0x35, 0x44, 0x58));
    EXPECT_EQ(report.fileName, "period-return__05-03-2024 14:07_report.txt_Shares_"
                               "05-03-2024 14:09_report.txt");
    EXPECT_EQ(readDocument(report.fileName), report.contents);
}

} // namespace
