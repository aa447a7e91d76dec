#include "TestSupport.h"
#include "framework/FunctionTableModel.h"
#include "framework/QVNumericTextField.h"
#include "functions/roi/RoiController.h"
#include "functions/tip/TipController.h"
#include "platform/NotificationCenter.h"
#include "platform/Services.h"
#include "reports/QVFileManager.h"

#include <QLocale>

namespace {

// Types into the screen's fields the way the user does, one edit each.
class FormTest : public HomeTest {
protected:
    static QString reportBody(const QVFunctionModel& model)
    {
        const QString contents = model.report().contents;
        return contents.mid(contents.indexOf("-----------------------------\n\n") + 31);
    }
};

TEST_F(FormTest, RoiResultsFollowEveryEdit)
{
    RoiController roi;
    const QVFunctionView* view = roi.qvFunctionView();
    EXPECT_EQ(view->title(), "ROI Calculator");
    roi.editField("investmentField", "1000");
    roi.editField("futureValueField", "1250");
    EXPECT_EQ(view->text("annualizedRoiResultLabel"), "Infinity%") << "0 years so far";
    roi.editField("yearsField", "2");
    EXPECT_EQ(view->text("gainResultLabel"), "250");
    EXPECT_EQ(view->text("roiResultLabel"), "25%");
    EXPECT_EQ(view->text("annualizedRoiResultLabel"), local("12.5%"));

    roi.sendReportRequestedNotification("Plan A");
    EXPECT_EQ(reportBody(*roi.model()), "Investment: 1000\nIncome: 1250\nYears: 2\n"
                                        "Gain or Loss: 250\nRoi: 25%\nAnnualized Roi: " +
                                            local("12.5") + "%\n");
    EXPECT_TRUE(roi.model()->report().contents.startsWith(
        "Financial Report - Return on Investment\nDate: 05-03-2024 14:07\n"));
    EXPECT_EQ(roi.model()->report().fileName, "roi_Plan A_05-03-2024 14:07_report.txt");
    EXPECT_EQ(roi.model()->report().colorTag, Rgba(0x1F, 0xDA, 0x9A));
}

TEST_F(FormTest, RoiEdgeCases)
{
    RoiController roi;
    const QVFunctionView* view = roi.qvFunctionView();
    roi.sendReportRequestedNotification("");
    EXPECT_EQ(reportBody(*roi.model()), "Investment: 0\nIncome: 0\nYears: 0\nGain or Loss: 0\n"
                                        "Roi: NaN%\nAnnualized Roi: NaN%\n")
        << "before any edit";
    EXPECT_TRUE(view->text("roiResultLabel").isEmpty()) << "the screen shows nothing yet";

    roi.editField("investmentField", "0");
    roi.editField("futureValueField", "100");
    roi.editField("yearsField", "1");
    EXPECT_EQ(view->text("gainResultLabel"), "100");
    EXPECT_EQ(view->text("roiResultLabel"), "Infinity%");

    roi.editField("investmentField", "1000");
    roi.editField("futureValueField", "800");
    EXPECT_EQ(view->text("gainResultLabel"), "-200");
    EXPECT_EQ(view->text("roiResultLabel"), "-20%");
    roi.editField("yearsField", "abc");
    EXPECT_EQ(view->text("annualizedRoiResultLabel"), "-Infinity%") << "unreadable text is 0";
    roi.editField("investmentField", "1.000,5x");
    EXPECT_EQ(roi.roiModel()->investmentAmount, 0);
}

TEST_F(FormTest, TipSplitsThePreTaxTip)
{
    TipController tip;
    const QVFunctionView* view = tip.qvFunctionView();
    EXPECT_EQ(view->title(), "TIP Calculator");
    tip.editField("billField", "107");
    tip.editField("salesTaxField", "7");
    tip.editField("tipPercentField", "15");
    tip.editField("numberOfPeopleField", "2");
    EXPECT_EQ(view->text("tipResultLabel"), "15");
    EXPECT_EQ(view->text("totalAmountResultLabel"), "122");
    EXPECT_EQ(view->text("tipPerPersonResultLabel"), local("7.5"));
    EXPECT_EQ(view->text("totalPerPersonResultLabel"), "61");

    tip.editField("numberOfPeopleField", local("3.7"));
    EXPECT_EQ(tip.tipModel()->numberOfPeople, 3);
    tip.sendReportRequestedNotification("dinner");
    EXPECT_EQ(reportBody(*tip.model()), "Bill: 107\nTip Percent: 15\nNumber of People: 3\n"
                                        "Tip: 15\nTotal Amount: 122\nTip Per Person: 5\n"
                                        "Total Per Person: " +
                                            local("40.667") + "\n")
        << "no sales-tax line";
    EXPECT_TRUE(tip.model()->report().contents.startsWith("Financial Report - Tip\n"));
    EXPECT_EQ(tip.model()->report().functionTitle, "Tip");
}

TEST_F(FormTest, TipWithNobodyOrNegativePeople)
{
    {
        TipController fresh;
        fresh.sendReportRequestedNotification("");
        EXPECT_TRUE(fresh.model()->report().contents.endsWith(
            "Bill: 0\nTip Percent: 0\nNumber of People: 0\nTip: 0\nTotal Amount: 0\n"
            "Tip Per Person: NaN\nTotal Per Person: NaN\n"))
            << "a report before any edit";
    }
    TipController tip;
    const QVFunctionView* view = tip.qvFunctionView();
    tip.editField("billField", "100");
    tip.editField("tipPercentField", "20");
    tip.editField("numberOfPeopleField", "0");
    EXPECT_EQ(view->text("totalAmountResultLabel"), "120");
    EXPECT_EQ(view->text("tipPerPersonResultLabel"), "Infinity");
    tip.editField("numberOfPeopleField", "-1.5");
    EXPECT_EQ(tip.tipModel()->numberOfPeople, -1);
    EXPECT_EQ(view->text("totalPerPersonResultLabel"), "-120");
    tip.editField("numberOfPeopleField", typed(1e99));
    EXPECT_EQ(tip.tipModel()->numberOfPeople, INT_MAX) << "saturates instead of overflowing";
}

TEST_F(FormTest, ChangeSignDoesNotRecompute)
{
    RoiController roi;
    roi.editField("investmentField", "100");
    roi.editField("futureValueField", "150");
    roi.editField("yearsField", "1");
    const QString before = roi.qvFunctionView()->text("gainResultLabel");
    QVFunctionView* view = roi.qvFunctionView();
    view->setText("futureValueField",
                  QVNumericTextField::changedSign(view->text("futureValueField")));
    EXPECT_EQ(view->text("futureValueField"), "-150");
    EXPECT_EQ(view->text("gainResultLabel"), before) << "until the next edit";
    roi.fieldChanged();
    EXPECT_EQ(view->text("gainResultLabel"), "-250");
}

TEST_F(FormTest, DescriptionsExistForEveryScreen)
{
    RoiController roi;
    TipController tip;
    for (QVFunctionController* c :
         {static_cast<QVFunctionController*>(&roi), static_cast<QVFunctionController*>(&tip)})
        EXPECT_GT(c->qvFunctionView()->descriptionHtml().size(), 500)
            << c->model()->descriptionName().toStdString();
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
