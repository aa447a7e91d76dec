#include "framework/FunctionTableModel.h"
#include "framework/QVNumericTextField.h"
#include "functions/ScreenTest.h"
#include "functions/roi/RoiController.h"
#include "functions/tip/TipController.h"

#include <QSignalSpy>

namespace {

using RoiTest = ScreenTest<RoiController>;
using TipTest = ScreenTest<TipController>;

TEST_F(RoiTest, ResultsFollowEveryEdit)
{
    EXPECT_EQ(view->title(), "ROI Calculator");
    EXPECT_GT(view->descriptionHtml().size(), 500);

    type("investmentField", "1000");
    type("futureValueField", "1250");
    EXPECT_EQ(view->text("annualizedRoiResultLabel"), "Infinity%") << "0 years so far";
    type("yearsField", "2");
    EXPECT_EQ(texts({"gainResultLabel", "roiResultLabel", "annualizedRoiResultLabel"}),
              locals({"250", "25%", "12.5%"}));
    screen->sendReportRequestedNotification("Plan A");
    EXPECT_EQ(reportBody(), local("Investment: 1000\nIncome: 1250\nYears: 2\n"
                                  "Gain or Loss: 250\nRoi: 25%\nAnnualized Roi: 12.5%\n"));
    expectReport("Return on Investment", "roi_Plan A_05-03-2024 14:07_report.txt", "Roi",
                 Rgba(0x1F, 0xDA, 0x9A));
}

TEST_F(RoiTest, EdgeCases)
{
    screen->sendReportRequestedNotification("");
    EXPECT_EQ(reportBody(), "Investment: 0\nIncome: 0\nYears: 0\nGain or Loss: 0\n"
                            "Roi: NaN%\nAnnualized Roi: NaN%\n")
        << "before any edit";
    EXPECT_TRUE(view->text("roiResultLabel").isEmpty()) << "the screen shows nothing yet";

    type("investmentField", "0");
    type("futureValueField", "100");
    type("yearsField", "1");
    EXPECT_EQ(texts({"gainResultLabel", "roiResultLabel"}), QStringList({"100", "Infinity%"}));

    type("investmentField", "1000");
    type("futureValueField", "800");
    EXPECT_EQ(texts({"gainResultLabel", "roiResultLabel"}), QStringList({"-200", "-20%"}));
    type("yearsField", "abc");
    EXPECT_EQ(view->text("annualizedRoiResultLabel"), "-Infinity%") << "unreadable text is 0";

    // "±" changes the text without recomputing until the next edit, and
    // the results are stale meanwhile.
    type("investmentField", "100");
    type("futureValueField", "150");
    type("yearsField", "1");
    const QString before = view->text("gainResultLabel");
    QSignalSpy staleness(view, &QVFunctionView::staleChanged);
    EXPECT_FALSE(view->stale());
    screen->signFlipped("futureValueField",
                        QVNumericTextField::changedSign(view->text("futureValueField")));
    EXPECT_EQ(view->text("futureValueField"), "-150");
    EXPECT_EQ(view->text("gainResultLabel"), before) << "until the next edit";
    EXPECT_TRUE(view->stale());
    type("yearsField", "2");
    EXPECT_EQ(view->text("gainResultLabel"), "-250");
    EXPECT_FALSE(view->stale());
    EXPECT_EQ(staleness.count(), 2);
}

TEST_F(TipTest, SplitsThePreTaxTip)
{
    EXPECT_EQ(view->title(), "TIP Calculator");
    EXPECT_GT(view->descriptionHtml().size(), 500);
    screen->sendReportRequestedNotification("");
    EXPECT_EQ(reportBody(), "Bill: 0\nTip Percent: 0\nNumber of People: 0\nTip: 0\n"
                            "Total Amount: 0\nTip Per Person: NaN\nTotal Per Person: NaN\n")
        << "a report before any edit";

    type("billField", "107");
    type("salesTaxField", "7");
    type("tipPercentField", "15");
    type("numberOfPeopleField", "2");
    EXPECT_EQ(texts({"tipResultLabel", "totalAmountResultLabel", "tipPerPersonResultLabel",
                     "totalPerPersonResultLabel"}),
              locals({"15", "122", "7.5", "61"}));

    type("numberOfPeopleField", local("3.7"));
    EXPECT_EQ(screen->tipModel()->numberOfPeople, 3);
    screen->sendReportRequestedNotification("dinner");
    EXPECT_EQ(reportBody(), local("Bill: 107\nTip Percent: 15\nNumber of People: 3\n"
                                  "Tip: 15\nTotal Amount: 122\nTip Per Person: 5\n"
                                  "Total Per Person: 40.667\n"))
        << "no sales-tax line";
    expectReport("Tip", "tip__05-03-2024 14:07_report.txt_dinner_05-03-2024 14:07_report.txt",
                 "Tip", Rgba(0xBF, 0xF0, 0x73));
}

TEST_F(TipTest, NobodyOrNegativePeople)
{
    type("billField", "100");
    type("tipPercentField", "20");
    type("numberOfPeopleField", "0");
    EXPECT_EQ(texts({"totalAmountResultLabel", "tipPerPersonResultLabel"}),
              QStringList({"120", "Infinity"}));
    type("numberOfPeopleField", "-1.5");
    EXPECT_EQ(screen->tipModel()->numberOfPeople, -1);
    EXPECT_EQ(view->text("totalPerPersonResultLabel"), "-120");
    type("numberOfPeopleField", typed(1e99));
    EXPECT_EQ(screen->tipModel()->numberOfPeople, INT_MAX) << "saturates instead of overflowing";
}

TEST(FunctionCatalogue, EightRowsDispatchedByTitle)
{
    // The seven rows of the catalogue, then Tallyvane's own "Loans and More".
    FunctionTableModel catalogue;
    ASSERT_EQ(catalogue.rowCount(), 8);
    EXPECT_EQ(catalogue.functionArray().first().title, "Time Value of Money Calculator");
    EXPECT_EQ(catalogue.functionArray().at(6).imageName, "stock");
    EXPECT_EQ(catalogue.functionArray().last().imageName, "loans");
    const QStringList identifiers = {
        "TvmController", "RoiController",  "CmpController",        "NpvController",
        "TipController", "BondController", "StockTableController", "LoansTableController"};
    for (int row = 0; row < 8; ++row)
        EXPECT_EQ(
            FunctionTableModel::screenIdentifiersForTitle(catalogue.functionArray()[row].title),
            QStringList{identifiers[row]});
    EXPECT_TRUE(FunctionTableModel::screenIdentifiersForTitle("Tip calculator").isEmpty());
    EXPECT_EQ(FunctionTableModel::rowHeightForListHeight(630), 70);
    EXPECT_TRUE(catalogue.data(catalogue.index(0), FunctionTableModel::IconRole)
                    .toString()
                    .endsWith("tvm.png"));
}

} // namespace
