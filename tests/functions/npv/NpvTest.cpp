#include "TestSupport.h"
#include "framework/NumberFormat.h"
#include "functions/npv/NpvController.h"
#include "functions/npv/NpvTableModel.h"
#include "platform/NotificationCenter.h"

#include <QLocale>
#include <QSignalSpy>
#include <cmath>
#include <limits>

namespace {

// Present value by Horner's scheme, written apart from the model's loop:
// CF0 + v·(CF1 + v·(CF2 + ...)) with v = 1/(1 + r).
double hornerPresentValue(const QList<double>& flows, double rateFraction)
{
    const double v = 1.0 / (1.0 + rateFraction);
    double sum = 0;
    for (qsizetype t = flows.size(); t-- > 0;)
        sum = flows.at(t) + v * sum;
    return sum;
}

// Records the traffic between the form, the table and the model.
struct TrafficLog : NotificationLog {
    TrafficLog()
        : NotificationLog({"PeriodChangedNotification", "CashChangedNotification",
                           "ResultCalculatedNotification"})
    {}
};

class NpvTest : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        npv = std::make_unique<NpvController>();
        npv->setPresenter(&presenter);
        view = npv->qvFunctionView();
        model = npv->npvModel();
        table = npv->table();
    }
    // One edit of a table row, as its field sends it.
    void cash(int row, const QString& text) { table->fieldChanged(row, text); }
    void cashFlows(const QStringList& flows)
    {
        for (int row = 0; row < flows.size(); ++row)
            cash(row, flows.at(row));
    }
    QString reportBody() const
    {
        const QString contents = model->report().contents;
        return contents.mid(contents.indexOf("-----------------------------\n\n") + 31);
    }

    ScriptedPresenter presenter;
    std::unique_ptr<NpvController> npv;
    QVFunctionView* view = nullptr;
    NpvModel* model = nullptr;
    NpvTableController* table = nullptr;
};

TEST_F(NpvTest, FreshScreen)
{
    EXPECT_EQ(view->title(), "NPV Calculator");
    EXPECT_TRUE(view->descriptionHtml().contains("internal rate of return"));
    EXPECT_EQ(model->period, 4);
    EXPECT_EQ(model->cashArray.size(), 100);
    EXPECT_EQ(table->numberOfRows(), 4);
    EXPECT_EQ(table->leftLabelTexts(),
              QStringList({"Cash Flow 0", "Cash Flow 1", "Cash Flow 2", "Cash Flow 3"}));
    EXPECT_EQ(table->fieldTexts(), QStringList({"", "", "", ""})) << "zeros show as empty";
    EXPECT_TRUE(view->text("npvResultLabel").isEmpty()) << "nothing computed yet";
    EXPECT_FALSE(npv->chartShown());

    // All-zero flows: the first midpoint already meets the tolerance.
    npv->editField("discountRateField", "10");
    EXPECT_EQ(view->text("npvResultLabel"), "0");
    EXPECT_EQ(view->text("irrResultLabel"), "0%");
}

// Reference values: the NPV by Horner's scheme; the IRR of -1000, 300, 400,
// 500 is the textbook 8.8963 %; the others have closed forms.
TEST_F(NpvTest, ResultsMatchIndependentReferences)
{
    npv->editField("discountRateField", "10");
    cashFlows({"-1000", "300", "400", "500"});
    EXPECT_NEAR(model->npv, hornerPresentValue({-1000, 300, 400, 500}, 0.10), 1e-9);
    EXPECT_EQ(view->text("npvResultLabel"), local("-21.037"));
    EXPECT_NEAR(model->irr, 8.8963, 5e-4);
    EXPECT_EQ(view->text("irrResultLabel"), local("8.896%"));
    EXPECT_LE(std::fabs(hornerPresentValue({-1000, 300, 400, 500}, model->irr / 100)), 1e-5);

    // -100 now, 110 in a year: worth nothing at 10 %, which is its IRR.
    npv->editField("periodField", "2");
    cashFlows({"-100", "110"});
    EXPECT_EQ(view->text("npvResultLabel"), "0");
    EXPECT_NEAR(model->irr, 10, 1e-4);
    EXPECT_EQ(view->text("irrResultLabel"), "10%");

    // -100, 50, 50 has its root at 0 %, the very first midpoint.
    npv->editField("periodField", "3");
    cashFlows({"-100", "50", "50"});
    EXPECT_EQ(model->irr, 0);
    EXPECT_NEAR(model->npv, -100 + 50 / 1.1 + 50 / 1.21, 1e-9);

    // A negative rate discounts upwards; -100 % divides by zero.
    npv->editField("discountRateField", "-50");
    EXPECT_NEAR(model->npv, -100 + 100 + 200, 1e-9);
    npv->editField("discountRateField", "-100");
    EXPECT_EQ(view->text("npvResultLabel"), "Infinity");
}

TEST_F(NpvTest, IrrIsNaNWhenTheBisectionFindsNoRate)
{
    QList<double> flows(100, 0.0);
    flows[0] = 100;
    flows[1] = 100;
    EXPECT_TRUE(std::isnan(NpvModel::internalRateOfReturn(flows, 2))) << "never below zero";
    flows[0] = -100;
    flows[1] = 300;
    EXPECT_TRUE(std::isnan(NpvModel::internalRateOfReturn(flows, 2))) << "true IRR is 200 %";
    flows[1] = std::numeric_limits<double>::infinity();
    flows[2] = -std::numeric_limits<double>::infinity();
    EXPECT_TRUE(std::isnan(NpvModel::internalRateOfReturn(flows, 3))) << "NaN present values";
    EXPECT_EQ(NpvModel::internalRateOfReturn(flows, 0), 0) << "no flows are worth 0";
    EXPECT_EQ(NpvModel::netPresentValue(flows, -5, 10), 0);
    EXPECT_EQ(NpvModel::netPresentValue(flows, 1, 10), -100) << "CF0 is not discounted";

    npv->editField("periodField", "2");
    cashFlows({"100", "100"});
    EXPECT_EQ(view->text("irrResultLabel"), "NaN%");
    npv->sendReportRequestedNotification("");
    EXPECT_TRUE(reportBody().endsWith("NPV: 200\nIRR: NaN%\n"));
}

TEST_F(NpvTest, NotificationTraffic)
{
    TrafficLog log;
    // Delivery is synchronous: the model, listening since before the log,
    // recomputes while the cash change is being delivered, so the log hears
    // the result first.
    cash(1, local("110.5"));
    ASSERT_EQ(log.names(),
              QStringList({"ResultCalculatedNotification", "CashChangedNotification"}));
    EXPECT_EQ(log.seen[0].sender.data(), model);
    EXPECT_TRUE(log.seen[0].userInfo.isEmpty());
    EXPECT_EQ(log.seen[1].sender.data(), table);
    EXPECT_EQ(log.seen[1].userInfo.keys(), QStringList({"tag", "value"}));
    EXPECT_EQ(log.seen[1].userInfo.value("tag").toInt(), 1);
    EXPECT_EQ(log.seen[1].userInfo.value("value").toDouble(), 110.5);
    EXPECT_EQ(model->cashArray[1], 110.5);
    EXPECT_EQ(table->fieldText(1), local("110.5"));
    EXPECT_EQ(view->text("npvResultLabel"), local("110.5")) << "rate 0 so far";

    log.seen.clear();
    npv->editField("periodField", "7");
    ASSERT_EQ(log.names(),
              QStringList({"PeriodChangedNotification", "ResultCalculatedNotification"}));
    EXPECT_EQ(log.seen[0].sender.data(), npv.get());
    EXPECT_EQ(log.seen[0].userInfo.keys(), QStringList({"period"}));
    EXPECT_EQ(log.seen[0].userInfo.value("period").toInt(), 7);

    log.seen.clear();
    npv->editField("discountRateField", "5");
    EXPECT_EQ(log.names(), QStringList({"ResultCalculatedNotification"}));

    // The model listens to any table, the table to any period change.
    log.seen.clear();
    NotificationCenter::defaultCenter().post("CashChangedNotification", nullptr,
                                             {{"tag", 2}, {"value", 42.0}});
    EXPECT_EQ(model->cashArray[2], 42);
    NotificationCenter::defaultCenter().post("PeriodChangedNotification", nullptr, {{"period", 2}});
    EXPECT_EQ(table->numberOfRows(), 2);
    EXPECT_EQ(model->period, 7) << "the model takes the period from the form only";
}

TEST_F(NpvTest, PeriodEdits)
{
    QSignalSpy reloads(table, &NpvTableController::reloaded);
    const auto period = [&](const QString& text) {
        npv->editField("periodField", text);
        return std::pair(model->period, table->numberOfRows());
    };
    EXPECT_EQ(period("3.9"), std::pair(3, 3)) << "truncated";
    EXPECT_EQ(period("100"), std::pair(3, 3)) << "ignored";
    EXPECT_EQ(period("0"), std::pair(3, 3));
    EXPECT_EQ(period("-5"), std::pair(3, 3));
    EXPECT_EQ(period(""), std::pair(3, 3));
    EXPECT_EQ(period("abc"), std::pair(3, 3));
    EXPECT_EQ(period("1e1"), std::pair(3, 3)) << "no exponent";
    EXPECT_EQ(period("99"), std::pair(99, 99));
    EXPECT_EQ(period("1"), std::pair(1, 1));
    EXPECT_EQ(period("12 months"), std::pair(1, 1)) << "no leading number: unreadable";
    EXPECT_EQ(period(" 12 "), std::pair(12, 12)) << "blanks around are fine";
    EXPECT_EQ(period(local("2.5")), std::pair(2, 2));
    EXPECT_EQ(reloads.count(), 12) << "the table reloads even when the period stays";
}

TEST_F(NpvTest, AnEditAfterASignFlipIsRoutedToItsOwnField)
{
    npv->editField("periodField", "2");
    cashFlows({"-100", "110"});
    npv->editField("discountRateField", "10");
    EXPECT_EQ(view->text("npvResultLabel"), "0");
    // "±" on the period changes its text without a change action; the next
    // edit, of the rate, is the rate's.
    view->setText("periodField", "-2");
    npv->editField("discountRateField", "5");
    EXPECT_EQ(model->discountRate, 5);
    EXPECT_EQ(view->text("npvResultLabel"), local("4.762"));
    EXPECT_EQ(model->period, 2);
}

TEST_F(NpvTest, HiddenRowsKeepTheirValues)
{
    npv->editField("periodField", "5");
    cashFlows({"-1000", "300", "400", "500", "600"});
    npv->editField("discountRateField", "10");
    const double fiveFlows = model->npv;

    npv->editField("periodField", "4");
    EXPECT_EQ(table->fieldTexts(), QStringList({"-1000", "300", "400", "500"}));
    EXPECT_NEAR(model->npv, hornerPresentValue({-1000, 300, 400, 500}, 0.10), 1e-9);
    npv->sendReportRequestedNotification("Short");
    EXPECT_FALSE(reportBody().contains("CF4"));

    npv->editField("periodField", "6");
    EXPECT_EQ(table->fieldTexts(), QStringList({"-1000", "300", "400", "500", "600", ""}));
    EXPECT_NEAR(model->npv, fiveFlows, 1e-9) << "the fifth flow counts again";
    EXPECT_NEAR(fiveFlows, hornerPresentValue({-1000, 300, 400, 500, 600}, 0.10), 1e-9);
}

TEST_F(NpvTest, BadCellsNeverBreakTheScreen)
{
    // Cells read by the same rule as fields: no exponent, no trailing junk.
    cashFlows({"-100", "", "abc", "1e999"});
    EXPECT_EQ(model->cashArray.mid(0, 4), QList<double>({-100, 0, 0, 0}));
    cash(3, "25abc");
    EXPECT_EQ(model->cashArray[3], 0);
    cash(3, QString(400, u'9'));
    EXPECT_EQ(view->text("npvResultLabel"), "Infinity");
    EXPECT_EQ(table->fieldText(3), "Infinity") << "and it reads back";
    cash(3, table->fieldText(3));
    EXPECT_TRUE(std::isinf(model->cashArray[3]));

    // Rows outside the list are ignored, wherever the edit comes from.
    cash(-1, "5");
    cash(100, "5");
    NotificationCenter::defaultCenter().post("CashChangedNotification", nullptr,
                                             {{"tag", 1000}, {"value", 1.0}});
    NotificationCenter::defaultCenter().post("CashChangedNotification", nullptr, {});
    EXPECT_EQ(model->cashArray.size(), 100);
    NotificationCenter::defaultCenter().post("PeriodChangedNotification", nullptr,
                                             {{"period", 100000}});
    EXPECT_EQ(table->numberOfRows(), 100);
    EXPECT_EQ(table->fieldText(100000), "");

    // 99 periods of money: finite results and a bounded bisection.
    npv->editField("periodField", "99");
    QStringList flows{"-5000"};
    for (int t = 1; t < 99; ++t)
        flows << "100";
    ASSERT_TRUE(npv->setTableInput("cashArray", flows));
    EXPECT_TRUE(std::isfinite(model->npv));
    EXPECT_NEAR(hornerPresentValue(model->cashArray.mid(0, 99), model->irr / 100), 0, 1e-5);
    EXPECT_FALSE(npv->setTableInput("cashArray", QStringList(101, "1")));
    EXPECT_FALSE(npv->setTableInput("probability", {"1"}));
}

TEST_F(NpvTest, ReportCarriesTheCompoundInterestHeading)
{
    npv->editField("periodField", "3");
    npv->editField("discountRateField", local("7.5"));
    cashFlows({"-1000", "500", "700"});
    npv->sendReportRequestedNotification("Plan A");
    const QString expected = "Discount Rate: " + local("7.5") +
                             "%\nPeriod: 3\nCF0: -1000\nCF1: 500\nCF2: 700\n"
                             "NPV: " +
                             view->text("npvResultLabel") +
                             "\nIRR: " + view->text("irrResultLabel") + "\n";
    EXPECT_EQ(reportBody(), expected);
    EXPECT_TRUE(model->report().contents.startsWith(
        "Financial Report - Compound Interest\nDate: 05-03-2024 14:07\n"));
    EXPECT_EQ(model->report().fileName, "npv_Plan A_05-03-2024 14:07_report.txt");
    EXPECT_EQ(model->report().functionTitle, "Npv");
    EXPECT_EQ(model->report().colorTag, Rgba(0xDB, 0x33, 0x40));
}

TEST_F(NpvTest, ChartFollowsTheResults)
{
    QSignalSpy changes(npv.get(), &NpvController::chartChanged);
    auto* source = dynamic_cast<MultiLineGraphDataSource*>(npv->chartDataSource());
    ASSERT_NE(source, nullptr);
    npv->editField("periodField", "2");
    cashFlows({"-100", "121"});
    EXPECT_TRUE(npv->chartShown());
    EXPECT_EQ(changes.count(), 3);

    // 0 % to 20 % while the rate is at most 10 %.
    const QStringList x = source->dataForXAxisWithLineNumber(0);
    ASSERT_EQ(x.size(), 11);
    EXPECT_EQ(x.first(), "0%");
    EXPECT_EQ(x.last(), "20%");
    const auto y = source->dataForYAxisWithLineNumber(0);
    ASSERT_EQ(y.size(), 11);
    EXPECT_NEAR(*y[0], 21, 1e-9);
    EXPECT_NEAR(*y[5], 10, 1e-9);
    EXPECT_NEAR(*y[10], -100 + 121 / 1.2, 1e-9);

    npv->editField("discountRateField", "30");
    EXPECT_EQ(source->dataForXAxisWithLineNumber(0).last(), "60%");
    npv->editField("discountRateField", "Infinity");
    EXPECT_EQ(source->dataForXAxisWithLineNumber(0).last(), "20%");
    npv->editField("discountRateField", typed(1e300));
    EXPECT_EQ(source->dataForXAxisWithLineNumber(0).last(), "1000%");
}

TEST(NpvTableModelTest, RowsFollowThePeriod)
{
    NpvTableModel table;
    table.discountRate = 10;
    table.cashArray = {-100, 110};
    table.period = 3;
    table.calculateResults();
    EXPECT_EQ(table.cashArray, QList<double>({-100, 110, 0})) << "padded to the period";
    EXPECT_NEAR(table.npv, 0, 1e-9);
    EXPECT_NEAR(table.irr, 10, 1e-4);
    table.loadNpvArray();
    QStringList labels;
    for (const NpvCell& cell : table.tableArray)
        labels << cell.leftLabelStr;
    EXPECT_EQ(labels, QStringList({"Period", "Discount Rate", "Cash Flow 0", "Cash Flow 1",
                                   "Cash Flow 2", "Net Present Value", "Internal Rate of Return"}));
    EXPECT_EQ(table.tableArray[0].intFieldValue, 3);
    EXPECT_EQ(table.tableArray[3].fieldValue, 110);
    EXPECT_TRUE(table.tableArray.last().fieldHidden);
    EXPECT_NEAR(table.tableArray.last().result, 10, 1e-4);

    table.period = 1 << 30;
    table.calculateResults();
    EXPECT_EQ(table.cashArray.size(), NpvTableModel::maximumCashFlows);
}

} // namespace
