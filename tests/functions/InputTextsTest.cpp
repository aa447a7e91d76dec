// Every calculator screen gives its inputs as texts (inputTexts) and takes
// them back (restoreInputs): a screen made anew from the texts of another
// shows the same inputs and results; the order of restoring keeps what
// follows what; stored texts that cannot all be put back are told line by
// line while the rest still is. Screens are made from the registry.
#include "TestSupport.h"
#include "framework/CalculatorRegistry.h"

#include <cmath>

namespace {

class InputTexts : public HomeTest {
protected:
    std::unique_ptr<QVFunctionController> open(const QString& name)
    {
        std::unique_ptr<QVFunctionController> screen = CalculatorRegistry::find(name)->create();
        screen->setPresenter(&presenter);
        return screen;
    }

    // The calculator's worked example, entered as a user would.
    static void enterExample(const CalculatorDescription& d, QVFunctionController& screen)
    {
        for (const ExampleStep& step : d.exampleSteps()) {
            ASSERT_NE(step.kind, ExampleStep::Kind::Unknown) << step.value.toStdString();
            if (step.kind == ExampleStep::Kind::Solve)
                screen.solve(step.value);
            else if (step.kind == ExampleStep::Kind::Table)
                ASSERT_TRUE(screen.setTableInput(step.field->key, step.value.split(u',')));
            else if (step.kind == ExampleStep::Kind::Choice)
                ASSERT_TRUE(screen.chooseWord(step.field->outlet, step.value));
            else
                screen.editField(step.field->outlet, local(step.value.toLatin1().constData()));
        }
    }

    // What a screen shows and computed: every outlet's text and note, and
    // every result of its description (NaN written out, so that NaN equals
    // NaN).
    static std::string shownBy(const CalculatorDescription& d, const QVFunctionController& screen)
    {
        QStringList lines;
        const QVFunctionView* view = screen.qvFunctionView();
        const QVariantMap texts = view->texts();
        for (auto it = texts.cbegin(); it != texts.cend(); ++it)
            lines << it.key() + QStringLiteral(" = ") + it->toString();
        const QVariantMap notes = view->notes();
        for (auto it = notes.cbegin(); it != notes.cend(); ++it)
            lines << it.key() + QStringLiteral(" note ") + it->toString();
        for (const ResultDescription& result : d.results) {
            const QVariant value = screen.model()->property(result.key.toLatin1().constData());
            lines << result.key + QStringLiteral(" is ") +
                         (value.typeId() == QMetaType::Double
                              ? QString::number(value.toDouble(), 'g', 17)
                              : value.toString());
        }
        return joined(lines);
    }

    // Lines as one text, for readable failures.
    static std::string joined(const QStringList& lines) { return lines.join(u'\n').toStdString(); }

    // A map of texts, one line per key, for readable failures.
    static std::string lines(const QVariantMap& inputs)
    {
        QStringList all;
        for (auto it = inputs.cbegin(); it != inputs.cend(); ++it)
            all << it.key() + QStringLiteral(": ") +
                       (it->typeId() == QMetaType::QStringList
                            ? QLatin1Char('[') + it->toStringList().join(u'|') + QLatin1Char(']')
                            : it->toString());
        return joined(all);
    }

    ScriptedPresenter presenter;
};

// Each calculator's worked example, taken as texts and put into a new
// screen, gives that screen the same inputs, texts, notes and results,
// without a sheet or a line about anything left out. The first screen goes
// before the second is made: screens with tables hear each other's
// notifications.
TEST_F(InputTexts, EveryCalculatorComesBackWholeFromItsTexts)
{
    for (const CalculatorDescription* d : CalculatorRegistry::calculators()) {
        SCOPED_TRACE(d->name.toStdString());
        QVariantMap inputs;
        std::string shown;
        {
            std::unique_ptr<QVFunctionController> first = open(d->name);
            enterExample(*d, *first);
            inputs = first->inputTexts();
            shown = shownBy(*d, *first);
        }
        // Every input is there, the tables as lists of texts.
        std::unique_ptr<QVFunctionController> second = open(d->name);
        for (const FunctionInput& input : second->inputs())
            EXPECT_EQ(inputs.value(input.property).typeId(), QMetaType::QString)
                << input.property.toStdString();
        for (const TableInput& table : second->tableInputs())
            EXPECT_FALSE(inputs.value(table.property).toStringList().isEmpty())
                << table.property.toStdString();
        EXPECT_EQ(inputs.contains(QVFunctionController::solveKey),
                  d->example.contains(QStringLiteral("--solve")));

        presenter.requests.clear();
        EXPECT_EQ(joined(second->restoreInputs(inputs)), "");
        EXPECT_TRUE(presenter.requests.empty()) << "no sheet is shown";
        EXPECT_EQ(lines(second->inputTexts()), lines(inputs));
        EXPECT_EQ(shownBy(*d, *second), shown);
    }
}

// Restoring keeps what follows what: the amortization's compounding
// follows its payments until it is chosen on its own, on the new screen as
// on the old; a row count typed after its table shows as many rows as it
// did, and the rows kept hidden beyond it come back when it grows, as they
// would have on the old screen; a fractional period takes the rate of a row
// its table does not show.
TEST_F(InputTexts, RestoringKeepsWhatFollowsWhat)
{
    const auto copy = [this](const QString& name, const QVariantMap& inputs) {
        std::unique_ptr<QVFunctionController> screen = open(name);
        EXPECT_EQ(joined(screen->restoreInputs(inputs)), "");
        EXPECT_EQ(lines(screen->inputTexts()), lines(inputs));
        return screen;
    };
    const QString loan = QStringLiteral("amortization");
    const QString payments = QStringLiteral("paymentsPerYearButton");
    const QString compounding = QStringLiteral("compoundingPerYearButton");
    for (const bool chosenOnItsOwn : {false, true}) {
        SCOPED_TRACE(chosenOnItsOwn ? "compounding chosen" : "compounding following");
        QVariantMap inputs;
        {
            std::unique_ptr<QVFunctionController> first = open(loan);
            first->editField(QStringLiteral("loanAmountField"), QStringLiteral("100000"));
            ASSERT_TRUE(first->chooseWord(payments, QStringLiteral("Quarterly")));
            if (chosenOnItsOwn) {
                ASSERT_TRUE(first->chooseWord(compounding, QStringLiteral("Monthly")));
            }
            inputs = first->inputTexts();
        }
        std::unique_ptr<QVFunctionController> second = copy(loan, inputs);
        const QVFunctionView* view = second->qvFunctionView();
        EXPECT_EQ(view->text(compounding), chosenOnItsOwn ? "Monthly" : "Quarterly");
        ASSERT_TRUE(second->chooseWord(payments, QStringLiteral("Annually")));
        EXPECT_EQ(view->text(compounding), chosenOnItsOwn ? "Monthly" : "Annually");
        EXPECT_EQ(second->model()->property("compoundingPerYear").toDouble(),
                  chosenOnItsOwn ? 12 : 1);
    }

    // The NPV of -1000, 300, 400, 500, 600 at 10 %: over five flows
    // 388.77 (-1000 + 300/1.1 + 400/1.21 + 500/1.331 + 600/1.4641), over
    // the first three -396.69.
    const QString npv = QStringLiteral("npv");
    QVariantMap flows;
    {
        std::unique_ptr<QVFunctionController> first = open(npv);
        first->editField(QStringLiteral("periodField"), QStringLiteral("5"));
        first->editField(QStringLiteral("discountRateField"), QStringLiteral("10"));
        first->setTableInput(QStringLiteral("cashArray"), {"-1000", "300", "400", "500", "600"});
        first->editField(QStringLiteral("periodField"), QStringLiteral("3"));
        flows = first->inputTexts();
    }
    EXPECT_EQ(flows.value(QStringLiteral("cashArray")).toStringList().size(), 5);
    std::unique_ptr<QVFunctionController> second = copy(npv, flows);
    EXPECT_NEAR(second->model()->property("npv").toDouble(), -396.694, 1e-3);
    second->editField(QStringLiteral("periodField"), QStringLiteral("5"));
    EXPECT_NEAR(second->model()->property("npv").toDouble(), 388.771, 1e-3);
    second.reset();

    // Five dated flows, then two rows: the hidden three come back at five.
    const QString dated = QStringLiteral("dated-cash-flows");
    QVariantMap rows;
    QString xnpvOfFive;
    {
        std::unique_ptr<QVFunctionController> first = open(dated);
        first->editField(QStringLiteral("rateField"), QStringLiteral("9"));
        first->setTableInput(QStringLiteral("dates"), {"2008-01-01", "2008-03-01", "2008-10-30",
                                                       "2009-02-15", "2009-04-01"});
        first->setTableInput(QStringLiteral("amounts"), {"-10000", "2750", "4250", "3250", "2750"});
        xnpvOfFive = first->qvFunctionView()->text(QStringLiteral("xnpvLabel"));
        first->editField(QStringLiteral("rowCountField"), QStringLiteral("2"));
        rows = first->inputTexts();
    }
    second = copy(dated, rows);
    EXPECT_EQ(second->property("rowCount").toInt(), 2);
    second->editField(QStringLiteral("rowCountField"), QStringLiteral("5"));
    EXPECT_EQ(second->qvFunctionView()->text(QStringLiteral("xnpvLabel")), xnpvOfFive);
    second.reset();

    // 2.5 periods: D1 = 2.2, D2 = 2.42, D3 = 2.662, each discounted at 10 %
    // (the third row, hidden at 2.5, counts): 2 + 2 + 2 = 6.
    const QString growth = QStringLiteral("nonconst-growth");
    QVariantMap rates;
    {
        std::unique_ptr<QVFunctionController> first = open(growth);
        first->editField(QStringLiteral("dividendField"), QStringLiteral("2"));
        first->editField(QStringLiteral("periodField"), QStringLiteral("3"));
        first->setTableInput(QStringLiteral("return-rate"), {"10", "10", "10"});
        first->setTableInput(QStringLiteral("growth-rate"), {"10", "10", "10"});
        first->editField(QStringLiteral("periodField"), local("2.5"));
        rates = first->inputTexts();
    }
    second = copy(growth, rates);
    EXPECT_NEAR(second->model()->property("price").toDouble(), 6, 1e-12);
}

// Stored texts that do not fit the calculator: each is told in one line and
// skipped, and everything else is still put back. A text that cannot be
// read is typed all the same (the screen marks it); an archive's list of
// texts fills a table as a string list does.
TEST_F(InputTexts, WhatCannotBePutBackIsToldAndTheRestIsRestored)
{
    QStringList tooMany;
    for (int k = 1; k <= 601; ++k)
        tooMany << QStringLiteral("%1:10").arg(k);
    std::unique_ptr<QVFunctionController> loan = open(QStringLiteral("amortization"));
    const std::string told = joined(loan->restoreInputs({
        {"foo", "1"},
        {"paymentsPerYear", "Hourly"},
        {"loanAmount", QStringList{"200000"}},
        {"annualRate", "6.5"},
        {"years", "thirty"},
        {"paymentMode", "BEG"},
        {"extraPayments", tooMany},
        {"rateChanges", "61:5.75"},
        {"--solve", "bogus"},
    }));
    EXPECT_EQ(told, joined({
                        "No input \"foo\" in this calculator.",
                        "extraPayments takes at most 600 rows: the other 1 were left out.",
                        "rateChanges was not kept as a list of texts; it was left as it is.",
                        "Loan amount was not kept as a text; it was left as it is.",
                        "\"Hourly\" is not one of the words of Payments.",
                        "\"bogus\" is not one of the compute buttons of this calculator.",
                    }));
    const QVFunctionView* view = loan->qvFunctionView();
    EXPECT_EQ(view->text("annualRateField"), "6.5");
    EXPECT_EQ(view->text("yearsField"), "thirty");
    EXPECT_EQ(view->text("paymentModeButton"), "BEG");
    EXPECT_EQ(view->text("paymentsPerYearButton"), "Monthly");
    EXPECT_EQ(loan->tableTexts("extraPayments").size(), 600);
    EXPECT_TRUE(std::isnan(loan->model()->property("totalInterest").toDouble()));
    EXPECT_TRUE(view->note("totalInterestLabel").startsWith("Term (years) cannot be read"))
        << view->note("totalInterestLabel").toStdString();
    loan.reset();

    std::unique_ptr<QVFunctionController> npv = open(QStringLiteral("npv"));
    EXPECT_EQ(joined(npv->restoreInputs({{"period", "2"},
                                         {"discountRate", "10"},
                                         {"cashArray", QVariantList{"-100", "110"}},
                                         {"--solve", "PV"}})),
              "\"PV\" is not one of the compute buttons of this calculator.");
    EXPECT_NEAR(npv->model()->property("npv").toDouble(), 0, 1e-12) << "-100 + 110 / 1.1";
    EXPECT_EQ(joined(npv->restoreInputs({{"cashArray", QVariantList{"-100", 110}}})),
              "cashArray was not kept as a list of texts; it was left as it is.");
    EXPECT_EQ(joined(npv->tableTexts("cashArray")), "-100\n110");
    EXPECT_TRUE(presenter.requests.empty());
}

// A word is chosen without its sheet, as its sheet would choose it; a word
// the sheet does not offer, or an outlet that is no choice, changes
// nothing. The dividend type's own sheet still offers its two types without
// "Cancel".
TEST_F(InputTexts, AWordIsChosenWithoutItsSheet)
{
    std::unique_ptr<QVFunctionController> stock = open(QStringLiteral("const-growth"));
    const QString button = QStringLiteral("dividendTypeButton");
    stock->editField(QStringLiteral("dividendField"), QStringLiteral("2"));
    stock->editField(QStringLiteral("returnRateField"), QStringLiteral("10"));
    stock->editField(QStringLiteral("growthRateField"), QStringLiteral("5"));
    EXPECT_FALSE(stock->chooseWord(button, QStringLiteral("Cancel")));
    EXPECT_FALSE(stock->chooseWord(QStringLiteral("dividendField"), QStringLiteral("Next (D1)")));
    EXPECT_EQ(stock->qvFunctionView()->text(button), "Choose");
    EXPECT_TRUE(stock->chooseWord(button, QStringLiteral("Next (D1)")));
    EXPECT_EQ(stock->qvFunctionView()->text(button), "Next (D1)");
    // D1 / (r - g) = 2 / 0.05.
    EXPECT_NEAR(stock->model()->property("price").toDouble(), 40, 1e-12);
    EXPECT_TRUE(presenter.requests.empty());

    presenter.script({{"Current (D0)", ""}});
    stock->openChoice(button);
    ASSERT_EQ(presenter.requests.size(), 1u);
    EXPECT_EQ(joined(shown(presenter.requests.front())),
              joined({"Dividend Type", "Please choose a type for dividends.", "Current (D0)",
                      "Next (D1)"}));
    // D0 (1 + g) / (r - g) = 2.1 / 0.05.
    EXPECT_NEAR(stock->model()->property("price").toDouble(), 42, 1e-12);
}

} // namespace
