// The calculators of "Loans and More": amortization schedule, dated cash
// flows, interest rate conversion, breakeven and depreciation, through their
// screens' controllers.
#include "framework/NumberFormat.h"
#include "functions/ScreenTest.h"
#include "functions/amortization/AmortizationController.h"
#include "functions/breakeven/BreakevenController.h"
#include "functions/datedcashflows/DatedCashFlowsController.h"
#include "functions/depreciation/DepreciationController.h"
#include "functions/rateconversion/RateConversionController.h"
#include "platform/Services.h"

#include <QFile>
#include <QImage>
#include <QSet>
#include <cmath>

namespace {

class RateConversionTest : public ScreenTest<RateConversionController> {
protected:
    RateConversionModel* model() const { return screen->rateConversionModel(); }
    void fill(const char* nominal, const char* effective, const QString& count)
    {
        type("nominalRateField", local(nominal));
        type("effectiveRateField", local(effective));
        type("compoundingPerYearField", count);
    }
};

// References: the definitions of the spreadsheet functions EFFECT(r, m) =
// (1 + r/m)^m - 1 and NOMINAL(e, m) = m((1 + e)^(1/m) - 1), with the
// examples their documentation gives (EFFECT(5.25 %, 4) = 0.0535427,
// NOMINAL(5.3543 %, 4) = 0.0525003); the other rows and the continuous
// rate e^r - 1 evaluated from those definitions with Python's math module
// (expm1 and log1p, so that the tiny rate keeps its digits).
TEST_F(RateConversionTest, EffectiveAndNominalFollowTheSpreadsheetDefinitions)
{
    struct Row {
        const char* nominal;
        const char* count;
        double effective;  // percent
        double continuous; // percent
        double tolerance;
    };
    const Row rows[] = {
        {"5.25", "4", 5.354266737075805, 5.390256207853733, 1e-12},
        {"6", "12.9", 6.1677811864499565, 6.183654654535962, 1e-12}, // whole compoundings only
        {"10", "1", 10.0, 10.517091807564762, 1e-12},
        {"0.000001", "365", 1.0000000049863014e-06, 1.000000005e-06, 1e-20},
    };
    for (const Row& row : rows) {
        fill(row.nominal, "", row.count);
        screen->solve("effectiveRate");
        EXPECT_NEAR(model()->effectiveRate, row.effective, row.tolerance) << row.nominal;
        EXPECT_NEAR(model()->continuousRate, row.continuous, row.tolerance) << row.nominal;
        EXPECT_EQ(screen->qvFunctionView()->text("effectiveRateField"),
                  NumberFormat::stringFromDouble(model()->effectiveRate));
    }
    fill("", "5.3543", "4");
    screen->solve("nominalRate");
    EXPECT_NEAR(model()->nominalRate, 5.250031986835602, 1e-12);

    // Fewer than one compounding a year is NaN.
    fill("6", "", "0.5");
    screen->solve("effectiveRate");
    EXPECT_TRUE(std::isnan(model()->effectiveRate));
    EXPECT_EQ(screen->qvFunctionView()->text("effectiveRateField"), "NaN");

    fill("6", "", "12");
    screen->solve("effectiveRate");
    screen->sendReportRequestedNotification("Savings");
    EXPECT_TRUE(
        report().contents.startsWith("Financial Report - Interest Rate Conversion\nDate: "));
    EXPECT_TRUE(report().contents.endsWith(
        local("Nominal Rate: 6%\nCompounding Per Year: 12\nEffective Rate: 6.168%\n"
              "Continuous Compounding Effective Rate: 6.184%\n")))
        << report().contents.toStdString();
    EXPECT_EQ(report().fileName, "rate-conversion_Savings_05-03-2024 14:07_report.txt");
}

// What the solve reads and cannot read blanks what depends on it: the
// effective rate needs the count, the continuous rate only the nominal
// rate (6 % continuously is e^0.06 - 1 = 6.184 %, as above).
TEST_F(RateConversionTest, ARateOrCountThatCannotBeReadLeavesItsResultsBlank)
{
    fill("6", "", "twelve");
    screen->solve("effectiveRate");
    EXPECT_TRUE(std::isnan(model()->effectiveRate));
    EXPECT_EQ(view->note("effectiveRateField"),
              "The compoundings a year cannot be read. Not a number");
    EXPECT_EQ(view->text("continuousRateResultLabel"), local("6.184%"));
    EXPECT_TRUE(view->note("continuousRateResultLabel").isEmpty());

    fill("", "6%", "12");
    screen->solve("nominalRate");
    EXPECT_TRUE(std::isnan(model()->nominalRate));
    for (const char* outlet : {"nominalRateField", "continuousRateResultLabel"})
        EXPECT_EQ(view->note(outlet), "The effective rate cannot be read. Not a number") << outlet;
}

using BreakevenTest = ScreenTest<BreakevenController>;

// profit = quantity × (price − variable) − fixed, each value solved from
// the other four (the textbook case: 10000 fixed, 15 variable, 40 price
// break even at 400 units).
TEST_F(BreakevenTest, EachValueIsSolvedFromTheOtherFour)
{
    const QStringList names = screen->solveButtons();
    ASSERT_EQ(names.size(), 5);
    struct Case {
        double fixed, variable, price, profit, quantity;
    };
    const Case cases[] = {
        {10000, 15, 40, 5000, 600},
        {2500.5, 0.75, 1.99, -100, 1935.8870967741934},
        {10000, 15, 40, 0, 400},
    };
    for (const Case& c : cases) {
        const double values[] = {c.fixed, c.variable, c.price, c.profit, c.quantity};
        const char* fields[] = {"fixedCostField", "variableCostField", "priceField", "profitField",
                                "quantityField"};
        for (const QString& unknown : names) {
            for (int i = 0; i < 5; ++i)
                type(fields[i], typed(values[i]));
            type(unknown + "Field", "");
            screen->solve(unknown);
            const double expected =
                values[QStringList({"fixedCost", "variableCost", "price", "profit", "quantity"})
                           .indexOf(unknown)];
            EXPECT_NEAR(screen->breakevenModel()->property(unknown.toLatin1()).toDouble(), expected,
                        1e-9 * std::max(1.0, std::fabs(expected)))
                << unknown.toStdString();
        }
    }
    // The report of the textbook case, the last solved; then a price that
    // only covers the variable cost never breaks even.
    screen->sendReportRequestedNotification("");
    EXPECT_EQ(reportBody(), "Fixed Costs: 10000\nVariable Cost Per Unit: 15\nPrice Per Unit: 40\n"
                            "Profit: 0\nQuantity: 400\n");
    type("priceField", "15");
    screen->solve("quantity");
    EXPECT_EQ(screen->qvFunctionView()->text("quantityField"), "Infinity");
}

// A given value that cannot be read leaves the answer blank and says which
// value, instead of counting as 0; the answer's own field may hold anything.
TEST_F(BreakevenTest, AValueThatCannotBeReadLeavesTheAnswerBlank)
{
    type("fixedCostField", "10000");
    type("variableCostField", "15");
    type("priceField", "4O");
    type("profitField", "0");
    type("quantityField", "?");
    screen->solve("quantity");
    EXPECT_EQ(view->text("quantityField"), "NaN");
    EXPECT_EQ(view->note("quantityField"), "Price per unit cannot be read. Not a number");
    EXPECT_EQ(screen->breakevenModel()->notes().value("quantity"),
              "Price per unit cannot be read. Not a number");
    type("priceField", "40");
    screen->solve("quantity");
    EXPECT_EQ(view->text("quantityField"), "400"); // the textbook case above
    EXPECT_TRUE(view->note("quantityField").isEmpty());
}

class DepreciationTest : public ScreenTest<DepreciationController> {
protected:
    QList<double> amounts(const QString& cost, const QString& salvage, const QString& life,
                          const QString& months, const QString& method,
                          const QString& factor = "200")
    {
        type("costField", cost);
        type("salvageField", salvage);
        type("lifeField", life);
        type("firstYearMonthsField", months);
        type("factorField", factor);
        choose("methodButton", method);
        QList<double> list;
        for (const auto& year : screen->depreciationModel()->schedule)
            list << year.depreciation;
        return list;
    }
};

// References, each the documented example of the spreadsheet function of
// the same name: SLN(30000, 7500, 10) = 2250; SYD(30000, 7500, 10, 1) =
// 4090.91 and (…, 10) = 409.09; DDB(2400, 300, 10, 1) = 480, (…, 2) = 384,
// (…, 10) = 22.12; DB(1000000, 100000, 6, n, 7) = 186083.33, 259639.42,
// 176814.44, 120410.64, 81999.64, 55841.76, 15845.10 (a first year of seven
// months and a seventh, partial year). The 150 % declining balance that
// switches to straight line in its fourth year was worked out with the VDB
// rule in a few lines of Python: 3000, 2100, 1470, 1215, 1215.
TEST_F(DepreciationTest, SchedulesMatchTheSpreadsheetFunctions)
{
    struct Case {
        QStringList inputs; // cost, salvage, life, months, method, factor
        QList<double> expected;
        double tolerance;
    };
    const Case cases[] = {
        {{"30000", "7500", "10", "12", "SL", "200"}, QList<double>(10, 2250), 1e-9},
        {{"2400", "300", "10", "12", "DDB", "200"},
         {480, 384, 307.2, 245.76, 196.608, 157.2864, 125.82912, 100.663296, 80.5306368,
          22.1225472},
         1e-9},
        {{"1000000", "100000", "6", "7", "DB", "200"},
         {186083.33, 259639.42, 176814.44, 120410.64, 81999.64, 55841.76, 15845.10},
         0.005},
        {{"10000", "1000", "5", "12", "DDB", "150"}, {3000, 2100, 1470, 1215, 1215}, 1e-9},
    };
    for (const Case& c : cases) {
        const QList<double> got =
            amounts(c.inputs[0], c.inputs[1], c.inputs[2], c.inputs[3], c.inputs[4], c.inputs[5]);
        ASSERT_EQ(got.size(), c.expected.size()) << c.inputs.join(' ').toStdString();
        for (qsizetype i = 0; i < got.size(); ++i)
            EXPECT_NEAR(got[i], c.expected[i], c.tolerance)
                << c.inputs.join(' ').toStdString() << " year " << i + 1;
    }
    const QList<double> syd = amounts("30000", "7500", "10", "12", "SYD");
    EXPECT_NEAR(syd.first(), 4090.91, 0.005);
    EXPECT_NEAR(syd.last(), 409.09, 0.005);
}

TEST_F(DepreciationTest, APartialFirstYearSpreadsEachYearOfLifeAndEndsAtTheSalvage)
{
    // Bought in October: three months of the first asset year, then nine of
    // it and three of the next in each calendar year, and a last year of
    // nine months.
    for (const QString method : {"SL", "SYD", "DDB"}) {
        const QList<double> got = amounts("10000", "1000", "4", "3", method);
        ASSERT_EQ(got.size(), 5) << method.toStdString();
        const DepreciationModel* m = screen->depreciationModel();
        EXPECT_NEAR(m->totalDepreciation, 9000, 1e-9) << method.toStdString();
        EXPECT_NEAR(m->schedule.last().bookValue, 1000, 1e-9);
        if (method == "SL") {
            EXPECT_NEAR(got.first(), 2250 * 3 / 12.0, 1e-9);
            EXPECT_NEAR(got[1], 2250, 1e-9);
            EXPECT_NEAR(got.last(), 2250 * 9 / 12.0, 1e-9);
        }
        if (method == "SYD") { // asset years 3600, 2700, 1800, 900
            EXPECT_NEAR(got[1], 3600 * 0.75 + 2700 * 0.25, 1e-9);
        }
        if (method == "DDB") { // half the book value a year, a quarter of that at first
            EXPECT_EQ(got, QList<double>({1250, 4375, 2187.5, 1093.75, 93.75}));
        }
    }
    EXPECT_EQ(screen->qvFunctionView()->text("firstYearDepreciationLabel"), local("1250"));
    screen->sendReportRequestedNotification("");
    EXPECT_EQ(reportBody(),
              local("Cost: 10000\nSalvage Value: 1000\nLife: 4\nFirst Year Months: 3\n"
                    "Method: DDB\nFactor: 200%\nFirst Year Depreciation: 1250\n"
                    "Total Depreciation: 9000\n"
                    "Year 1: 1250, Accumulated: 1250, Book Value: 8750\n"
                    "Year 2: 4375, Accumulated: 5625, Book Value: 4375\n"
                    "Year 3: 2187.5, Accumulated: 7812.5, Book Value: 2187.5\n"
                    "Year 4: 1093.75, Accumulated: 8906.25, Book Value: 1093.75\n"
                    "Year 5: 93.75, Accumulated: 9000, Book Value: 1000\n"));

    // Nonsense never hangs: no life or months out of range give NaN and no rows.
    for (const auto& [life, months] : {std::pair("0", "12"), std::pair("1e9", "12"),
                                       std::pair("5", "0"), std::pair("5", "13")}) {
        EXPECT_TRUE(amounts("100", "10", life, months, "SL").isEmpty());
        EXPECT_TRUE(std::isnan(screen->depreciationModel()->totalDepreciation));
    }

    // A method the model does not know is refused, never taken for straight
    // line: no schedule, and the note lists the methods it knows.
    DepreciationModel* m = screen->depreciationModel();
    ASSERT_FALSE(amounts("100", "10", "5", "12", "SL").isEmpty());
    m->method = "VDB";
    m->calculateResult();
    EXPECT_TRUE(m->schedule.isEmpty());
    EXPECT_TRUE(std::isnan(m->totalDepreciation));
    EXPECT_TRUE(m->notes().value("totalDepreciation").contains("SL, SYD, DDB, DB"));
}

// "Save as CSV" twice in one minute: two files, the second named " (2)"
// before ".csv", each the whole schedule; nothing is written over.
TEST_F(DepreciationTest, SaveAsCsvWritesANewFileEveryTime)
{
    amounts("10000", "1000", "5", "12", "SL");
    QStringList paths;
    for (int i = 0; i < 2; ++i) {
        presenter.script({{"OK", ""}});
        screen->saveScheduleCsv();
        ASSERT_EQ(presenter.requests.back().title, "Schedule Saved");
        paths << presenter.requests.back().message.section('\n', 1);
    }
    EXPECT_TRUE(paths[0].endsWith("_schedule_05-03-2024 14-07.csv")) << paths[0].toStdString();
    EXPECT_EQ(paths[1], paths[0].chopped(4) + " (2).csv");
    for (const QString& path : paths) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        EXPECT_EQ(file.readAll(), screen->scheduleCsv());
    }
}

class AmortizationTest : public ScreenTest<AmortizationController> {
protected:
    const AmortizationModel& loan(const QString& amount, const char* rate, const QString& years,
                                  const QString& frequency = "Monthly")
    {
        choose("paymentsPerYearButton", frequency);
        type("loanAmountField", amount);
        type("annualRateField", local(rate));
        type("yearsField", years);
        return *screen->amortizationModel();
    }
};

// References: the lender's schedule in whole cents (payment and every
// interest amount rounded half away from zero, the last payment clearing
// the balance), computed independently with Python's decimal module: for
// 200000 at 6.5 % over 30 years monthly, the widely published payment
// 1264.14, total interest 255085.82, last payment 1259.56; for 300000 at
// 5 % over 30 years weekly (1,560 payments), 371.39, 279366.49 and 369.48.
TEST_F(AmortizationTest, ScheduleInCentsToTheLastPayment)
{
    struct Case {
        const char *amount, *rate, *years, *frequency;
        int payments;
        double payment, totalInterest, lastPayment;
    };
    const Case cases[] = {
        {"200000", "6.5", "30", "Monthly", 360, 1264.14, 255085.82, 1259.56},
        {"300000", "5", "30", "Weekly", 1560, 371.39, 279366.49, 369.48},
    };
    for (const Case& c : cases) {
        const AmortizationModel& m = loan(c.amount, c.rate, c.years, c.frequency);
        ASSERT_EQ(m.schedule.size(), c.payments) << c.frequency;
        EXPECT_DOUBLE_EQ(m.payment, c.payment);
        EXPECT_NEAR(m.totalInterest, c.totalInterest, 1e-6);
        EXPECT_NEAR(m.totalPaid, QString(c.amount).toDouble() + c.totalInterest, 1e-6);
        EXPECT_NEAR(m.schedule.last().payment, c.lastPayment, 1e-9);
        EXPECT_EQ(m.schedule.last().balance, 0.0) << "exactly 0.00";
        for (const AmortizationModel::Row& row : m.schedule) {
            EXPECT_NEAR(row.interest * 100, std::round(row.interest * 100), 1e-6) << row.period;
            EXPECT_NEAR(row.payment, row.interest + row.principal, 1e-9);
        }
    }
    screen->sendReportRequestedNotification("");
    EXPECT_TRUE(reportBody().contains(local("Payment: 371.39\nNumber of Payments: 1560\n"
                                            "Total Interest: 279366.49\nTotal Paid: 579366.49\n")))
        << reportBody().toStdString();
}

// Without rounding the schedule is numpy-financial's: ipmt(r, per, n, pv) =
// the balance after per − 1 payments times r, ppmt = pmt − ipmt (values
// evaluated from those definitions in Python).
TEST_F(AmortizationTest, UnroundedScheduleFollowsTheIpmtAndPpmtDefinitions)
{
    type("roundToCentsField", "0");
    const AmortizationModel& m = loan("200000", "6.5", "30");
    EXPECT_NEAR(m.payment, 1264.1360469859305, 1e-9);
    const struct {
        int period;
        double interest, principal;
    } rows[] = {{1, 1083.3333333333333, 180.80271365259728},
                {120, 920.2706398877646, 343.865407098166},
                {360, 6.810513307426591, 1257.325533678504}};
    for (const auto& r : rows) {
        EXPECT_NEAR(m.schedule.at(r.period - 1).interest, r.interest, 1e-8) << r.period;
        EXPECT_NEAR(m.schedule.at(r.period - 1).principal, r.principal, 1e-8) << r.period;
    }
}

TEST_F(AmortizationTest, RangeBeginningExtraPaymentsAndDates)
{
    type("rangeStartField", "13");
    type("rangeEndField", "24");
    type("firstPaymentDateField", "2027-01-01");
    const AmortizationModel& m = loan("200000", "6.5", "30");
    double principal = 0, interest = 0;
    for (int k = 13; k <= 24; ++k) {
        principal += m.schedule.at(k - 1).principal;
        interest += m.schedule.at(k - 1).interest;
    }
    EXPECT_NEAR(m.rangePrincipal, principal, 1e-9);
    EXPECT_NEAR(m.rangeInterest, interest, 1e-9);
    EXPECT_NEAR(m.rangePrincipal + m.rangeInterest, 12 * 1264.14, 1e-6);
    EXPECT_EQ(m.rangeBalance, m.schedule.at(23).balance);
    EXPECT_EQ(m.schedule.first().date, QDate(2027, 1, 1));
    EXPECT_EQ(m.payoffDate, QDate(2056, 12, 1));

    // BEG: the first payment is made at once and carries no interest.
    choose("paymentModeButton", "BEG");
    EXPECT_EQ(m.schedule.first().interest, 0.0);
    EXPECT_NEAR(m.payment, std::round(1264.1360469859305 / (1 + 0.065 / 12) * 100) / 100, 1e-9);
    EXPECT_EQ(m.schedule.last().balance, 0.0);

    // An extra 200 with every payment ends the loan years early.
    choose("paymentModeButton", "END");
    const double fullInterest = m.totalInterest;
    type("extraPaymentField", "200");
    EXPECT_LT(m.numberOfPayments, 300);
    EXPECT_LT(m.totalInterest, fullInterest);
    EXPECT_EQ(m.schedule.last().balance, 0.0);

    // The chart: the balance and the interest paid so far at each year's end.
    ASSERT_EQ(m.numberOfLinesToBePlotted(), 2);
    const auto balances = m.dataForYAxisWithLineNumber(0);
    const auto paidInterest = m.dataForYAxisWithLineNumber(1);
    EXPECT_EQ(m.dataForXAxisWithLineNumber(0).size(), balances.size());
    EXPECT_EQ(*balances.first(), 200000);
    EXPECT_EQ(*balances.last(), 0);
    EXPECT_NEAR(*paidInterest.last(), m.totalInterest, 1e-6);
    EXPECT_TRUE(screen->chartShown());

    // A mailed report carries the chart, as the time-value-of-money one does.
    auto mail = std::make_shared<RecordingMailComposer>();
    Services::setMailComposer(mail);
    presenter.script({{"Send Email", ""}});
    screen->exportClicked();
    ASSERT_EQ(mail->messages.size(), 1u);
    ASSERT_EQ(mail->messages[0].attachments.size(), 2);
    EXPECT_EQ(QImage::fromData(mail->messages[0].attachments[1].data, "JPEG").size(),
              QSize(800, 600));

    // An annual loan: one point a payment.
    type("extraPaymentField", "0");
    loan("1000", "5", "3", "Annually");
    EXPECT_EQ(m.dataForXAxisWithLineNumber(0), QStringList({"0", "1", "2", "3"}));

    // Long loans: whole years from 100 on, a partial last year with its
    // decimals, at most 1,200 year ends over a million payments, and never
    // one label twice (the chart places each point by its label).
    for (const auto& [years, frequency, count, last] :
         {std::tuple("150.25", "Monthly", 152, "150.25"),
          std::tuple("1000000", "Annually", 1201, "1000000")}) {
        loan("1000", "5", years, frequency);
        const QStringList labels = m.dataForXAxisWithLineNumber(0);
        EXPECT_EQ(labels.size(), count) << years;
        EXPECT_EQ(labels.last(), last);
        EXPECT_EQ(QSet<QString>(labels.begin(), labels.end()).size(), labels.size()) << years;
        EXPECT_EQ(m.dataForYAxisWithLineNumber(1).size(), labels.size());
    }
    EXPECT_EQ(m.dataForXAxisWithLineNumber(0).at(100), "83333") << "spread over the whole loan";

    // Nonsense never hangs: a term beyond any loan gives no schedule.
    loan("1000", "5", "100000", "Weekly");
    EXPECT_TRUE(m.schedule.isEmpty());
    EXPECT_TRUE(std::isnan(m.payment));
    EXPECT_FALSE(screen->chartShown());

    // A payment timing the model does not know is refused, never taken for
    // END.
    loan("1000", "5", "3");
    ASSERT_FALSE(m.schedule.isEmpty());
    screen->amortizationModel()->paymentMode = "MID";
    screen->amortizationModel()->calculateResult();
    EXPECT_TRUE(m.schedule.isEmpty());
    EXPECT_TRUE(m.notes().value("payment").contains("BEG or END"));
}

// The first payment date reads like every date; one that cannot be read
// leaves the schedule without dates, and the payoff date says why.
TEST_F(AmortizationTest, AFirstPaymentDateThatCannotBeReadIsNamed)
{
    type("firstPaymentDateField", "2027-1-1");
    const AmortizationModel& m = loan("200000", "6.5", "30");
    EXPECT_EQ(m.schedule.first().date, QDate(2027, 1, 1));
    EXPECT_TRUE(view->note("payoffDateLabel").isEmpty());
    type("firstPaymentDateField", "2027-02-29");
    EXPECT_FALSE(m.payoffDate.isValid());
    EXPECT_EQ(view->text("payoffDateLabel"), "");
    EXPECT_EQ(view->note("payoffDateLabel"),
              "The first payment date cannot be read. Not a date: use YYYY-MM-DD");
    type("firstPaymentDateField", "");
    EXPECT_TRUE(view->note("payoffDateLabel").isEmpty()) << "no date is no mistake";
}

class DatedCashFlowsTest : public ScreenTest<DatedCashFlowsController> {
protected:
    const DatedCashFlowsModel& flows(const QStringList& dates, const QStringList& amounts,
                                     const QString& rate = "0")
    {
        type("rateField", rate);
        screen->setTableInput("dates", dates);
        screen->setTableInput("amounts", amounts);
        type("rowCountField", QString::number(dates.size()));
        return *screen->datedCashFlowsModel();
    }
};

// References: the documented examples of the spreadsheet functions XNPV and
// XIRR (−10000, 2750, 4250, 3250, 2750 on 2008-01-01, 2008-03-01,
// 2008-10-30, 2009-02-15, 2009-04-01: XNPV at 9 % = 2086.65, XIRR =
// 0.373362535, a spreadsheet's answer that stops within 0.000001 %, so it
// is matched to that and the exact root checked by its XNPV); a flow −100, +230, −132 a year apart,
// whose NPV −100 + 230 v − 132 v² has the two roots 10 % and 20 %; flows of one sign, which have
// none.
TEST_F(DatedCashFlowsTest, XnpvAndXirrFollowTheSpreadsheetDefinitions)
{
    const DatedCashFlowsModel& m =
        flows({"2008-01-01", "2008-03-01", "2008-10-30", "2009-02-15", "2009-04-01"},
              {"-10000", "2750", "4250", "3250", "2750"}, "9");
    EXPECT_NEAR(m.xnpv, 2086.65, 0.005);
    EXPECT_NEAR(m.xirr, 37.3362535, 1e-6);
    EXPECT_NEAR(m.netPresentValue(m.xirr / 100), 0, 1e-8);
    EXPECT_EQ(screen->qvFunctionView()->text("xirrLabel"), local("37.336%"));

    // Two roots: the one nearer 10 % (the spreadsheet's default guess).
    flows({"2025-01-01", "2026-01-01", "2027-01-01"}, {"-100", "230", "-132"});
    EXPECT_NEAR(m.xirr, 10, 1e-9);
    flows({"2025-01-01", "2026-01-01", "2027-01-01"}, {"100", "-230", "132"});
    EXPECT_NEAR(m.xirr, 10, 1e-9);

    // No root: NaN, never a wrong number.
    for (const QStringList& amounts :
         {QStringList{"100", "230", "132"}, QStringList{"-100", "-230", "-1"},
          QStringList{"-100", "0", "0"}}) {
        flows({"2025-01-01", "2026-01-01", "2027-01-01"}, amounts);
        EXPECT_TRUE(std::isnan(m.xirr)) << amounts.join(',').toStdString();
    }
}

// A row that cannot be read is marked and blanks both results, with a note
// naming it, instead of being left out (the other rows alone would give a
// different, wrong answer). Expected values: -100 on 2025-01-01 and +110 on
// 2026-01-01, 365 days apart, have XIRR 10 % exactly and XNPV 0 at 10 %.
TEST_F(DatedCashFlowsTest, ARowThatCannotBeReadBlanksTheResultsAndIsNamed)
{
    const DatedCashFlowsModel& m = flows({"2025-1-1", "", "2026-01-01"}, {"-100", "", "110"}, "10");
    EXPECT_NEAR(m.xirr, 10, 1e-9) << "no leading zeros needed; an empty row is no flow";
    EXPECT_NEAR(m.xnpv, 0, 1e-9);
    EXPECT_TRUE(view->note("xirrLabel").isEmpty());

    const QString notADate = "Not a date: use YYYY-MM-DD";
    const struct {
        const char* date;
        const char* amount;
        QString dateProblem, amountProblem;
    } rows[] = {
        {"2025-02-30", "5", notADate, ""},
        {"31/03/2027", "5", notADate, ""},
        {"", "5", notADate, ""}, // an amount needs a date
        {"2025-06-01", "12,5x", "", "Not a number"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.date) + " " + row.amount);
        screen->dateChanged(1, row.date);
        screen->amountChanged(1, row.amount);
        EXPECT_EQ(screen->dateProblem(1), row.dateProblem);
        EXPECT_EQ(screen->amountProblem(1), row.amountProblem);
        const QModelIndex cell = screen->rows()->index(1);
        EXPECT_EQ(cell.data(DatedCashFlowRows::DateProblemRole).toString(), row.dateProblem);
        EXPECT_EQ(cell.data(DatedCashFlowRows::AmountProblemRole).toString(), row.amountProblem);
        EXPECT_TRUE(std::isnan(m.xirr));
        EXPECT_TRUE(std::isnan(m.xnpv));
        const QString note = "Cash flow 1 cannot be read. " + row.dateProblem + row.amountProblem;
        EXPECT_EQ(m.note("xirr"), note);
        EXPECT_EQ(view->note("xnpvLabel"), note);
        EXPECT_EQ(view->text("xirrLabel"), "NaN%");
    }
    screen->dateChanged(0, "2025-13-01");
    EXPECT_EQ(m.note("xirr"), "Cash flow 0 and 1 more cannot be read. " + notADate);
    screen->sendReportRequestedNotification("");
    EXPECT_TRUE(reportBody().endsWith("XIRR: NaN%\nCash flow 0 and 1 more cannot be read. " +
                                      notADate + "\n"))
        << reportBody().toStdString();

    // Emptied again, the row is no flow; a rate that cannot be read blanks
    // only XNPV.
    screen->dateChanged(0, "2025-01-01");
    screen->dateChanged(1, "");
    screen->amountChanged(1, " ");
    EXPECT_NEAR(m.xirr, 10, 1e-9);
    type("rateField", "10 %");
    EXPECT_TRUE(std::isnan(m.xnpv));
    EXPECT_EQ(view->note("xnpvLabel"), "The rate cannot be read. Not a number");
    EXPECT_NEAR(m.xirr, 10, 1e-9);

    // Up to 10,000 rows; the list shows as many.
    type("rowCountField", "10000");
    EXPECT_EQ(screen->rowCount(), 10000);
    EXPECT_EQ(screen->rows()->rowCount(), 10000);
    type("rowCountField", "10001");
    EXPECT_EQ(screen->rowCount(), 10000);
    type("rowCountField", "3");
    EXPECT_EQ(screen->rows()->rowCount(), 3);
}

} // namespace
