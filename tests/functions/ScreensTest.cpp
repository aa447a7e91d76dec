// The calculator screens as their QML drives them, for what is no table of
// inputs and results (those are cases in tests/vectors): staleness after
// "±", charts, choice sheets, tables that follow their period, texts that
// cannot be read, the files a screen writes, and screens that affect each
// other. Screens are made from the registry and driven through the
// controllers' QML surface.
#include "TestSupport.h"
#include "charts/ChartPicture.h"
#include "charts/MultiLineGraphDataSource.h"
#include "framework/CalculatorRegistry.h"
#include "framework/FunctionTableModel.h"
#include "framework/QVChartController.h"
#include "functions/amortization/AmortizationController.h"
#include "functions/amortization/AmortizationModel.h"
#include "functions/datedcashflows/DatedCashFlowsController.h"
#include "functions/depreciation/DepreciationModel.h"
#include "functions/expreturn/ExpReturnTableController.h"
#include "functions/noncgrowth/GrowthTableController.h"
#include "functions/npv/NpvTableController.h"
#include "functions/npv/NpvTableModel.h"
#include "functions/statistics/StatisticsController.h"
#include "platform/Services.h"
#include "reports/ReportComparison.h"
#include "reports/ReportDetailController.h"
#include "reports/ReportTableModel.h"
#include "store/ReportStore.h"
#include "support/OwnConnection.h"

#include <QCborMap>
#include <QCborValue>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSet>
#include <QSignalSpy>
#include <cmath>
#include <cstring>

namespace {

class Screens : public HomeTest {
protected:
    QVFunctionController* open(const char* name)
    {
        screen = CalculatorRegistry::find(QLatin1String(name))->create();
        screen->setPresenter(&presenter);
        view = screen->qvFunctionView();
        return screen.get();
    }
    void type(const QString& outlet, const QString& text) { screen->editField(outlet, text); }
    void fill(std::initializer_list<std::pair<const char*, QString>> fields)
    {
        for (const auto& [outlet, text] : fields)
            type(QLatin1String(outlet), text);
    }
    void choose(const QString& outlet, const QString& word)
    {
        presenter.script({{word, ""}});
        screen->openChoice(outlet);
    }
    QString text(const QString& outlet) const { return view->text(outlet); }
    double value(const char* property) const
    {
        return screen->model()->property(property).toDouble();
    }
    template <typename Table> Table* table() const
    {
        return qobject_cast<Table*>(screen->property("table").value<QObject*>());
    }
    bool chartShown() const { return screen->property("chartShown").toBool(); }
    const MultiLineGraphDataSource& chart() const
    {
        return *dynamic_cast<MultiLineGraphDataSource*>(
            static_cast<QVChartController*>(screen.get())->chartDataSource());
    }
    void setChartSize(QSize size)
    {
        QMetaObject::invokeMethod(screen.get(), "setChartSize", Q_ARG(QSize, size));
    }

    ScriptedPresenter presenter;
    std::unique_ptr<QVFunctionController> screen;
    QVFunctionView* view = nullptr;
};

// "±" changes a text without recomputing: the results show as stale until
// the flipped value is taken in (by any edit on forms that read every
// field, by an edit of that field on screens whose fields each update only
// their own value); screens that solve on a button never go stale.
TEST_F(Screens, AFlippedSignLeavesTheResultsStaleUntilItIsTakenIn)
{
    open("roi");
    EXPECT_TRUE(text("gainResultLabel").isEmpty()) << "nothing shown before an edit";
    fill({{"investmentField", "100"}, {"futureValueField", "150"}, {"yearsField", "1"}});
    QSignalSpy staleness(view, &QVFunctionView::staleChanged);
    screen->signFlipped("futureValueField", "-150");
    EXPECT_EQ(text("futureValueField"), "-150");
    EXPECT_EQ(text("gainResultLabel"), "50") << "until the next edit";
    EXPECT_TRUE(view->stale());
    type("yearsField", "2");
    EXPECT_EQ(text("gainResultLabel"), "-250");
    EXPECT_FALSE(view->stale());
    EXPECT_EQ(staleness.count(), 2);

    open("npv");
    fill({{"periodField", "2"}, {"discountRateField", "10"}});
    ASSERT_TRUE(screen->setTableInput("cashArray", {"-100", "110"}));
    screen->signFlipped("discountRateField", "-10");
    type("periodField", "2");
    EXPECT_TRUE(view->stale()) << "the period edit recomputed with the old rate";
    EXPECT_EQ(text("npvResultLabel"), "0");
    type("discountRateField", "-10");
    EXPECT_FALSE(view->stale());
    EXPECT_EQ(text("npvResultLabel"), local("22.222")) << "-100 + 110 / 0.9";
    screen->cellSignFlipped("cashField1");
    screen->cellEdited("cashField0");
    EXPECT_TRUE(view->stale());
    screen->cellEdited("cashField1");
    EXPECT_FALSE(view->stale());
    // A flipped period is no period edit: the next edit, of the rate, is the
    // rate's, and the period stays.
    screen->signFlipped("periodField", "-2");
    type("discountRateField", "5");
    EXPECT_EQ(value("discountRate"), 5);
    EXPECT_EQ(value("period"), 2);
    EXPECT_EQ(text("npvResultLabel"), local("4.762"));

    open("nonconst-growth");
    fill({{"periodField", "2"}, {"dividendField", "1"}});
    screen->signFlipped("periodField", "-2");
    type("dividendField", "2");
    EXPECT_EQ(value("dividend"), 2) << "the dividend edit is no period edit";
    EXPECT_EQ(value("period"), 2);

    open("tvm");
    screen->signFlipped("pvField", "-250000");
    EXPECT_FALSE(view->stale()) << "only a button solves here";
}

// Every choice of every calculator offers the words of its description and
// shows the word chosen; a sheet closed without a word changes nothing.
// The bond's and compound interest's sheets ask for a review each time.
TEST_F(Screens, ChoiceSheetsOfferTheirWordsAndCancelChangesNothing)
{
    for (const CalculatorDescription* calculator : CalculatorRegistry::calculators()) {
        for (const FieldDescription& field : calculator->fields) {
            if (field.kind != FieldDescription::Kind::Choice)
                continue;
            SCOPED_TRACE((calculator->name + " " + field.outlet).toStdString());
            open(calculator->name.toLatin1().constData());
            QStringList words = field.words;
            words.sort();
            for (const QString& word : field.words) {
                choose(field.outlet, word);
                QStringList offered;
                for (const AlertAction& action : presenter.requests.back().actions) {
                    if (!action.cancel)
                        offered << action.title;
                }
                offered.sort();
                EXPECT_EQ(offered, words) << word.toStdString();
                EXPECT_EQ(text(field.outlet), word);
            }
            const QString shown = text(field.outlet);
            choose(field.outlet, "Cancel");
            choose(field.outlet, "");
            EXPECT_EQ(text(field.outlet), shown);
        }
    }
    auto& review = static_cast<CountingReviewPrompt&>(Services::reviewPrompt());
    for (const auto& [name, outlet] :
         {std::pair("bond", "frequencyButton"), std::pair("cmp", "modeButton")}) {
        open(name);
        const int before = review.requestCount();
        choose(outlet, "Cancel");
        choose(outlet, "Cancel");
        EXPECT_EQ(review.requestCount(), before + 2) << name;
    }
}

// The tables show as many rows as the period, keep the values of rows the
// period hides, show zeros as empty cells, and ignore a period they cannot
// take (unreadable text, 0, 100 or more).
TEST_F(Screens, TablesFollowTheirPeriodAndKeepHiddenRows)
{
    open("npv");
    auto* cash = table<NpvTableController>();
    const std::pair<QString, int> edits[] = {{"abc", 4},        {"3", 3},    {"12 months", 3},
                                             {" 12 ", 12},      {"100", 12}, {"0", 12},
                                             {local("2.5"), 2}, {"5", 5}};
    for (const auto& [period, rows] : edits) {
        type("periodField", period);
        EXPECT_EQ(cash->leftLabelTexts().size(), rows) << period.toStdString();
        EXPECT_EQ(value("period"), rows) << period.toStdString();
    }
    ASSERT_TRUE(screen->setTableInput("cashArray", {"-1000", "300", "0", "500", "600"}));
    type("periodField", "4");
    EXPECT_EQ(cash->fieldTexts(), QStringList({"-1000", "300", "", "500"}));
    type("periodField", "6");
    EXPECT_EQ(cash->fieldTexts(), QStringList({"-1000", "300", "", "500", "600", ""}));

    open("expected-return");
    auto* states = table<ExpReturnTableController>();
    for (const auto& [period, rows] :
         {std::pair("3", 3), std::pair("abc", 3), std::pair("99", 99)}) {
        type("periodField", period);
        EXPECT_EQ(states->stateLabelTexts().size(), rows) << period;
    }
    EXPECT_EQ(states->stateLabelTexts().last(), "99");

    open("nonconst-growth");
    auto* growth = table<GrowthTableController>();
    for (const auto& [period, rows] :
         {std::pair(local("2.9"), 2), std::pair(QString("abc"), 2), std::pair(local("0.5"), 0)}) {
        type("periodField", period);
        EXPECT_EQ(growth->yearLabelTexts().size(), rows) << period.toStdString();
    }
}

// Cells read by the fields' rule, counting what they cannot read as 0;
// edits of rows outside a table change nothing; a table takes at most its
// rows.
TEST_F(Screens, CellsAndRowsOutsideATableNeverBreakIt)
{
    open("npv");
    auto* cash = table<NpvTableController>();
    ASSERT_TRUE(screen->setTableInput("cashArray", {"-100", "", "abc", "1e9x"}));
    cash->fieldChanged(1, "25abc");
    cash->fieldChanged(-1, "5");
    cash->fieldChanged(100, "5");
    EXPECT_EQ(screen->model()->property("cashArray").value<QList<double>>().mid(0, 4),
              QList<double>({-100, 0, 0, 0}));
    cash->fieldChanged(3, overflowing());
    EXPECT_EQ(text("npvResultLabel"), "Infinity");
    EXPECT_EQ(cash->fieldText(3), "Infinity") << "and it reads back";
    EXPECT_EQ(cash->fieldText(100000), "");
    EXPECT_FALSE(screen->setTableInput("cashArray", QStringList(101, "1")));
    EXPECT_FALSE(screen->setTableInput("probability", {"1"}));

    open("expected-return");
    auto* states = table<ExpReturnTableController>();
    states->stockBChanged(0, "7");
    states->stockBChanged(0, "25%");
    states->stockAChanged(100, "5");
    EXPECT_EQ(states->stockBText(0), "") << "\"25%\" is unreadable: 0";
    EXPECT_EQ(states->stockAText(100000), "");

    open("nonconst-growth");
    auto* growth = table<GrowthTableController>();
    growth->returnRateChanged(0, local("0.08"));
    growth->growthRateChanged(-1, "5");
    EXPECT_EQ(screen->model()->property("returnRate").value<QList<double>>().value(0), 0.08)
        << "a fraction is taken as percent";
}

// A value the screen cannot read blanks the results that need it, and the
// note under them names it; the others stay.
TEST_F(Screens, ATextThatCannotBeReadBlanksWhatDependsOnIt)
{
    open("rate-conversion");
    fill({{"nominalRateField", "6"}, {"compoundingPerYearField", "twelve"}});
    screen->solve("effectiveRate");
    EXPECT_EQ(text("effectiveRateField"), "NaN");
    EXPECT_EQ(view->note("effectiveRateField"),
              "The compoundings a year cannot be read. Not a number");
    EXPECT_EQ(text("continuousRateResultLabel"), local("6.184%")) << "e^0.06 - 1 needs no count";
    EXPECT_TRUE(view->note("continuousRateResultLabel").isEmpty());
    fill({{"nominalRateField", ""},
          {"effectiveRateField", "6%"},
          {"compoundingPerYearField", "12"}});
    screen->solve("nominalRate");
    for (const char* outlet : {"nominalRateField", "continuousRateResultLabel"})
        EXPECT_EQ(view->note(outlet), "The effective rate cannot be read. Not a number") << outlet;

    open("breakeven");
    fill({{"fixedCostField", "10000"},
          {"variableCostField", "15"},
          {"priceField", "4O"},
          {"profitField", "0"},
          {"quantityField", "?"}});
    screen->solve("quantity");
    EXPECT_EQ(text("quantityField"), "NaN");
    EXPECT_EQ(view->note("quantityField"), "Price per unit cannot be read. Not a number");
    type("priceField", "40");
    screen->solve("quantity");
    EXPECT_EQ(text("quantityField"), "400") << "(10000 + 0) / (40 - 15)";
    EXPECT_TRUE(view->note("quantityField").isEmpty());

    open("amortization");
    fill({{"loanAmountField", "200000"}, {"annualRateField", local("6.5")}, {"yearsField", "30"}});
    type("firstPaymentDateField", "2027-02-29");
    EXPECT_EQ(text("payoffDateLabel"), "");
    EXPECT_EQ(view->note("payoffDateLabel"),
              "The first payment date cannot be read. Not a date: use YYYY-MM-DD");
    type("firstPaymentDateField", "");
    EXPECT_TRUE(view->note("payoffDateLabel").isEmpty()) << "no date is no mistake";
    // Tallyvane's own calculators blank every result, naming the field, when
    // a number field cannot be read; the text comes back, so do they.
    type("extraPaymentField", "1OO");
    for (const char* outlet : {"paymentLabel", "totalInterestLabel", "lastPaymentLabel"}) {
        EXPECT_EQ(text(outlet), "NaN") << outlet;
        EXPECT_EQ(view->note(outlet),
                  "Extra principal with every payment cannot be read. Not a number")
            << outlet;
    }
    type("extraPaymentField", "");
    EXPECT_EQ(text("paymentLabel"), local("1264.14")) << "PMT(6.5%/12, 360, -200000)";
    EXPECT_TRUE(view->note("paymentLabel").isEmpty());
    // A word the model does not know is refused, never taken for END.
    auto* loan = static_cast<AmortizationModel*>(screen->model());
    loan->paymentMode = "MID";
    loan->calculateResult();
    EXPECT_TRUE(loan->schedule.isEmpty());
    EXPECT_TRUE(loan->notes().value("payment").contains("BEG or END"));

    // Nor is a depreciation method it does not know taken for straight
    // line: no schedule, and the note lists the methods it knows.
    open("depreciation");
    fill({{"costField", "100"}, {"salvageField", "10"}, {"lifeField", "5"}});
    auto* asset = static_cast<DepreciationModel*>(screen->model());
    ASSERT_FALSE(asset->schedule.isEmpty());
    asset->method = "VDB";
    asset->calculateResult();
    EXPECT_TRUE(asset->schedule.isEmpty());
    EXPECT_TRUE(std::isnan(asset->totalDepreciation));
    EXPECT_TRUE(asset->notes().value("totalDepreciation").contains("SL, SYD, DDB, DB"));

    // A dated cash flow that cannot be read is marked and blanks both
    // results, instead of being left out (the others alone would give a
    // different answer); a rate that cannot be read blanks only XNPV.
    auto* flows = static_cast<DatedCashFlowsController*>(open("dated-cash-flows"));
    type("rateField", "10");
    ASSERT_TRUE(screen->setTableInput("dates", {"2025-01-01", "", "2026-01-01"}));
    ASSERT_TRUE(screen->setTableInput("amounts", {"-100", "", "110"}));
    type("rowCountField", "3");
    EXPECT_EQ(text("xirrLabel"), "10%");
    const QString notADate = "Not a date: use YYYY-MM-DD";
    const struct {
        const char *date, *amount;
        QString dateProblem, amountProblem;
    } rows[] = {{"2025-02-30", "5", notADate, ""},
                {"31/03/2027", "5", notADate, ""},
                {"", "5", notADate, ""}, // an amount needs a date
                {"2025-06-01", "12,5x", "", "Not a number"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.date) + " " + row.amount);
        flows->dateChanged(1, row.date);
        flows->amountChanged(1, row.amount);
        // The list reads its cells' lines by role name, as QML does.
        const QAbstractListModel* list = flows->rows();
        const QModelIndex cell = list->index(1);
        EXPECT_EQ(cell.data(list->roleNames().key("dateProblem")).toString(), row.dateProblem);
        EXPECT_EQ(cell.data(list->roleNames().key("amountProblem")).toString(), row.amountProblem);
        EXPECT_EQ(text("xirrLabel"), "NaN%");
        EXPECT_EQ(view->note("xnpvLabel"),
                  "Cash flow 1 cannot be read. " + row.dateProblem + row.amountProblem);
    }
    flows->dateChanged(0, "2025-13-01");
    EXPECT_EQ(view->note("xirrLabel"), "Cash flow 0 and 1 more cannot be read. " + notADate);
    screen->sendReportRequestedNotification("");
    EXPECT_TRUE(screen->model()->report().contents.endsWith(
        "XIRR: NaN%\nCash flow 0 and 1 more cannot be read. " + notADate + "\n"));
    flows->dateChanged(0, "2025-01-01");
    flows->dateChanged(1, "");
    flows->amountChanged(1, " ");
    EXPECT_EQ(text("xirrLabel"), "10%") << "emptied again, the row is no flow";
    type("rateField", "10 %");
    EXPECT_EQ(view->note("xnpvLabel"), "The rate cannot be read. Not a number");
    EXPECT_EQ(text("xirrLabel"), "10%");
    // Up to 10,000 rows; the list shows as many.
    type("rowCountField", "10000");
    type("rowCountField", "10001");
    EXPECT_EQ(flows->rows()->rowCount(), 10000);
    type("rowCountField", "3");
    EXPECT_EQ(flows->rows()->rowCount(), 3);
}

// The dated cash flows keep what an edit leaves alone (each flow's years,
// the XIRR of unchanged flows): after every kind of edit the screen gives
// exactly what a new screen given the same texts at once gives, to the
// last bit, whichever root the search last found.
TEST_F(Screens, DatedCashFlowsEditedOneAtATimeGiveWhatTheyGiveAtOnce)
{
    auto* flows = static_cast<DatedCashFlowsController*>(open("dated-cash-flows"));
    QStringList dates, amounts;
    for (int row = 0; row < 40; ++row) {
        dates << QDate(2021, 3, 1).addDays(37 * row).toString(Qt::ISODate);
        amounts << (row == 0 ? "-5000" : QString::number(140 + row % 5));
    }
    type("rateField", "6");
    ASSERT_TRUE(screen->setTableInput("dates", dates));
    ASSERT_TRUE(screen->setTableInput("amounts", amounts));
    const auto atOnce = [this](const char* step) {
        SCOPED_TRACE(step);
        const auto* edited = static_cast<DatedCashFlowsController*>(screen.get());
        const std::unique_ptr<QVFunctionController> fresh =
            CalculatorRegistry::find("dated-cash-flows")->create();
        fresh->setPresenter(&presenter);
        fresh->editField("rateField", edited->qvFunctionView()->text("rateField"));
        ASSERT_TRUE(fresh->chooseWord("basisButton", edited->datedCashFlowsModel()->basis));
        ASSERT_TRUE(fresh->setTableInput("dates", edited->tableTexts("dates")));
        ASSERT_TRUE(fresh->setTableInput("amounts", edited->tableTexts("amounts")));
        fresh->editField("rowCountField", edited->qvFunctionView()->text("rowCountField"));
        const auto same = [](double a, double b) { return a == b || (a != a && b != b); };
        const auto* model = static_cast<const DatedCashFlowsModel*>(fresh->model());
        EXPECT_PRED2(same, value("xirr"), model->xirr);
        EXPECT_PRED2(same, value("xnpv"), model->xnpv);
        EXPECT_EQ(view->note("xirrLabel"), fresh->qvFunctionView()->note("xirrLabel"));
    };
    atOnce("entered");
    const double xirr = value("xirr");
    flows->amountChanged(20, "900");
    atOnce("an amount");
    EXPECT_GT(value("xirr"), xirr);
    flows->dateChanged(7, "2020-12-31"); // before the first flow: negative years
    atOnce("a date before the first");
    flows->dateChanged(0, "2021-02-01");
    atOnce("the first date");
    choose("basisButton", "30/360");
    atOnce("the basis");
    const double before = value("xirr");
    type("rateField", "7");
    atOnce("the rate");
    EXPECT_EQ(value("xirr"), before) << "the rate for XNPV plays no part in XIRR";
    flows->dateChanged(3, "");
    flows->amountChanged(3, "");
    atOnce("a row emptied: the flows after it move up");
    flows->amountChanged(0, "5000");
    atOnce("all of one sign");
    EXPECT_TRUE(std::isnan(value("xirr")));
    flows->amountChanged(0, "-5000");
    atOnce("back");
    type("rowCountField", "12");
    atOnce("fewer rows shown");
}

// The statistics screen keeps what each cell read as: after each edit,
// paste and change of locale it gives exactly what a new screen given the
// same texts at once gives.
TEST_F(Screens, StatisticsEditedOneAtATimeGiveWhatTheyGiveAtOnce)
{
    const QLocale process;
    const auto restore = qScopeGuard([process] { QLocale::setDefault(process); });
    QLocale::setDefault(QLocale::c());
    open("statistics");
    auto* statistics = static_cast<StatisticsController*>(screen.get());
    QStringList xs, ys;
    for (int row = 0; row < 30; ++row) {
        xs << QString::number(row);
        ys << QString::number(2 + 0.5 * row + (row * 7) % 5);
    }
    ASSERT_TRUE(screen->setTableInput("x", xs));
    ASSERT_TRUE(screen->setTableInput("y", ys));
    const auto atOnce = [this, statistics](const char* step) {
        SCOPED_TRACE(step);
        const std::unique_ptr<QVFunctionController> fresh =
            CalculatorRegistry::find("statistics")->create();
        ASSERT_TRUE(fresh->setTableInput("x", statistics->tableTexts("x")));
        ASSERT_TRUE(fresh->setTableInput("y", statistics->tableTexts("y")));
        fresh->editField("rowCountField", text("rowCountField"));
        for (const char* result : {"n", "meanY", "sumXY", "a", "b", "r"}) {
            const double edited = value(result);
            const double whole = fresh->model()->property(result).toDouble();
            EXPECT_TRUE(edited == whole || (std::isnan(edited) && std::isnan(whole)))
                << result << ": " << edited << " against " << whole;
        }
        EXPECT_EQ(view->note("nLabel"), fresh->qvFunctionView()->note("nLabel"));
        EXPECT_EQ(statistics->xProblem(4),
                  static_cast<StatisticsController*>(fresh.get())->xProblem(4));
    };
    atOnce("entered");
    statistics->yChanged(10, "40");
    atOnce("a y");
    statistics->xChanged(4, "2,5"); // no number with a "." locale
    atOnce("an x that cannot be read");
    EXPECT_EQ(statistics->xProblem(4), "Not a number");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    statistics->yChanged(11, "41");
    atOnce("the same text read in a \",\" locale");
    EXPECT_EQ(statistics->xProblem(4), "");
    statistics->yChanged(12, "");
    atOnce("a y emptied");
    statistics->pasteText("1\t2\n2\t4\n3\t7\n");
    atOnce("pasted over");
    EXPECT_EQ(value("n"), 3);
}

// A note that a text gave goes once the text is typed back: on every
// calculator, its worked example, then its first number field spoilt and
// typed back, leaves the notes it had.
TEST_F(Screens, ANoteGoesWhenItsTextIsTypedBack)
{
    const QList<const CalculatorDescription*> calculators = CalculatorRegistry::calculators();
    for (const CalculatorDescription* d : calculators) {
        SCOPED_TRACE(d->name.toStdString());
        open(d->name.toLatin1().constData());
        QString solve;
        const FieldDescription* first = nullptr;
        QString firstText;
        for (const ExampleStep& step : d->exampleSteps()) {
            ASSERT_NE(step.kind, ExampleStep::Kind::Unknown) << step.value.toStdString();
            if (step.kind == ExampleStep::Kind::Solve) {
                solve = step.value;
            } else if (step.kind == ExampleStep::Kind::Table) {
                screen->setTableInput(step.field->key, step.value.split(u','));
            } else if (step.kind == ExampleStep::Kind::Choice) {
                choose(step.field->outlet, step.value);
            } else {
                type(step.field->outlet, local(step.value.toLatin1().constData()));
                if (!first && step.field->kind != FieldDescription::Kind::Date &&
                    step.field->key != solve) {
                    first = step.field;
                    firstText = text(step.field->outlet);
                }
            }
        }
        const auto notes = [&] {
            if (!solve.isEmpty())
                screen->solve(solve);
            QStringList all;
            for (const FieldDescription& field : d->fields)
                all << view->note(field.outlet);
            for (const ResultDescription& result : d->results)
                all << view->note(result.outlet);
            return all;
        };
        const QStringList before = notes();
        ASSERT_NE(first, nullptr);
        type(first->outlet, "x");
        notes();
        type(first->outlet, firstText);
        EXPECT_EQ(notes(), before) << first->key.toStdString();
    }
}

// Each TVM solve charts its own quantity period by period, reaching the
// solved value at the last period; long terms are sampled over their whole
// length; solving N, or no periods, clears the chart.
TEST_F(Screens, ChartsFollowTheSolveAndTheResults)
{
    open("tvm");
    fill({{"pvField", "1000"}, {"interestField", "10"}, {"periodField", local("2.7")}});
    screen->solve("FV");
    EXPECT_TRUE(chartShown());
    EXPECT_EQ(chart().dataForXAxisWithLineNumber(0), QStringList({"0", "1", "2"}));
    auto line = chart().dataForYAxisWithLineNumber(0);
    ASSERT_EQ(line.size(), 2);
    EXPECT_NEAR(*line[0], 1100, 1e-9);
    EXPECT_NEAR(*line[1], 1210, 1e-9);
    for (const auto& [button, property] :
         {std::pair("PV", "presentValue"), std::pair("I/Y", "interestRate"),
          std::pair("PMT", "payment")}) {
        // 1000 grows to 1210 in two years at 10 %: the 1500 asks every
        // solve for a value other than its field's (a payment too).
        fill({{"pvField", "1000"},
              {"fvField", "1500"},
              {"interestField", "10"},
              {"periodField", "2"},
              {"pmtField", "0"}});
        screen->solve(button);
        EXPECT_EQ(chart().nameForTheLineWithLineNumber(0), button);
        line = chart().dataForYAxisWithLineNumber(0);
        ASSERT_EQ(line.size(), 2) << button;
        EXPECT_NEAR(*line.last(), value(property), 1e-9 * std::max(1.0, std::fabs(value(property))))
            << button;
        EXPECT_GT(std::fabs(value(property)), 1) << button;
    }
    screen->solve("N");
    EXPECT_FALSE(chartShown());
    fill({{"pvField", "100"}, {"interestField", "1"}, {"periodField", "0"}});
    screen->solve("FV");
    EXPECT_FALSE(chartShown()) << "no periods, no chart";
    for (const double periods : {3000.0, 1e9}) {
        type("periodField", typed(periods));
        screen->solve("FV");
        QStringList labels = chart().dataForXAxisWithLineNumber(0);
        line = chart().dataForYAxisWithLineNumber(0);
        ASSERT_EQ(line.size(), 1200);
        ASSERT_EQ(labels.size(), 1201);
        EXPECT_EQ(labels.first(), "0");
        EXPECT_EQ(labels.last(), typed(periods)) << "the chart reaches the last period";
        const double last = value("futureValue");
        EXPECT_TRUE(*line.last() == last || (std::isnan(*line.last()) && std::isnan(last)));
        EXPECT_EQ(labels.removeDuplicates(), 0);
    }

    // Compound interest: the balance at each year's end, the part year
    // ending with the term; at most 1,000 years.
    open("cmp");
    fill({{"principalAmountField", "1000"},
          {"annualRateField", "6"},
          {"periodField", local("2.5")},
          {"paymentField", "100"}});
    EXPECT_TRUE(chartShown());
    EXPECT_EQ(chart().dataForXAxisWithLineNumber(0), QStringList({"0", "1", "2", "3"}));
    line = chart().dataForYAxisWithLineNumber(0);
    ASSERT_EQ(line.size(), 4);
    EXPECT_EQ(*line[0], 1000);
    EXPECT_NEAR(*line[1], 2295.2340491544899, 1e-9) << "cmp.jsonl monthly-end";
    EXPECT_EQ(*line[3], value("balance"));
    type("periodField", typed(1e300));
    EXPECT_EQ(chart().dataForXAxisWithLineNumber(0).size(), 1001);

    // NPV against the rate, from 0 % to twice the rate (at least 20 %, and
    // 20 % when the rate is no number).
    open("npv");
    type("periodField", "2");
    ASSERT_TRUE(screen->setTableInput("cashArray", {"-100", "121"}));
    const QStringList x = chart().dataForXAxisWithLineNumber(0);
    ASSERT_EQ(x.size(), 11);
    EXPECT_EQ(x.first(), "0%");
    EXPECT_EQ(x.last(), "20%");
    line = chart().dataForYAxisWithLineNumber(0);
    EXPECT_NEAR(*line[5], 10, 1e-9) << "-100 + 121 / 1.1";
    for (const auto& [rate, last] :
         {std::pair(QString("30"), "60%"), std::pair(QString("Infinity"), "20%"),
          std::pair(typed(1e300), "1000%")}) {
        type("discountRateField", rate);
        EXPECT_EQ(chart().dataForXAxisWithLineNumber(0).last(), last) << rate.toStdString();
    }

    // Amortization: the balance and the interest paid so far at each year's
    // end; whole years from 100 on, at most 1,200 year ends, never one label
    // twice.
    open("amortization");
    choose("paymentsPerYearButton", "Monthly");
    fill({{"loanAmountField", "200000"}, {"annualRateField", local("6.5")}, {"yearsField", "30"}});
    EXPECT_TRUE(chartShown());
    EXPECT_EQ(*chart().dataForYAxisWithLineNumber(0).first(), 200000);
    EXPECT_EQ(*chart().dataForYAxisWithLineNumber(0).last(), 0);
    EXPECT_NEAR(*chart().dataForYAxisWithLineNumber(1).last(), value("totalInterest"), 1e-6);
    for (const auto& [years, frequency, count, last] :
         {std::tuple("150.25", "Monthly", 152, "150.25"), std::tuple("3", "Annually", 4, "3"),
          std::tuple("1000000", "Annually", 1201, "1000000")}) {
        choose("paymentsPerYearButton", frequency);
        fill({{"loanAmountField", "1000"}, {"annualRateField", "5"}, {"yearsField", years}});
        const QStringList labels = chart().dataForXAxisWithLineNumber(0);
        EXPECT_EQ(labels.size(), count) << years;
        EXPECT_EQ(labels.last(), last);
        EXPECT_EQ(QSet<QString>(labels.begin(), labels.end()).size(), labels.size()) << years;
    }
    EXPECT_EQ(chart().dataForXAxisWithLineNumber(0).at(100), "83333") << "over the whole loan";
    choose("paymentsPerYearButton", "Weekly");
    type("yearsField", "100000");
    EXPECT_FALSE(chartShown()) << "a term beyond any loan has no schedule";
}

// The mailed report carries the chart as drawn for the solve, even when the
// mode and frequency change after it; a saved one keeps it beside its text,
// and its PDF shows it.
TEST_F(Screens, ReportsCarryTheirChartsAndSchedulesSaveAsNewFiles)
{
    auto mail = std::make_shared<RecordingMailComposer>();
    Services::setMailComposer(mail);
    open("tvm");
    fill({{"pvField", "1000"}, {"pmtField", "500"}, {"interestField", "7"}, {"periodField", "10"}});
    setChartSize(QSize(300, 200));
    setChartSize(QSize(300, -16)); // hidden until the first solve
    screen->solve("FV");
    const auto drawn = chart().dataForYAxisWithLineNumber(0);
    const QByteArray expected = ChartPictures::encode(screen->reportChart(), "JPEG");
    choose("modeButton", "END");
    choose("frequencyButton", "Monthly");
    presenter.script({{"Send Email", ""}});
    screen->exportClicked();
    ASSERT_EQ(mail->messages.size(), 1u);
    ASSERT_EQ(mail->messages[0].attachments.size(), 2);
    EXPECT_EQ(mail->messages[0].attachments[1].data, expected);
    EXPECT_EQ(QImage::fromData(expected, "JPEG").size(), QSize(600, 400));
    EXPECT_EQ(chart().dataForYAxisWithLineNumber(0), drawn);

    ReportTableModel list; // the saved list exists before any save
    setChartSize(QSize(300, 200));
    screen->solve("FV");
    presenter.script({{"Save", ""}, {"OK", "Plan"}, {"OK", ""}});
    screen->exportClicked();
    ASSERT_EQ(presenter.requests.back().title, "Calculation Saved");
    const QDir documentsDir(documents());
    const QString name = screen->model()->report().fileName;
    EXPECT_EQ(QImage(documentsDir.filePath(QVFunctionController::chartPictureName(name))).size(),
              QSize(600, 400));
    ReportDetailController detail;
    ScriptedPresenter detailPresenter;
    detail.setPresenter(&detailPresenter);
    detail.setReportFilePath(documentsDir.filePath(name));
    detailPresenter.script({{"Save as PDF", ""}, {"OK", ""}});
    detail.actionClicked();
    QFile pdf(documentsDir.filePath(name.chopped(int(strlen("_report.txt"))) + "_report.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.readAll().contains("/Subtype /Image")) << "the chart is in the PDF";

    open("amortization");
    fill({{"loanAmountField", "200000"}, {"annualRateField", local("6.5")}, {"yearsField", "30"}});
    presenter.script({{"Send Email", ""}});
    screen->exportClicked();
    ASSERT_EQ(mail->messages.size(), 2u);
    ASSERT_EQ(mail->messages[1].attachments.size(), 2);
    EXPECT_EQ(QImage::fromData(mail->messages[1].attachments[1].data, "JPEG").size(),
              QSize(800, 600));

    // "Save as CSV" twice in one minute: two files, the second " (2)".
    open("depreciation");
    fill({{"costField", "10000"}, {"salvageField", "1000"}, {"lifeField", "5"}});
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

// The expected-return and nonconstant-growth screens share their period
// notifications: open at once, each table follows the other form's period,
// while each model keeps its own.
TEST_F(Screens, TheStockTablesFollowEachOthersPeriod)
{
    auto expReturn = CalculatorRegistry::find("expected-return")->create();
    auto growth = CalculatorRegistry::find("nonconst-growth")->create();
    const auto rowsOf = [](const QVFunctionController& screen, const char* labels) {
        return screen.property("table").value<QObject*>()->property(labels).toStringList().size();
    };
    expReturn->editField("periodField", "3");
    EXPECT_EQ(rowsOf(*growth, "yearLabelTexts"), 3);
    EXPECT_EQ(growth->model()->property("period").toDouble(), 4);
    growth->editField("periodField", "7");
    EXPECT_EQ(rowsOf(*expReturn, "stateLabelTexts"), 7);
    EXPECT_EQ(expReturn->model()->property("period").toInt(), 3);
    expReturn->sendReportRequestedNotification("");
    EXPECT_TRUE(expReturn->model()->report().contents.contains("Period: 3\n"));
}

// The catalogue's rows: the Functions list's calculators, then one row each
// for the stock, the loans, the bonds and the business lists; a title opens its
// calculator's screen.
TEST(FunctionCatalogue, EveryRowOpensItsScreen)
{
    FunctionTableModel catalogue;
    int functions = 0;
    for (const CalculatorDescription* calculator : CalculatorRegistry::calculators()) {
        if (calculator->entry.list != CatalogueEntry::List::Functions)
            continue;
        ++functions;
        EXPECT_EQ(FunctionTableModel::screenIdentifiersForTitle(calculator->entry.title),
                  QStringList{calculator->screen});
    }
    EXPECT_EQ(catalogue.rowCount(), functions + 4);
    EXPECT_EQ(FunctionTableModel::screenIdentifiersForTitle("Business and Statistics"),
              QStringList{"BusinessTableController"});
    EXPECT_TRUE(FunctionTableModel::screenIdentifiersForTitle("Tip calculator").isEmpty());
    EXPECT_EQ(FunctionTableModel::rowHeightForListHeight(630), 70);
    // Reports saved before they named their calculator carry a short label,
    // by which the list still finds the calculator's full name.
    EXPECT_EQ(CalculatorRegistry::findReportLabel("Npv")->name, "npv");
    EXPECT_EQ(CalculatorRegistry::findReportLabel("Cmp")->name, "cmp");
    EXPECT_EQ(CalculatorRegistry::findReportLabel("Nothing"), nullptr);
}

// The NPV calculation as one plain table (no screen shows it): the flows
// padded to the period, then the period, rate, flows and both results as
// rows. Values as in tests/vectors/npv.jsonl: -100 + 110 / 1.05 and 10 %.
TEST(NpvTableModel, RowsFollowThePeriod)
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
    ASSERT_EQ(table.tableArray.size(), 7);
    EXPECT_EQ(table.tableArray[0].intFieldValue, 3);
    EXPECT_EQ(table.tableArray[3].fieldValue, 110);
    EXPECT_TRUE(table.tableArray.last().fieldHidden);
    EXPECT_NEAR(table.tableArray[5].result, table.npv, 1e-12);
    EXPECT_NEAR(table.tableArray.last().result, 10, 1e-4);
    table.period = 1 << 30;
    table.calculateResults();
    EXPECT_EQ(table.cashArray.size(), NpvTableModel::maximumCashFlows);
}

} // namespace

// The amortization's event list as the screen edits it, the term worked out
// from a payment, and the schedule's lines with their year subtotals. The
// figures themselves are vector cases (tests/vectors/amortization.jsonl);
// here: that edits reach them, and that a text that cannot be read is marked
// and named rather than dropped.
TEST_F(Screens, AmortizationEventsTermAndScheduleLines)
{
    auto* loan = static_cast<AmortizationController*>(open("amortization"));
    fill({{"loanAmountField", "200000"},
          {"annualRateField", local("6.5")},
          {"yearsField", "30"},
          {"firstPaymentDateField", "2027-01-01"}});
    const QString plainInterest = text("totalInterestLabel");
    EXPECT_EQ(text("interestSavedLabel"), "0");

    // An extra payment added on the list, typed in, then spoilt: the row is
    // marked, every result is blank and says which event, as the command
    // line refuses the same text.
    loan->addEvent("Extra payment");
    QAbstractItemModel* events = loan->events();
    ASSERT_EQ(events->rowCount(), 1);
    loan->eventAtEdited(0, "13");
    loan->eventValueEdited(0, "5000");
    EXPECT_EQ(text("numberOfPaymentsLabel"), "336") << "as the vector extra-once-shorten-term";
    EXPECT_NE(text("totalInterestLabel"), plainInterest);
    loan->eventValueEdited(0, "5OOO");
    const QModelIndex row = events->index(0, 0);
    EXPECT_EQ(events->data(row, LoanEventList::ValueProblemRole).toString(), "Not a number");
    EXPECT_EQ(text("paymentLabel"), "NaN");
    EXPECT_EQ(view->note("aprLabel"), "Event 1 cannot be read. Not a number");
    loan->eventValueEdited(0, "5000");
    loan->eventAtEdited(0, "2028-01-15");
    EXPECT_EQ(text("numberOfPaymentsLabel"), "336") << "the first payment on or after it is 14";
    loan->eventAtEdited(0, "2070-01-01");
    EXPECT_EQ(view->note("paymentLabel"),
              "An extra payment on 2070-01-01 comes after the last payment.");

    // Its kind turned into a rate change; removed, the loan is as before.
    loan->eventAtEdited(0, "61");
    loan->eventKindChosen(0, "Rate change");
    loan->eventValueEdited(0, local("7.5"));
    EXPECT_TRUE(text("interestSavedLabel").startsWith('-')) << "a higher rate costs interest";
    loan->removeEvent(0);
    EXPECT_EQ(events->rowCount(), 0);
    EXPECT_EQ(text("totalInterestLabel"), plainInterest);

    // The command line's lists fill the same rows, kind by kind.
    ASSERT_TRUE(loan->setTableInput("extraPayments", {"13:5000", "25:5000"}));
    ASSERT_TRUE(loan->setTableInput("rateChanges", {"61:7.5"}));
    ASSERT_TRUE(loan->setTableInput("extraPayments", {"13:5000"}));
    EXPECT_EQ(events->rowCount(), 2) << "the extras replaced, the rate change kept";
    EXPECT_FALSE(loan->setTableInput("balloons", {"1:2"}));

    // The schedule's lines: each year's payments, then its subtotal, whose
    // sums are the year's (12 x 1264.14 + the extra; the balance the 12th's).
    ASSERT_EQ(loan->scheduleRowCount(), int(loan->amortizationModel()->schedule.size()) + 30);
    EXPECT_EQ(loan->scheduleRow(0).value("number"), "1");
    EXPECT_EQ(loan->scheduleRow(0).value("date"), "2027-01-01");
    EXPECT_EQ(loan->scheduleRow(12).value("kind"), "year");
    EXPECT_EQ(loan->scheduleRow(12).value("number"), "Year 1");
    EXPECT_EQ(loan->scheduleRow(12).value("balance"), loan->scheduleRow(11).value("balance"));
    EXPECT_EQ(loan->scheduleRow(25).value("payment"), local("20169.68")) << "12 x 1264.14 + 5000";
    EXPECT_EQ(loan->scheduleRow(25).value("extra"), local("5000.00"));
    EXPECT_EQ(loan->scheduleRow(13).value("event"), "Extra 5000.00");
    EXPECT_EQ(loan->scheduleRow(13).value("interest"), local("1071.22"));
    const QVariantMap last = loan->scheduleRow(loan->scheduleRowCount() - 1);
    EXPECT_EQ(last.value("kind"), "year") << "a part year ends with its subtotal too";
    EXPECT_EQ(last.value("balance"), local("0.00"));
    EXPECT_TRUE(loan->scheduleRow(loan->scheduleRowCount()).isEmpty());

    // The term from a payment: the term field is not needed then.
    QSignalSpy solving(loan, &AmortizationController::solvingTermChanged);
    loan->setTableInput("extraPayments", {});
    loan->setTableInput("rateChanges", {});
    type("yearsField", "");
    loan->solve("term");
    EXPECT_EQ(solving.count(), 1);
    EXPECT_EQ(view->note("paymentLabel"), "Enter the payment.");
    type("paymentField", "2500");
    EXPECT_EQ(text("numberOfPaymentsLabel"), "106") << "as the vector term-from-payment";
    EXPECT_EQ(text("paymentLabel"), "2500");
    loan->solve("payment");
    EXPECT_EQ(view->note("paymentLabel"), "Enter the term in years.");
}

// The saved report carries the schedule as a table: headers, a rule, each
// payment with two decimals lined up, the year subtotals and the events.
TEST_F(Screens, AmortizationReportCarriesTheSchedule)
{
    auto* loan = static_cast<AmortizationController*>(open("amortization"));
    fill({{"loanAmountField", "1000"},
          {"annualRateField", "12"},
          {"yearsField", "1"},
          {"firstPaymentDateField", "2027-01-31"}});
    loan->setTableInput("extraPayments", {"3:100"});
    loan->amortizationModel()->createReport({{"title", "Test"}});
    const QString report = loan->amortizationModel()->report().contents;
    const QStringList lines = report.split('\n');
    const qsizetype header = lines.indexOf(QRegularExpression("^No\\. +Date +Payment.*Event$"));
    ASSERT_GE(header, 0) << report.toStdString();
    EXPECT_TRUE(QRegularExpression("^-+( +-+){7}$").match(lines.at(header + 1)).hasMatch());
    // 1000 at 1 % a month over 12: PMT = 88.85, the first interest 10.00.
    EXPECT_EQ(lines.at(header + 2).simplified(),
              local("1 2027-01-31 88.85 10.00 78.85 0.00 921.15"));
    EXPECT_TRUE(lines.at(header + 4).endsWith("Extra 100.00"));
    EXPECT_TRUE(lines.at(header + 2).indexOf(local("88.85")) + 5 ==
                lines.at(header + 4).indexOf(local("188.85")) + 6)
        << "the amounts end in one column";
    EXPECT_TRUE(report.contains(QRegularExpression("\nYear 1 +[0-9]")));
    EXPECT_TRUE(report.contains("Extra Payments: 3:100\n"));
}

// A screen keeps its inputs when it goes and the next one of its kind opens
// with them (as after Back or a restart); Clear (forget) makes the next
// start from its defaults, and a kept state whose bytes were damaged is no
// state at all. The command line's screens, made directly, never recall.
TEST_F(Screens, ScreensRememberTheirInputsUntilCleared)
{
    ReportStore::createList();
    auto* loan = static_cast<AmortizationController*>(open("amortization"));
    fill({{"loanAmountField", "250000"}, {"yearsField", "25"}});
    loan->setTableInput("extraPayments", {"13:5000"});
    choose("paymentsPerYearButton", "Biweekly");
    const QVariantMap left = screen->inputTexts();
    const QString payments = text("numberOfPaymentsLabel");
    ASSERT_NE(payments, "NaN");
    screen->rememberInputs();

    open("amortization");
    EXPECT_EQ(text("loanAmountField"), "") << "made directly, a screen starts from defaults";
    screen->recallInputs();
    EXPECT_EQ(screen->inputTexts(), left);
    EXPECT_EQ(text("paymentsPerYearButton"), "Biweekly");
    EXPECT_EQ(text("numberOfPaymentsLabel"), payments) << "its results worked out again";

    screen->forgetInputs();
    screen->rememberInputs();
    open("amortization");
    screen->recallInputs();
    EXPECT_EQ(text("loanAmountField"), "") << "cleared";

    // A kept input this version has no field for is told when the screen
    // opens; the rest comes back.
    QCborMap stale;
    stale.insert(QStringLiteral("loanAmount"), QStringLiteral("90000"));
    stale.insert(QStringLiteral("balloonDate"), QStringLiteral("2030-01-01"));
    ASSERT_TRUE(ReportStore::keepScreenState("amortization", QCborValue(stale).toCbor()).ok());
    open("amortization");
    presenter.script({{"OK", ""}});
    screen->recallInputs();
    EXPECT_EQ(text("loanAmountField"), "90000");
    ASSERT_FALSE(presenter.requests.empty());
    EXPECT_EQ(presenter.requests.back().title, "Some inputs were not put back");
    EXPECT_EQ(presenter.requests.back().message, "No input \"balloonDate\" in this calculator.");

    // Damaged bytes under the right name read as no state.
    ASSERT_TRUE(ReportStore::keepScreenState("roi", "kept").ok());
    EXPECT_EQ(ReportStore::screenState("roi"), "kept");
    withOwnConnection(ReportStore::databasePath(), [](QSqlQuery& query) {
        EXPECT_TRUE(query.exec("UPDATE screens SET state = X'00FF' WHERE name = 'roi'"));
    });
    EXPECT_TRUE(ReportStore::screenState("roi").isEmpty());
    ASSERT_TRUE(ReportStore::forgetScreenStates().ok());
    EXPECT_TRUE(ReportStore::screenState("amortization").isEmpty());

    // Inputs that cannot be kept (another program holds the database) are
    // told, once a run, not lost in silence.
    open("roi");
    type("investmentField", "500");
    whileAnotherHoldsTheStore(100, [this] {
        presenter.script({{"OK", ""}});
        screen->rememberInputs();
    });
    ASSERT_FALSE(presenter.requests.empty());
    EXPECT_EQ(presenter.requests.back().title, "Inputs not kept");
    EXPECT_TRUE(presenter.requests.back().message.contains("locked"))
        << presenter.requests.back().message.toStdString();
}

// Keeping a screen's inputs in a home with no list yet makes the list, as
// the reports screen would, rather than failing.
TEST_F(Screens, KeepingAScreenMakesTheListFirst)
{
    ASSERT_FALSE(ReportStore::rows().has_value());
    ASSERT_TRUE(ReportStore::keepScreenState("tip", "kept").ok());
    EXPECT_TRUE(ReportStore::rows().has_value());
    EXPECT_EQ(ReportStore::screenState("tip"), "kept");
}

// A report that kept its inputs offers to open again in its calculator and
// to be duplicated: the copy has its own text file (the same text), the new
// title and the same inputs, and goes first in the list; a report saved
// before reports kept inputs offers neither.
TEST_F(Screens, AReportOpensAgainInItsCalculatorOrIsDuplicated)
{
    ReportStore::createList();
    open("roi");
    fill({{"investmentField", "1000"}, {"futureValueField", "1250"}, {"yearsField", "2"}});
    presenter.script({{"Save", ""}, {"OK", "Plan"}, {"OK", ""}});
    screen->exportClicked();
    ReportTableModel list;
    ASSERT_EQ(list.count(), 1);
    const QVReport saved = list.reportAt(0);
    ASSERT_EQ(saved.calculator, "roi");

    ReportDetailController detail;
    ScriptedPresenter detailPresenter;
    detail.setPresenter(&detailPresenter);
    detail.setReportFilePath(saved.filePathInDocumentsDirectory());
    EXPECT_EQ(detail.calculatorScreen(), "RoiController");
    QSignalSpy opened(&detail, &ReportDetailController::openInCalculatorRequested);
    detailPresenter.script({{"Open in Calculator", ""}});
    detail.actionClicked();
    ASSERT_EQ(opened.count(), 1);
    EXPECT_EQ(opened.at(0).at(0).toString(), "RoiController");
    EXPECT_EQ(opened.at(0).at(1).toMap(), saved.inputs);

    detailPresenter.script({{"Duplicate", ""}, {"OK", "Plan, what if"}});
    detail.actionClicked();
    list.loadReportArray();
    ASSERT_EQ(list.count(), 2);
    const QVReport copy = list.reportAt(0);
    EXPECT_EQ(copy.title, "Plan, what if");
    EXPECT_EQ(copy.inputs, saved.inputs);
    EXPECT_NE(copy.fileName, saved.fileName);
    EXPECT_EQ(readDocument(copy.fileName), readDocument(saved.fileName));

    // A record without inputs (as saved before) offers neither.
    QVReport old = saved;
    old.calculator.clear();
    old.fileName = "roi_old_report.txt";
    QFile file(documents() + "/" + old.fileName);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Financial Report - Return on Investment\n");
    file.close();
    ASSERT_TRUE(QVReport::saveReport(old).ok());
    detail.setReportFilePath(old.filePathInDocumentsDirectory());
    EXPECT_TRUE(detail.calculatorScreen().isEmpty());
    detailPresenter.script({{"Cancel", ""}});
    detail.actionClicked();
    QStringList offered;
    for (const AlertAction& action : detailPresenter.requests.back().actions)
        offered << action.title;
    EXPECT_EQ(offered, (QStringList{"Cancel", "Send Email", "Save as PDF"}));
}

// Two loans side by side: the inputs as stored, the results worked out
// again from them, the lines that differ marked, each result's difference
// from the first report; as CSV with "." whatever the locale. Reports of two
// calculators, or one without inputs, are refused with a line saying why.
TEST_F(Screens, TwoReportsOfOneCalculatorSideBySide)
{
    const auto loan = [](const QString& title, const QString& rate) {
        QVReport report;
        report.title = title;
        report.calculator = "amortization";
        report.inputs = {{"loanAmount", "100000"}, {"annualRate", rate}, {"years", "10"}};
        return report;
    };
    QString error;
    const std::optional<ReportComparison> comparison =
        ReportComparison::of({loan("A", "6"), loan("B", local("5.5"))}, &error);
    ASSERT_TRUE(comparison) << error.toStdString();
    EXPECT_EQ(comparison->titles, (QStringList{"A", "B"}));
    QMap<QString, ReportComparison::Line> lines;
    for (const ReportComparison::Line& line : comparison->lines)
        lines.insert(line.key, line);
    EXPECT_FALSE(lines.value("loanAmount").differs);
    EXPECT_TRUE(lines.value("annualRate").differs);
    EXPECT_FALSE(lines.contains("extraPayment")) << "empty in both: left out";
    // PMT(6%/12, 120, -100000) = 1110.21 and PMT(5.5%/12, 120, -100000) = 1085.26.
    EXPECT_EQ(lines.value("payment").values, (QStringList{local("1110.21"), local("1085.26")}));
    EXPECT_EQ(lines.value("payment").differences.value(1), local("-24.95"));
    EXPECT_TRUE(comparison->notes.isEmpty());
    const QByteArray csv = comparison->csv();
    EXPECT_TRUE(csv.startsWith("Report,A,B\r\n"));
    EXPECT_TRUE(csv.contains("\r\nPayment,1110.21,1085.26\r\n")) << csv.toStdString();
    EXPECT_TRUE(csv.contains("\r\nPayment: difference (B - A),,-24.95\r\n"));
    EXPECT_TRUE(comparison->text().contains(QRegularExpression("\\n\\* Annual interest rate")));

    QVReport other = loan("C", "6");
    other.calculator = "roi";
    EXPECT_FALSE(ReportComparison::of({loan("A", "6"), other}, &error));
    EXPECT_EQ(error, "Only reports of one calculator can be compared (\"A\" and \"C\" are not).");
    QVReport old = loan("D", "6");
    old.calculator.clear();
    EXPECT_FALSE(ReportComparison::of({loan("A", "6"), old}, &error));
    EXPECT_TRUE(error.contains("saved before reports kept their inputs"));
    EXPECT_FALSE(ReportComparison::of({loan("A", "6")}, &error));

    // A stored input this version has no field for is named, the rest used.
    QVReport extra = loan("E", "6");
    extra.inputs.insert("balloon", "12");
    const std::optional<ReportComparison> noted =
        ReportComparison::of({loan("A", "6"), extra}, &error);
    ASSERT_TRUE(noted);
    ASSERT_EQ(noted->notes.size(), 1);
    EXPECT_TRUE(noted->notes.first().startsWith("E: ")) << noted->notes.first().toStdString();
}
