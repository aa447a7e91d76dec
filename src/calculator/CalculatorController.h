#pragma once

#include "CalculatorModel.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <memory>

class Presenter;

// One logged result of the keypad.
struct HistoryEntry {
    QString result;      // the display text
    QString expression;  // the expression line at the time
    QString command;     // "Evaluate Expression", "Compute PV", ...
    QString resultLabel; // what the display showed: "Ans", "PV", "NPV", "CF2", ...
};
using HistoryLog = QList<HistoryEntry>;

// The keypad calculator's engine: it hears every key press from the keypad
// ("CalculatorButtonClickedNotification"), edits the expression line,
// evaluates it, moves values into and out of the TVM registers, computes
// on CPT, walks the cash-flow list, keeps the STO/RCL registers and the
// history log, and says what the display shows.
class CalculatorController : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString displayNumber READ displayNumber NOTIFY displayNumberChanged)
    Q_PROPERTY(QString resultLabel READ resultLabel NOTIFY resultLabelChanged)
    Q_PROPERTY(QString note READ note NOTIFY noteChanged)
    Q_PROPERTY(QString expression READ expression NOTIFY expressionChanged)
    Q_PROPERTY(int selectionStart READ selectionStart NOTIFY expressionChanged)
    Q_PROPERTY(int selectionEnd READ selectionEnd NOTIFY expressionChanged)
    Q_PROPERTY(bool npvModeOn READ npvModeOn NOTIFY modesChanged)
    Q_PROPERTY(bool waitingCompute READ waitingCompute NOTIFY modesChanged)
    Q_PROPERTY(int historyCount READ historyCount NOTIFY historyChanged)
    // Whether the registers are kept across restarts (the app's keypad sets
    // it; engines made elsewhere, as in tests, keep nothing).
    Q_PROPERTY(bool keepsRegisters READ keepsRegisters WRITE setKeepsRegisters NOTIFY
                   keepsRegistersChanged)

public:
    // Starts listening to the keypad and resets, as the screen does when it
    // loads.
    explicit CalculatorController(QObject* parent = nullptr);

    // The history keeps the last this many results; older ones are dropped.
    static constexpr int maxHistoryEntries = 1000;

    void setPresenter(Presenter* presenter) { m_presenter = presenter; }

    // The keypad keeps its TVM registers (N, I/Y, PV, PMT, FV, P/Y, C/Y,
    // BEG/END, and the NPV and IRR last computed), its cash-flow list and its STO/RCL
    // registers across restarts, in the reports' database under "keypad";
    // RESET clears them there too. This is a change from registers that
    // lived in memory only and were gone at every start: a worksheet left
    // half entered is there again. Turning it on puts the kept registers
    // back; from then on every key that changes them keeps them.
    bool keepsRegisters() const { return m_keepsRegisters; }
    // Whether payments were at the start of their periods (BEG) when the
    // registers were last kept, for the keypad's own toggle.
    Q_INVOKABLE bool begMode() const { return m_model.paymentMode == QLatin1String("BEG"); }
    void setKeepsRegisters(bool keeps);
    // The registers as bytes (a CBOR map), and back: a value of the wrong
    // kind, or a list longer than the keypad's, is left out.
    QByteArray registerState() const;
    void restoreRegisterState(const QByteArray& state);
    // The presenter given, or else the app's default one.
    Presenter* presenter() const;

    QString displayNumber() const { return m_displayNumber; }
    QString resultLabel() const { return m_resultLabel; }
    // One plain line on what the display shows: why it is no number after
    // a compute (no IRR, no rate, I/Y 0), or the other rates when several
    // fit; empty otherwise.
    QString note() const { return m_note; }
    QString expression() const { return m_expression; }
    int selectionStart() const { return m_selectionStart; }
    int selectionEnd() const { return m_selectionEnd; }
    bool npvModeOn() const { return m_npvModeOn; }
    bool waitingCompute() const { return m_waitingCompute; }
    QString command() const { return m_command; }
    int upCount() const { return m_upCount; }
    int historyCount() const { return int(m_logArray->size()); }

    const CalculatorModel& model() const { return m_model; }
    const CashFlowList& cashFlowArray() const { return m_cashFlowArray; }
    const QHash<int, QString>& resultStorage() const { return m_resultStorage; }
    // The engine's own log; the history screen shows this very list.
    std::shared_ptr<const HistoryLog> logArray() const { return m_logArray; }

    // The caret (start == end) or selection in the expression line, as the
    // user set it by touch or mouse.
    Q_INVOKABLE void setSelection(int start, int end);

    void receiveCalculatorButtonClickedNotification(const QVariantMap& userInfo);

    // Letters typed on a physical keyboard go straight into the expression
    // line, for the functions without a key (atan, log). Anything but a-z
    // is ignored.
    Q_INVOKABLE void typeLetters(const QString& letters);

    // Editing from a physical keyboard beyond the keypad's own keys:
    // Delete removes the character after the caret (or the selection);
    // Home and End put the caret at either end of the line.
    Q_INVOKABLE void deleteForward();
    Q_INVOKABLE void moveCaretToStart();
    Q_INVOKABLE void moveCaretToEnd();
    // Text from the clipboard (or a history row's result) onto the line at
    // the caret, keeping only what the line's keys can type: digits,
    // ". + - * / ^ ( )" and the letters a-z; a "," becomes the line's ".",
    // as the keyboard's comma does. Anything else is dropped.
    Q_INVOKABLE void pasteText(const QString& text);
    static QString acceptedText(const QString& text);

    void operateFinancialButton(const QString& title);
    void operateTvmButtons(const QString& title);
    void operateNpvButtons(const QString& title);

    void displayResult();
    void displayValue(double value);
    void displayAndLogValue(double value);
    void logValues();
    void clearDisplayNumber();

    void moveCursorBack();
    void moveCursorForward();
    void deleteFromExpression();

    void resetCalculator();

    void showStoreAlert();
    void showRecallAlert();
    void navigateToHistory();
    void navigateToHelp();

    // How the STO/RCL alerts read their field: leading blanks, a sign and
    // digits (of any script); anything else reads 0; overflow saturates.
    static int intValue(const QString& text);
    // The label of cash-flow cursor `u`: CF0, CF1, F1, CF2, F2, ...
    static QString slotName(int u);
    // The cursor stops at F99.
    static constexpr int lastSlot = 2 * (CalculatorModel::cashFlowCount - 1);

signals:
    void displayNumberChanged();
    void noteChanged();
    void resultLabelChanged();
    void expressionChanged();
    void modesChanged();
    void historyChanged();
    void historyRequested();
    void helpRequested();
    void keepsRegistersChanged();

private:
    // Keeps the registers when they are kept and have changed.
    void keepRegisters();
    void setDisplayNumber(const QString& text);
    void setNote(const QString& note);
    // Why a compute of register `name` gave no number.
    QString tvmReason(const QString& name) const;
    void setResultLabel(const QString& text);
    void setExpression(const QString& text, int caret);
    void setWaitingCompute(bool waiting);
    void insertText(const QString& text);
    // Typing onto the line; `afterResult`: right after "=" (see there).
    void typeText(const QString& text, bool afterResult);
    bool showRegisterOnEmptyLine(const QString& name, double value);
    void enterRegister(const QString& name, double& registerValue);
    void enterIntegerRegister(const QString& name, double& registerValue);
    void compute(const QString& name, void (CalculatorModel::*solve)(), const double& result,
                 bool logged);
    void showSlot();
    QString& slotText();
    void requestReview();

    CalculatorModel m_model;
    Presenter* m_presenter = nullptr;
    QString m_displayNumber = QStringLiteral("0");
    QString m_resultLabel;
    QString m_note;
    QString m_expression;
    int m_selectionStart = 0;
    int m_selectionEnd = 0;
    QString m_command;
    bool m_waitingCompute = false;
    bool m_npvModeOn = false;
    QHash<int, QString> m_resultStorage;
    CashFlowList m_cashFlowArray;
    int m_upCount = 0;
    // "=" has just shown the line's result, and nothing has touched the
    // line since.
    bool m_showingResult = false;
    std::shared_ptr<HistoryLog> m_logArray = std::make_shared<HistoryLog>();
    bool m_keepsRegisters = false;
    QByteArray m_keptState; // the registers as last kept
};
