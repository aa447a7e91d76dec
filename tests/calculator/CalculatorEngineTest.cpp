#include "TestSupport.h"
#include "calculator/CalculatorController.h"
#include "calculator/CalculatorHistoryModel.h"
#include "calculator/CalculatorKeypad.h"
#include "platform/Services.h"
#include "store/ReportStore.h"

#include <QSignalSpy>

namespace {

// Drives the engine the way the screen does: through the real keypad and
// its notifications.
class EngineTest : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        engine = std::make_unique<CalculatorController>();
        engine->setPresenter(&presenter);
    }

    // Each argument is a key title, or a run of characters typed one key
    // each.
    void keys(std::initializer_list<QString> presses) { pressKeys(keypad, presses); }

    QString display() const { return engine->displayNumber(); }
    QString label() const { return engine->resultLabel(); }
    const CalculatorModel& model() const { return engine->model(); }
    static int reviews()
    {
        return static_cast<CountingReviewPrompt&>(Services::reviewPrompt()).requestCount();
    }
    QStringList commands() const
    {
        QStringList out;
        for (const HistoryEntry& e : *engine->logArray())
            out << e.command;
        return out;
    }

    CalculatorKeypad keypad;
    ScriptedPresenter presenter;
    std::unique_ptr<CalculatorController> engine;
};

TEST_F(EngineTest, TypingAndEvaluatingExpressions)
{
    EXPECT_EQ(display(), "0");
    EXPECT_EQ(model().paymentFrequency, 1);
    EXPECT_EQ(model().compounding, 1);
    EXPECT_EQ(model().paymentMode, "END");
    EXPECT_EQ(engine->cashFlowArray().size(), 100u);

    keys({"2*+3", "="});
    EXPECT_EQ(display(), "0") << "an invalid line shows 0";
    EXPECT_EQ(engine->historyCount(), 0) << "and logs nothing";

    keys({"CE", "1+2*3", "="});
    EXPECT_EQ(display(), "7");
    EXPECT_EQ(label(), "Ans");
    EXPECT_EQ(engine->expression(), "1+2*3") << "= leaves the expression";
    ASSERT_EQ(engine->historyCount(), 1);
    const HistoryEntry entry = engine->logArray()->first();
    EXPECT_EQ(QStringList({entry.result, entry.expression, entry.command, entry.resultLabel}),
              QStringList({"7", "1+2*3", "Evaluate Expression", "Ans"}));

    // Letters from a keyboard reach functions without keys (the keys'
    // texts are cases of tests/vectors/keypad.jsonl).
    keys({"CE"});
    engine->typeLetters("atan");
    keys({"(", "1", ")", "*", "4"});
    engine->typeLetters("x1");
    EXPECT_EQ(engine->expression(), "atan(1)*4") << "only letters are typed";
}

// The caret keys' edits are cases of tests/vectors/keypad.jsonl; a
// selection comes from the keyboard or the mouse.
TEST_F(EngineTest, SelectionsKeyboardEditingAndPastedText)
{
    keys({"1234"});
    engine->setSelection(1, 3);
    keys({"\u21e6"});
    EXPECT_EQ(engine->expression(), "14");
    engine->setSelection(0, 2);
    keys({"7"});
    EXPECT_EQ(engine->expression(), "7") << "typing replaces the selection";

    keys({"CE", "1234"});
    engine->moveCaretToStart();
    engine->deleteForward();
    EXPECT_EQ(engine->expression(), "234");
    engine->moveCaretToEnd();
    engine->deleteForward();
    EXPECT_EQ(engine->expression(), "234") << "nothing after the caret";
    engine->setSelection(1, 2);
    engine->deleteForward();
    EXPECT_EQ(engine->expression(), "24");
    engine->pasteText(QStringLiteral("\u20ac 1,5\u00d7(sqrt 9)\nX"));
    EXPECT_EQ(engine->expression(), "21.5(sqrt9)4") << "only what the line accepts, at the caret";
    engine->pasteText(QStringLiteral("#%"));
    EXPECT_EQ(engine->expression(), "21.5(sqrt9)4");

    keys({"CE", "-1.5*2", "=", "CE", "2*"});
    CalculatorHistoryModel history;
    history.setCalculator(engine.get());
    EXPECT_EQ(history.resultAt(0), local("-3"));
    history.useResult(0);
    EXPECT_EQ(engine->expression(), "2*-3");
    keys({"CE", "1/0", "=", "CE"});
    history.useResult(1);
    EXPECT_EQ(engine->expression(), "") << "Infinity is no text for the line";
    EXPECT_EQ(history.resultAt(5), "");
}

// After "=" the keys' rule (tests/vectors/keypad.jsonl) holds for the
// other ways text reaches the line too: letters from the keyboard and
// pasted text start anew unless they begin with an operator, a touch on
// the line goes back to editing it, and the 2ND toggle keeps the result.
TEST_F(EngineTest, AfterEqualsKeyboardLettersPasteAndTouch)
{
    keys({"12*3", "="});
    engine->typeLetters("atan");
    EXPECT_EQ(engine->expression(), "atan");
    keys({"CE", "12*3", "="});
    engine->pasteText("+1,5");
    EXPECT_EQ(engine->expression(), "36+1.5");
    keys({"="});
    engine->pasteText("2");
    EXPECT_EQ(engine->expression(), "2");
    keys({"CE", "12*3", "="});
    engine->setSelection(1, 1);
    keys({"5"});
    EXPECT_EQ(engine->expression(), "152*3");
    keys({"=", "2ND", "\u03c0"});
    EXPECT_EQ(engine->expression(), "pi");
}

// A register key on an empty line shows the register and stores nothing;
// text on the line is still an entry, an unreadable one storing 0 (the
// shown values: tests/vectors/keypad.jsonl).
TEST_F(EngineTest, LoanPaymentThroughTheKeysThenItsRegisters)
{
    // A 250,000 mortgage over 30 years at 6 %, paid and compounded monthly.
    keys({"12", "P/Y", "12", "C/Y", "360", "N", "6", "I/Y", "250000", "PV", "0", "FV", "CPT",
          "PMT"});
    EXPECT_EQ(engine->command(), "Compute PMT");
    EXPECT_FALSE(engine->waitingCompute());
    EXPECT_EQ(commands().last(), "Compute PMT");
    EXPECT_EQ(commands().count("Evaluate Expression"), 6) << "each entry logs its value";
    EXPECT_GE(reviews(), 2) << "PV and FV entries ask for a review";

    const int logged = engine->historyCount();
    keys({"CE", "PV", "CE", "PMT", "CE", "N", "CE", "I/Y", "CE", "FV", "CE", "P/Y", "CE", "C/Y"});
    EXPECT_EQ(engine->historyCount(), logged) << "looking logs nothing";
}

TEST_F(EngineTest, ComputeNWithoutAHistoryEntryComputePvWithOne)
{
    keys({"100", "PV", "10", "I/Y", "0", "PMT", "259.374246", "FV"});
    const int before = engine->historyCount();
    keys({"2", "CPT", "N"});
    EXPECT_NEAR(model().period, 10, 1e-6);
    EXPECT_EQ(engine->historyCount(), before) << "Compute N is not logged";
    EXPECT_EQ(engine->expression(), "2") << "a compute leaves the expression";

    keys({"CE", "CPT", "PV"});
    EXPECT_EQ(engine->historyCount(), before + 1);
    EXPECT_EQ(commands().last(), "Compute PV");
}

TEST_F(EngineTest, CptStaysArmedThroughPyAndCy)
{
    keys({"CPT", "4", "P/Y", "2.9", "C/Y"});
    EXPECT_TRUE(engine->waitingCompute());
    EXPECT_EQ(model().paymentFrequency, 4);
    EXPECT_EQ(model().compounding, 2);
    keys({"CPT", "FV"});
    EXPECT_FALSE(engine->waitingCompute());
}

TEST_F(EngineTest, CashFlowWalkAndEnter)
{
    keys({"CF"});
    EXPECT_TRUE(engine->npvModeOn()) << "CF arrives with the new mode";
    keys({"-100", "ENTER", "\u2193", "110", "ENTER", "\u2193", "0", "ENTER"});
    EXPECT_EQ(engine->cashFlowArray()[1].freq, "1") << "a frequency of 0 is refused";
    EXPECT_EQ(engine->cashFlowArray()[0].cash, "-100");
    keys({"10", "I/Y", "=", "5", "PV", "N"});
    EXPECT_EQ(model().pv, 0) << "PV and N do nothing in cash-flow mode";
    keys({"CPT", "NPV", "CPT", "IRR"});
    EXPECT_EQ(commands().mid(commands().size() - 2), QStringList({"Compute NPV", "Compute IRR"}));
    keys({"CF"});
    EXPECT_FALSE(engine->npvModeOn());
}

// ENTER takes the value off the line, so the next amount or a rate for
// I/Y is typed afresh rather than appended to the amount (the help's
// cash-flow examples type a rate right after an amount).
TEST_F(EngineTest, EnterInCashFlowModeEmptiesTheLine)
{
    keys({"CF", "-1000", "ENTER"});
    EXPECT_EQ(engine->expression(), "");
    keys({"\u2193", "500", "ENTER", "\u2193", "3", "ENTER", "ENTER"});
    EXPECT_EQ(engine->cashFlowArray()[1].freq, "3") << "ENTER on an empty line gives 0: refused";
    keys({"\u2191", "ENTER"});
    EXPECT_EQ(engine->cashFlowArray()[1].cash, "0") << "an amount of 0 is taken";
    keys({"\u2191", "0", "ENTER"});
    EXPECT_EQ(engine->cashFlowArray()[0].cash, "0") << "CF0 too, though its slot is even";
}

TEST_F(EngineTest, CashFlowCursorStopsAtF99AndIrrNeedsCpt)
{
    keys({"IRR"});
    EXPECT_EQ(engine->historyCount(), 0);
    const int before = reviews();
    keys({"NPV"});
    EXPECT_EQ(reviews(), before + 1) << "NPV always asks for a review";
    keys({"CPT", "NPV"});
    EXPECT_EQ(label(), "NPV") << "NPV works outside cash-flow mode";
    EXPECT_EQ(display(), "0");

    keys({"CF"});
    for (int i = 0; i < 250; ++i)
        keys({"\u2193"});
    EXPECT_EQ(engine->upCount(), CalculatorController::lastSlot);
    EXPECT_EQ(label(), "F99");
    keys({"7", "ENTER"});
    EXPECT_EQ(engine->cashFlowArray()[99].freq, "7");
    keys({"\u2191"});
    EXPECT_EQ(label(), "CF99");
}

TEST_F(EngineTest, StoreAndRecallWithTheirAlerts)
{
    keys({"42", "="});
    presenter.script({{"OK", "7"}});
    keys({"STO"});
    ASSERT_EQ(presenter.requests.size(), 1u);
    EXPECT_EQ(presenter.requests[0].title, "Store");
    EXPECT_EQ(presenter.requests[0].message,
              "Please enter an index to store the result 42.\n(Index must be between 0-100)");
    EXPECT_TRUE(presenter.requests[0].numericTextField);
    EXPECT_EQ(engine->resultStorage().value(7), "42");

    // Out of range is refused; negative indices are kept; unreadable is 0.
    for (const char* index : {"101", "-5", "abc"}) {
        presenter.script({{"OK", index}});
        keys({"STO"});
    }
    EXPECT_FALSE(engine->resultStorage().contains(101));
    EXPECT_EQ(engine->resultStorage().value(-5), "42");
    EXPECT_EQ(engine->resultStorage().value(0), "42");

    keys({"CE", "1", "="});
    presenter.script({{"OK", "7"}});
    keys({"RCL"});
    EXPECT_EQ(presenter.requests.back().title, "Store") << "the recall alert reuses the title";
    EXPECT_EQ(presenter.requests.back().message,
              "Please enter an index to recall a value.\n(Index is between 0-100)");
    EXPECT_EQ(engine->expression(), "42");

    presenter.script({{"OK", "55"}});
    keys({"RCL"});
    EXPECT_EQ(display(), "");
    EXPECT_EQ(engine->expression(), "");
}

TEST_F(EngineTest, ResetKeepsTheCursorAndClearsTheRest)
{
    keys({"CF", "\u2193", "\u2193", "\u2193", "5", "ENTER"});
    presenter.script({{"OK", "3"}});
    keys({"STO", "CF", "1", "PV", "CPT", "2ND", "RESET"});
    EXPECT_EQ(display(), "0");
    EXPECT_EQ(engine->upCount(), 3);
    EXPECT_TRUE(engine->waitingCompute()) << "RESET leaves CPT armed";
    EXPECT_EQ(model().pv, 0);
    EXPECT_TRUE(engine->resultStorage().isEmpty());
    EXPECT_EQ(engine->historyCount(), 0);
    EXPECT_EQ(engine->cashFlowArray()[2].cash, "0");
}

TEST_F(EngineTest, HistoryRowsAndAClearLocalToTheScreen)
{
    keys({"1+1", "=", "CE", "2*3", "=", "CE", "100", "PV", "5", "I/Y", "10", "N", "CPT", "FV"});
    QSignalSpy historySpy(engine.get(), &CalculatorController::historyRequested);
    keys({"2ND", "HIST"});
    EXPECT_EQ(historySpy.count(), 1);

    CalculatorHistoryModel history;
    history.setCalculator(engine.get());
    const auto cell = [&](int row, int role) { return history.data(history.index(row), role); };
    const int last = history.rowCount() - 1;
    ASSERT_EQ(last, 5);
    EXPECT_EQ(cell(1, CalculatorHistoryModel::ResultRole), "6");
    EXPECT_EQ(cell(1, CalculatorHistoryModel::DetailRole), "2*3");
    // Computes show their command and label, without an equals sign.
    EXPECT_EQ(cell(last, CalculatorHistoryModel::DetailRole), "Compute FV");
    EXPECT_EQ(cell(last, CalculatorHistoryModel::LabelRole), "FV");
    history.clearClicked();
    EXPECT_EQ(history.rowCount(), 0);

    CalculatorHistoryModel again;
    again.setCalculator(engine.get());
    EXPECT_EQ(again.rowCount(), 6);
}

// A long session keeps its last 1,000 results, the oldest dropped first, so
// the log (and the history screen and `keys --json` that show it) grows no
// further however long the session.
TEST_F(EngineTest, HistoryKeepsTheLastThousandResults)
{
    constexpr int results = 1005;
    for (int i = 1; i <= results; ++i)
        keys({"CE", QString::number(i), "="});
    ASSERT_EQ(engine->historyCount(), CalculatorController::maxHistoryEntries);
    EXPECT_EQ(CalculatorController::maxHistoryEntries, 1000);
    EXPECT_EQ(engine->logArray()->first().result, "6") << "results 1 to 5 dropped";
    EXPECT_EQ(engine->logArray()->last().expression, "1005");

    CalculatorHistoryModel history;
    history.setCalculator(engine.get());
    EXPECT_EQ(history.rowCount(), 1000);
    EXPECT_EQ(history.resultAt(999), "1005");
}

// 2ND shows the second functions and stays on after one is pressed; a new
// dictionary shows the first ones again.
TEST(Keypad, SecondFunctionsToggle)
{
    CalculatorKeypad keypad;
    ASSERT_EQ(keypad.rowCount(), 44);
    EXPECT_EQ(keypad.shownTitle(20), "(");
    keypad.buttonClicked(keypad.indexOfShownTitle("2ND"));
    EXPECT_EQ(keypad.shownTitle(20), "SIN");
    EXPECT_EQ(keypad.data(keypad.index(5), CalculatorKeypad::BorderedRole), true);
    keypad.buttonClicked(20);
    EXPECT_TRUE(keypad.secondaryButtonsOn()) << "2ND stays on after a second function";
    keypad.loadButtonDictionary();
    EXPECT_FALSE(keypad.secondaryButtonsOn());
    EXPECT_EQ(keypad.shownTitle(20), "(");
}

TEST(Keypad, PackedLayoutWithADoubleWidthZero)
{
    CalculatorKeypad keypad;
    const qreal w = 412, h = 630;
    EXPECT_EQ(keypad.keyRect(0, w, h), QRectF(0, 0, 82.4, 70));
    EXPECT_EQ(keypad.keyRect(1, w, h).left(), 82) << "packed onto whole points";
    EXPECT_EQ(keypad.keyRect(4, w, h).left(), 328);
    EXPECT_EQ(keypad.keyRect(5, w, h).topLeft(), QPointF(0, 70));
    const int zero = keypad.indexOfShownTitle("0");
    EXPECT_EQ(zero, 41);
    EXPECT_NEAR(keypad.keyRect(zero, w, h).width(), 2 * 82.4, 1e-9);
    for (int i = 0; i < 44; ++i) {
        EXPECT_LE(keypad.keyRect(i, w, h).right(), w + 1e-9) << i;
        if (i >= 40) { // the last row: CE, 0, ".", "="
            EXPECT_EQ(keypad.keyRect(i, w, h).top(), 8 * 70) << i;
        }
    }
    EXPECT_LE(keypad.keyRect(43, w, h).right(), w);
    EXPECT_TRUE(keypad.keyRect(44, w, h).isNull());
}

TEST(Keypad, PhysicalKeysMapToTitles)
{
    const struct {
        int key;
        const char* text;
        QString title;
    } rows[] = {{Qt::Key_Return, "\r", "="},           {Qt::Key_Backspace, "", "\u21e6"},
                {Qt::Key_Left, "", "\u2190"},          {Qt::Key_7, "7", "7"},
                {Qt::Key_AsciiCircum, "^", "y\u02e3"}, {Qt::Key_A, "a", ""}};
    for (const auto& row : rows)
        EXPECT_EQ(CalculatorKeypad::titleForKeyboard(row.key, row.text), row.title) << row.text;
    EXPECT_EQ(CalculatorKeypad::titleForKeyboard(Qt::Key_Enter, "", true), "ENTER")
        << "in cash-flow mode Enter stores the slot";
}

} // namespace

// The app's keypad keeps its registers, cash flows and STO/RCL registers
// across restarts (a new engine with keepsRegisters takes them back), and
// RESET clears them there too. An engine that does not keep them (tests,
// the default) neither writes nor reads them.
TEST_F(EngineTest, TheAppsKeypadKeepsItsRegistersAcrossRestarts)
{
    ReportStore::createList();
    engine->setKeepsRegisters(true);
    keys({"1000", "PV", "5", "I/Y", "BEG", "CF", "-100", "ENTER", "\u2193", "110", "ENTER", "CF"});
    keys({"42", "="});
    presenter.script({{"OK", "-5"}});
    keys({"STO"});
    const CalculatorModel before = model();
    const CashFlowList flows = engine->cashFlowArray();
    ASSERT_EQ(before.pv, 1000);
    ASSERT_EQ(flows[1].cash, "110");

    CalculatorKeypad nextKeypad;
    CalculatorController unkept;
    EXPECT_EQ(unkept.model().pv, 0) << "an engine that keeps nothing starts afresh";
    engine.reset();
    CalculatorController next;
    next.setKeepsRegisters(true);
    EXPECT_EQ(next.model().pv, before.pv);
    EXPECT_EQ(next.model().rate, before.rate);
    EXPECT_EQ(next.model().paymentFrequency, before.paymentFrequency);
    EXPECT_TRUE(next.begMode()) << "BEG was on";
    ASSERT_EQ(next.cashFlowArray().size(), flows.size());
    for (size_t k = 0; k < flows.size(); ++k) {
        EXPECT_EQ(next.cashFlowArray()[k].cash, flows[k].cash) << k;
        EXPECT_EQ(next.cashFlowArray()[k].freq, flows[k].freq) << k;
    }
    EXPECT_EQ(next.resultStorage().value(-5), "42");

    // RESET clears what is kept.
    pressKeys(nextKeypad, {"2ND", "RESET"});
    CalculatorController afterReset;
    afterReset.setKeepsRegisters(true);
    EXPECT_EQ(afterReset.model().pv, 0);
    EXPECT_TRUE(afterReset.resultStorage().isEmpty());

    // Damaged or foreign bytes put nothing back.
    CalculatorController damaged;
    damaged.restoreRegisterState(QByteArray("\xA2\x61P\x61x", 5));
    EXPECT_EQ(damaged.model().pv, 0);
}
