#include "functions/ScreenTest.h"
#include "functions/npv/NpvController.h"
#include "functions/npv/NpvTableModel.h"

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

class NpvTest : public ScreenTest<NpvController> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        model = screen->npvModel();
        table = screen->table();
    }
    // One edit of a table row, as its field sends it.
    void cash(int row, const QString& text) { table->fieldChanged(row, text); }
    void cashFlows(const QStringList& flows)
    {
        for (int row = 0; row < flows.size(); ++row)
            cash(row, flows.at(row));
    }
    QString npv() const { return view->text("npvResultLabel"); }
    QString irr() const { return view->text("irrResultLabel"); }

    NpvModel* model = nullptr;
    NpvTableController* table = nullptr;
};

TEST_F(NpvTest, FreshScreen)
{
    EXPECT_EQ(view->title(), "NPV Calculator");
    EXPECT_TRUE(view->descriptionHtml().contains("internal rate of return"));
    EXPECT_EQ(model->period, 4);
    EXPECT_EQ(table->numberOfRows(), 4);
    EXPECT_EQ(table->leftLabelTexts(),
              QStringList({"Cash Flow 0", "Cash Flow 1", "Cash Flow 2", "Cash Flow 3"}));
    EXPECT_EQ(table->fieldTexts(), QStringList(4, "")) << "zeros show as empty";
    EXPECT_TRUE(npv().isEmpty()) << "nothing computed yet";
    EXPECT_FALSE(screen->chartShown());

    // All-zero flows are worth 0 at every rate; 0 % is the IRR given.
    type("discountRateField", "10");
    EXPECT_EQ(npv(), "0");
    EXPECT_EQ(irr(), "0%");
}

// Reference values: the NPV by Horner's scheme; the IRR of -1000, 300, 400,
// 500 is the textbook 8.8963 %; the others have closed forms.
TEST_F(NpvTest, ResultsMatchIndependentReferences)
{
    type("discountRateField", "10");
    cashFlows({"-1000", "300", "400", "500"});
    EXPECT_NEAR(model->npv, hornerPresentValue({-1000, 300, 400, 500}, 0.10), 1e-9);
    EXPECT_EQ(npv(), local("-21.037"));
    EXPECT_EQ(irr(), local("8.896%"));
    EXPECT_LE(std::fabs(hornerPresentValue({-1000, 300, 400, 500}, model->irr / 100)), 1e-5);

    // -100 now, 110 in a year: worth nothing at 10 %, which is its IRR.
    type("periodField", "2");
    cashFlows({"-100", "110"});
    EXPECT_EQ(npv(), "0");
    EXPECT_EQ(irr(), "10%");

    // -100, 50, 50 has its root at 0 %, the very first midpoint.
    type("periodField", "3");
    cashFlows({"-100", "50", "50"});
    EXPECT_EQ(model->irr, 0);
    EXPECT_NEAR(model->npv, -100 + 50 / 1.1 + 50 / 1.21, 1e-9);

    // A negative rate discounts upwards; -100 % divides by zero.
    type("discountRateField", "-50");
    EXPECT_NEAR(model->npv, -100 + 100 + 200, 1e-9);
    type("discountRateField", "-100");
    EXPECT_EQ(npv(), "Infinity");
}

TEST_F(NpvTest, IrrIsNaNWhereNoRateExists)
{
    QList<double> flows(100, 0.0);
    flows[0] = 100;
    flows[1] = 100;
    EXPECT_TRUE(std::isnan(NpvModel::internalRateOfReturn(flows, 2))) << "never below zero";
    flows[0] = -100;
    flows[1] = std::numeric_limits<double>::infinity();
    flows[2] = -std::numeric_limits<double>::infinity();
    EXPECT_TRUE(std::isnan(NpvModel::internalRateOfReturn(flows, 3))) << "NaN present values";
    EXPECT_EQ(NpvModel::internalRateOfReturn(flows, 0), 0) << "no flows are worth 0";
    EXPECT_EQ(NpvModel::netPresentValue(flows, -5, 10), 0);
    EXPECT_EQ(NpvModel::netPresentValue(flows, 1, 10), -100) << "CF0 is not discounted";

    type("periodField", "2");
    cashFlows({"100", "100"});
    EXPECT_EQ(irr(), "NaN%");
    screen->sendReportRequestedNotification("");
    EXPECT_TRUE(reportBody().endsWith("NPV: 200\nIRR: NaN%\n"));
}

TEST_F(NpvTest, NotificationTraffic)
{
    NotificationLog log(
        {"PeriodChangedNotification", "CashChangedNotification", "ResultCalculatedNotification"});
    // Delivery is synchronous: the model, listening since before the log,
    // recomputes while the cash change is being delivered, so the log hears
    // the result first.
    cash(1, local("110.5"));
    ASSERT_EQ(log.names(),
              QStringList({"ResultCalculatedNotification", "CashChangedNotification"}));
    expectNotification(log.seen[0], model, {});
    expectNotification(log.seen[1], table, {{"tag", 1}, {"value", 110.5}});
    EXPECT_EQ(model->cashArray[1], 110.5);
    EXPECT_EQ(table->fieldText(1), local("110.5"));

    log.seen.clear();
    type("periodField", "7");
    ASSERT_EQ(log.names(),
              QStringList({"PeriodChangedNotification", "ResultCalculatedNotification"}));
    expectNotification(log.seen[0], screen.get(), {{"period", 7}});

    log.seen.clear();
    type("discountRateField", "5");
    EXPECT_EQ(log.names(), QStringList({"ResultCalculatedNotification"}));

    // The model listens to any table, the table to any period change.
    log.seen.clear();
    NotificationCenter::defaultCenter().post("CashChangedNotification", nullptr,
                                             {{"tag", 2}, {"value", 42.0}});
    EXPECT_EQ(model->cashArray[2], 42);
    // A change without a row number, or for a row past the end, changes nothing.
    for (const QVariant& tag : {QVariant("two"), QVariant(), QVariant(100)})
        NotificationCenter::defaultCenter().post("CashChangedNotification", nullptr,
                                                 {{"tag", tag}, {"value", 9.0}});
    EXPECT_EQ(model->cashArray.mid(0, 3), QList<double>({0, 110.5, 42}));
    NotificationCenter::defaultCenter().post("PeriodChangedNotification", nullptr, {{"period", 2}});
    EXPECT_EQ(table->numberOfRows(), 2);
    EXPECT_EQ(model->period, 7) << "the model takes the period from the form only";
}

TEST_F(NpvTest, PeriodEdits)
{
    QSignalSpy reloads(table, &NpvTableController::reloaded);
    // Truncated; 100, 0, negatives and unreadable text ignored; exponents
    // read; no leading number is unreadable; blanks around are fine.
    const std::pair<QString, int> edits[] = {
        {"3.9", 3},  {"100", 3}, {"0", 3}, {"-5", 3},        {"", 3},      {"abc", 3},
        {"1e1", 10}, {"99", 99}, {"1", 1}, {"12 months", 1}, {" 12 ", 12}, {local("2.5"), 2}};
    for (const auto& [text, period] : edits) {
        type("periodField", text);
        EXPECT_EQ(std::pair(model->period, table->numberOfRows()), std::pair(period, period))
            << text.toStdString();
    }
    EXPECT_EQ(reloads.count(), 12) << "the table reloads even when the period stays";

    type("periodField", "2");
    cashFlows({"-100", "110"});
    type("discountRateField", "10");
    EXPECT_EQ(npv(), "0");
    // "±" on the period changes its text without a change action; the next
    // edit, of the rate, is the rate's.
    view->setText("periodField", "-2");
    type("discountRateField", "5");
    EXPECT_EQ(model->discountRate, 5);
    EXPECT_EQ(npv(), local("4.762"));
    EXPECT_EQ(model->period, 2);
}

TEST_F(NpvTest, HiddenRowsKeepTheirValues)
{
    type("periodField", "5");
    cashFlows({"-1000", "300", "400", "500", "600"});
    type("discountRateField", "10");
    const double fiveFlows = model->npv;

    type("periodField", "4");
    EXPECT_EQ(table->fieldTexts(), QStringList({"-1000", "300", "400", "500"}));
    EXPECT_NEAR(model->npv, hornerPresentValue({-1000, 300, 400, 500}, 0.10), 1e-9);
    screen->sendReportRequestedNotification("Short");
    EXPECT_FALSE(reportBody().contains("CF4"));

    type("periodField", "6");
    EXPECT_EQ(table->fieldTexts(), QStringList({"-1000", "300", "400", "500", "600", ""}));
    EXPECT_NEAR(model->npv, fiveFlows, 1e-9) << "the fifth flow counts again";
    EXPECT_NEAR(fiveFlows, hornerPresentValue({-1000, 300, 400, 500, 600}, 0.10), 1e-9);
}

TEST_F(NpvTest, BadCellsNeverBreakTheScreen)
{
    // Cells read by the same rule as fields: no trailing junk, no half an
    // exponent.
    cashFlows({"-100", "", "abc", "1e9x"});
    EXPECT_EQ(model->cashArray.mid(0, 4), QList<double>({-100, 0, 0, 0}));
    cash(3, "25abc");
    EXPECT_EQ(model->cashArray[3], 0);
    cash(3, overflowing());
    EXPECT_EQ(npv(), "Infinity");
    EXPECT_EQ(table->fieldText(3), "Infinity") << "and it reads back";
    cash(3, table->fieldText(3));
    EXPECT_TRUE(std::isinf(model->cashArray[3]));

    // Rows outside the list are ignored, wherever the edit comes from.
    cash(-1, "5");
    cash(100, "5");
    auto& centre = NotificationCenter::defaultCenter();
    centre.post("CashChangedNotification", nullptr, {{"tag", 1000}, {"value", 1.0}});
    centre.post("CashChangedNotification", nullptr, {});
    EXPECT_EQ(model->cashArray.size(), 100);
    centre.post("PeriodChangedNotification", nullptr, {{"period", 100000}});
    EXPECT_EQ(table->numberOfRows(), 100);
    EXPECT_EQ(table->fieldText(100000), "");

    // 99 periods of money: finite results and a bounded bisection.
    type("periodField", "99");
    QStringList flows(99, "100");
    flows[0] = "-5000";
    ASSERT_TRUE(screen->setTableInput("cashArray", flows));
    EXPECT_TRUE(std::isfinite(model->npv));
    EXPECT_NEAR(hornerPresentValue(model->cashArray.mid(0, 99), model->irr / 100), 0, 1e-5);
    EXPECT_FALSE(screen->setTableInput("cashArray", QStringList(101, "1")));
    EXPECT_FALSE(screen->setTableInput("probability", {"1"}));
}

TEST_F(NpvTest, ReportCarriesTheCompoundInterestHeading)
{
    type("periodField", "3");
    type("discountRateField", local("7.5"));
    cashFlows({"-1000", "500", "700"});
    screen->sendReportRequestedNotification("Plan A");
    EXPECT_EQ(reportBody(), local("Discount Rate: 7.5%\nPeriod: 3\nCF0: -1000\nCF1: 500\n"
                                  "CF2: 700\nNPV: ") +
                                npv() + "\nIRR: " + irr() + "\n");
    expectReport("Compound Interest", "npv_Plan A_05-03-2024 14:07_report.txt", "Npv",
                 Rgba(0xDB, 0x33, 0x40));
}

TEST_F(NpvTest, ChartFollowsTheResults)
{
    QSignalSpy changes(screen.get(), &NpvController::chartChanged);
    auto* source = dynamic_cast<MultiLineGraphDataSource*>(screen->chartDataSource());
    ASSERT_NE(source, nullptr);
    type("periodField", "2");
    cashFlows({"-100", "121"});
    EXPECT_TRUE(screen->chartShown());
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

    // Twice the rate, and 20 % when the rate is no number.
    const std::pair<QString, const char*> ends[] = {
        {"30", "60%"}, {"Infinity", "20%"}, {typed(1e300), "1000%"}};
    for (const auto& [rate, last] : ends) {
        type("discountRateField", rate);
        EXPECT_EQ(source->dataForXAxisWithLineNumber(0).last(), last) << rate.toStdString();
    }
}

TEST(NpvTableModelTest, RowsFollowThePeriod)
{
    NpvTableModel table;
    table.period = 0;
    table.loadCashArray();
    EXPECT_TRUE(table.cashArray.isEmpty()) << "no periods, no flows";
    table.discountRate = 5;
    table.cashArray = {-100, 110};
    table.period = 3;
    table.calculateResults();
    EXPECT_EQ(table.cashArray, QList<double>({-100, 110, 0})) << "padded to the period";
    EXPECT_NEAR(table.npv, -100 + 110 / 1.05, 1e-9);
    EXPECT_NEAR(table.irr, 10, 1e-4);
    table.loadNpvArray();
    table.loadNpvArray(); // a rebuild replaces the rows
    QStringList labels;
    for (const NpvCell& cell : table.tableArray)
        labels << cell.leftLabelStr;
    EXPECT_EQ(labels, QStringList({"Period", "Discount Rate", "Cash Flow 0", "Cash Flow 1",
                                   "Cash Flow 2", "Net Present Value", "Internal Rate of Return"}));
    EXPECT_EQ(table.tableArray[0].intFieldValue, 3);
    EXPECT_EQ(table.tableArray[3].fieldValue, 110);
    EXPECT_TRUE(table.tableArray.last().fieldHidden);
    EXPECT_NEAR(table.tableArray[5].result, -100 + 110 / 1.05, 1e-9);
    EXPECT_NEAR(table.tableArray.last().result, 10, 1e-4);

    table.period = 1 << 30;
    table.calculateResults();
    EXPECT_EQ(table.cashArray.size(), NpvTableModel::maximumCashFlows);
}

} // namespace

namespace {

// Each field here updates only its own value, so a flipped rate stays
// stale (the results do not hold it) until the rate itself is edited; a
// flipped cell until that cell is.
TEST_F(NpvTest, AFlippedValueStaysStaleUntilItIsTakenIn)
{
    type("discountRateField", "10");
    cashFlows({"-100", "110"});
    screen->signFlipped("discountRateField", "-10");
    type("periodField", "2");
    EXPECT_TRUE(view->stale()) << "the period edit recomputed with the old rate";
    EXPECT_EQ(npv(), "0");
    type("discountRateField", "-10");
    EXPECT_FALSE(view->stale());
    EXPECT_EQ(npv(), local("22.222")) << "-100 + 110 / 0.9";

    screen->cellSignFlipped("cashField1");
    cash(0, "-100");
    screen->cellEdited("cashField0");
    EXPECT_TRUE(view->stale());
    screen->cellEdited("cashField1");
    EXPECT_FALSE(view->stale());
}

} // namespace
