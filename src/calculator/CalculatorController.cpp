#include "CalculatorController.h"

#include "CalculatorKeypad.h"
#include "framework/FallbackNotices.h"
#include "framework/Presenter.h"
#include "numerics/DecimalDigit.h"
#include "numerics/FinanceMath.h"
#include "numerics/NumberFormat.h"
#include "numerics/RootSearch.h"
#include "platform/NotificationCenter.h"
#include "platform/ReviewPrompt.h"
#include "platform/Services.h"
#include "store/ReportStore.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborValue>
#include <QPointer>
#include <climits>
#include <cmath>
#include <utility>

namespace {

// Keys that type their own text, and what the others type.
QString typedText(const QString& title)
{
    if (title.size() == 1 && QStringLiteral("0123456789.+-*/()").contains(title))
        return title;
    if (title == u"\u03c0")
        return QStringLiteral("pi");
    if (title == u"y\u02e3")
        return QStringLiteral("^");
    if (title == u"LN" || title == u"SIN" || title == u"COS" || title == u"TAN")
        return title.toLower() + QLatin1Char('(');
    if (title == u"\u221ax")
        return QStringLiteral("sqrt(");
    return {};
}

bool isFinancialKey(const QString& title)
{
    static const QStringList keys = {"CPT", "ENTER", "N",   "I/Y", "PMT", "PV",     "FV",    "P/Y",
                                     "C/Y", "CF",    "BEG", "NPV", "IRR", "\u2193", "\u2191"};
    return keys.contains(title);
}

double integerPartOf(double value)
{
    return std::isfinite(value) ? std::trunc(value) : (std::isnan(value) ? 0.0 : value);
}

} // namespace

CalculatorController::CalculatorController(QObject* parent) : QObject(parent)
{
    NotificationCenter::defaultCenter().addObserver(
        this, CalculatorKeypad::notificationName,
        [this](const Notification& n) { receiveCalculatorButtonClickedNotification(n.userInfo); });
    resetCalculator();
}

// State setters.

void CalculatorController::setDisplayNumber(const QString& text)
{
    setNote({}); // a note belongs to the value it was given with
    if (text == m_displayNumber)
        return;
    m_displayNumber = text;
    emit displayNumberChanged();
}

void CalculatorController::setNote(const QString& note)
{
    if (note == m_note)
        return;
    m_note = note;
    emit noteChanged();
}

void CalculatorController::setResultLabel(const QString& text)
{
    if (text == m_resultLabel)
        return;
    m_resultLabel = text;
    emit resultLabelChanged();
}

void CalculatorController::setExpression(const QString& text, int caret)
{
    m_expression = text;
    m_selectionStart = m_selectionEnd = qBound(0, caret, int(text.size()));
    emit expressionChanged();
}

void CalculatorController::setSelection(int start, int end)
{
    const int length = int(m_expression.size());
    start = qBound(0, start, length);
    end = qBound(0, end, length);
    if (start > end)
        std::swap(start, end);
    if (start == m_selectionStart && end == m_selectionEnd)
        return;
    // Moving the caret is editing the line: what is typed next goes there.
    m_showingResult = false;
    m_selectionStart = start;
    m_selectionEnd = end;
    emit expressionChanged();
}

void CalculatorController::setWaitingCompute(bool waiting)
{
    if (waiting == m_waitingCompute)
        return;
    m_waitingCompute = waiting;
    emit modesChanged();
}

void CalculatorController::requestReview()
{
    Services::reviewPrompt().requestReview();
}

// Key dispatch.

void CalculatorController::setKeepsRegisters(bool keeps)
{
    if (keeps == m_keepsRegisters)
        return;
    m_keepsRegisters = keeps;
    if (keeps) {
        restoreRegisterState(ReportStore::screenState(QStringLiteral("keypad")));
        m_keptState = registerState();
    }
    emit keepsRegistersChanged();
}

QByteArray CalculatorController::registerState() const
{
    QCborMap map;
    map.insert(QStringLiteral("P/Y"), m_model.paymentFrequency);
    map.insert(QStringLiteral("N"), m_model.period);
    map.insert(QStringLiteral("I/Y"), m_model.rate);
    map.insert(QStringLiteral("PV"), m_model.pv);
    map.insert(QStringLiteral("PMT"), m_model.pmt);
    map.insert(QStringLiteral("FV"), m_model.fv);
    map.insert(QStringLiteral("C/Y"), m_model.compounding);
    map.insert(QStringLiteral("NPV"), m_model.npv);
    map.insert(QStringLiteral("IRR"), m_model.irr);
    map.insert(QStringLiteral("mode"), m_model.paymentMode);
    // The cash flows up to the last one that is not "0" once.
    QCborArray flows;
    size_t used = 0;
    for (size_t k = 0; k < m_cashFlowArray.size(); ++k) {
        const CashFlow& flow = m_cashFlowArray[k];
        if (flow.cash != QLatin1String("0") || flow.freq != QLatin1String("1"))
            used = k + 1;
    }
    for (size_t k = 0; k < used; ++k)
        flows.append(QCborArray{m_cashFlowArray[k].cash, m_cashFlowArray[k].freq});
    map.insert(QStringLiteral("cashFlows"), flows);
    QCborMap storage;
    for (auto it = m_resultStorage.cbegin(); it != m_resultStorage.cend(); ++it)
        storage.insert(it.key(), it.value());
    map.insert(QStringLiteral("storage"), storage);
    return QCborValue(map).toCbor();
}

void CalculatorController::restoreRegisterState(const QByteArray& state)
{
    const QCborMap map = QCborValue::fromCbor(state).toMap();
    if (map.isEmpty())
        return;
    const auto number = [&map](const char* key, double& target) {
        const QCborValue value = map.value(QLatin1String(key));
        if (value.isDouble() || value.isInteger())
            target = value.toDouble();
    };
    if (const QCborValue perYear = map.value(QStringLiteral("P/Y")); perYear.isInteger())
        m_model.paymentFrequency = int(std::clamp<qint64>(perYear.toInteger(), 0, 1000000));
    number("N", m_model.period);
    number("I/Y", m_model.rate);
    number("PV", m_model.pv);
    number("PMT", m_model.pmt);
    number("FV", m_model.fv);
    number("C/Y", m_model.compounding);
    number("NPV", m_model.npv);
    number("IRR", m_model.irr);
    if (const QCborValue mode = map.value(QStringLiteral("mode")); mode.isString())
        m_model.paymentMode =
            mode.toString() == QLatin1String("BEG") ? QStringLiteral("BEG") : QStringLiteral("END");
    const QCborArray flows = map.value(QStringLiteral("cashFlows")).toArray();
    for (qsizetype k = 0; k < flows.size() && size_t(k) < m_cashFlowArray.size(); ++k) {
        const QCborArray flow = flows.at(k).toArray();
        if (flow.size() == 2 && flow.at(0).isString() && flow.at(1).isString())
            m_cashFlowArray[size_t(k)] = {flow.at(0).toString(), flow.at(1).toString()};
    }
    const QCborMap storage = map.value(QStringLiteral("storage")).toMap();
    for (auto it = storage.constBegin(); it != storage.constEnd(); ++it) {
        if (it.key().isInteger() && it.value().isString())
            m_resultStorage.insert(int(std::clamp<qint64>(it.key().toInteger(), INT_MIN, INT_MAX)),
                                   it.value().toString());
    }
}

void CalculatorController::keepRegisters()
{
    if (!m_keepsRegisters)
        return;
    FallbackNotices::keepScreen(QStringLiteral("keypad"), registerState(), m_keptState,
                                presenter());
}

void CalculatorController::receiveCalculatorButtonClickedNotification(const QVariantMap& userInfo)
{
    // Every key that changes the registers keeps them (when they are kept).
    struct KeepAfter {
        CalculatorController* self;
        ~KeepAfter() { self->keepRegisters(); }
    } keepAfter{this};

    const bool npv = userInfo.value(QStringLiteral("npv-mode")).toBool();
    if (npv != m_npvModeOn) {
        m_npvModeOn = npv;
        emit modesChanged();
    }
    m_model.paymentMode = userInfo.value(QStringLiteral("beg-mode")).toBool()
                              ? QStringLiteral("BEG")
                              : QStringLiteral("END");

    const QString title = userInfo.value(QStringLiteral("title")).toString();
    // Keys that leave the line and the display as they are (the alert that
    // stores the display, the screens, the toggles) keep the result of "="
    // to go on from; any other key ends that time.
    static const QStringList passive = {"STO", "HIST", "HELP", "2ND", "BEG"};
    const bool afterResult = m_showingResult;
    if (!passive.contains(title))
        m_showingResult = false;
    if (const QString text = typedText(title); !text.isEmpty())
        typeText(text, afterResult);
    else if (isFinancialKey(title))
        operateFinancialButton(title);
    else if (title == u"CE")
        setExpression(QString(), 0);
    else if (title == u"\u2190")
        moveCursorBack();
    else if (title == u"\u2192")
        moveCursorForward();
    else if (title == u"\u21e6")
        deleteFromExpression();
    else if (title == u"=") {
        if (!m_npvModeOn) {
            setResultLabel(QStringLiteral("Ans"));
            displayResult();
            m_showingResult = true;
        }
    } else if (title == u"STO")
        showStoreAlert();
    else if (title == u"RCL")
        showRecallAlert();
    else if (title == u"HIST")
        navigateToHistory();
    else if (title == u"HELP")
        navigateToHelp();
    else if (title == u"RESET") {
        resetCalculator();
        requestReview();
    }
}

void CalculatorController::typeLetters(const QString& letters)
{
    for (const QChar c : letters) {
        if (c < u'a' || c > u'z')
            return;
    }
    if (!letters.isEmpty())
        typeText(letters, std::exchange(m_showingResult, false));
}

void CalculatorController::deleteForward()
{
    m_showingResult = false;
    if (m_selectionStart != m_selectionEnd) {
        insertText(QString());
    } else if (m_selectionEnd < m_expression.size()) {
        setExpression(m_expression.left(m_selectionStart) + m_expression.mid(m_selectionEnd + 1),
                      m_selectionStart);
    }
}

void CalculatorController::moveCaretToStart()
{
    m_showingResult = false;
    setSelection(0, 0);
}

void CalculatorController::moveCaretToEnd()
{
    m_showingResult = false;
    const int end = int(m_expression.size());
    setSelection(end, end);
}

QString CalculatorController::acceptedText(const QString& text)
{
    QString accepted;
    for (const QChar c : text) {
        if ((c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') ||
            QStringLiteral(".+-*/^()").contains(c))
            accepted += c;
        else if (c == u',')
            accepted += u'.';
    }
    return accepted;
}

void CalculatorController::pasteText(const QString& text)
{
    const QString accepted = acceptedText(text);
    if (!accepted.isEmpty())
        typeText(accepted, std::exchange(m_showingResult, false));
}

void CalculatorController::operateFinancialButton(const QString& title)
{
    static const QStringList tvmKeys = {"N", "I/Y", "PV", "PMT", "FV", "P/Y", "C/Y"};
    if (tvmKeys.contains(title))
        operateTvmButtons(title);
    else if (title == u"CPT")
        setWaitingCompute(true);
    else if (title != u"BEG")
        operateNpvButtons(title);
}

// Registers.

bool CalculatorController::showRegisterOnEmptyLine(const QString& name, double value)
{
    // A register key pressed on an empty line is a look at the register:
    // it shows the value under the key's name and stores nothing, so a
    // solved PV can be read back without wiping it. Only a line with text
    // on it is an entry (and an unreadable one stores 0).
    if (!m_expression.trimmed().isEmpty())
        return false;
    setResultLabel(name);
    displayValue(value);
    return true;
}

void CalculatorController::enterRegister(const QString& name, double& registerValue)
{
    if (showRegisterOnEmptyLine(name, registerValue))
        return;
    setResultLabel(name);
    displayResult();
    registerValue = CalculatorModel::evaluateExpression(m_expression).value_or(0.0);
    setExpression(QString(), 0);
}

void CalculatorController::enterIntegerRegister(const QString& name, double& registerValue)
{
    enterRegister(name, registerValue);
    registerValue = integerPartOf(registerValue);
}

void CalculatorController::compute(const QString& name, void (CalculatorModel::*solve)(),
                                   const double& result, bool logged)
{
    setResultLabel(name);
    m_command = QStringLiteral("Compute ") + name;
    (m_model.*solve)();
    if (logged)
        displayAndLogValue(result);
    else
        displayValue(result);
    if (!std::isfinite(result))
        setNote(tvmReason(name));
    setWaitingCompute(false);
}

QString CalculatorController::tvmReason(const QString& name) const
{
    if (name == u"I/Y" && !m_model.rateNote.isEmpty())
        return m_model.rateNote;
    if (m_model.paymentFrequency < 1 || m_model.compounding < 1)
        return QStringLiteral("No number: P/Y and C/Y must be at least 1.");
    if (m_model.rate == 0)
        return QStringLiteral("No number: with I/Y 0 these formulas divide by zero.");
    return QStringLiteral("No number: no %1 makes these registers agree.").arg(name);
}

void CalculatorController::operateTvmButtons(const QString& title)
{
    if (title == u"N") {
        if (m_npvModeOn)
            return;
        if (m_waitingCompute)
            compute(title, &CalculatorModel::computePeriod, m_model.period, false);
        else
            enterRegister(title, m_model.period);
    } else if (title == u"I/Y") {
        if (m_npvModeOn) {
            if (!m_waitingCompute)
                enterRegister(title, m_model.rate);
        } else if (m_waitingCompute) {
            compute(title, &CalculatorModel::computeRate, m_model.rate, true);
        } else {
            enterRegister(title, m_model.rate);
        }
    } else if (title == u"PV" || title == u"FV") {
        const bool isPv = title == u"PV";
        if (!m_npvModeOn) {
            double& value = isPv ? m_model.pv : m_model.fv;
            if (m_waitingCompute)
                compute(title,
                        isPv ? &CalculatorModel::computePresentValue
                             : &CalculatorModel::computeFutureValue,
                        value, true);
            else
                enterRegister(title, value);
        }
        requestReview();
    } else if (title == u"PMT") {
        if (m_npvModeOn)
            return;
        if (m_waitingCompute)
            compute(title, &CalculatorModel::computePayment, m_model.pmt, true);
        else
            enterRegister(title, m_model.pmt);
    } else if (title == u"P/Y") {
        if (m_npvModeOn)
            return;
        double value = m_model.paymentFrequency;
        enterIntegerRegister(title, value);
        m_model.paymentFrequency = FinanceMath::saturatedInteger(value);
    } else if (title == u"C/Y") {
        if (m_npvModeOn)
            return;
        enterIntegerRegister(title, m_model.compounding);
    }
}

// Cash flows.

QString CalculatorController::slotName(int u)
{
    if (u <= 0)
        return QStringLiteral("CF0");
    return u % 2 == 1 ? QStringLiteral("CF%1").arg((u + 1) / 2) : QStringLiteral("F%1").arg(u / 2);
}

QString& CalculatorController::slotText()
{
    if (m_upCount <= 0)
        return m_cashFlowArray[0].cash;
    if (m_upCount % 2 == 1)
        return m_cashFlowArray[size_t((m_upCount + 1) / 2)].cash;
    return m_cashFlowArray[size_t(m_upCount / 2)].freq;
}

void CalculatorController::showSlot()
{
    setResultLabel(slotName(m_upCount));
    setDisplayNumber(slotText());
}

void CalculatorController::operateNpvButtons(const QString& title)
{
    if (title == u"CF") {
        if (!m_npvModeOn) {
            setResultLabel(QStringLiteral("Ans"));
            displayResult();
            return;
        }
        m_upCount = 0;
        showSlot();
    } else if (title == u"\u2193") {
        setExpression(QString(), 0);
        m_upCount = qMin(m_upCount + 1, lastSlot);
        showSlot();
    } else if (title == u"\u2191") {
        if (m_upCount < 1)
            return;
        --m_upCount;
        showSlot();
    } else if (title == u"ENTER") {
        if (!m_npvModeOn)
            return;
        displayResult();
        const bool frequency = m_upCount >= 2 && m_upCount % 2 == 0;
        if (!(frequency && m_displayNumber == u"0"))
            slotText() = m_displayNumber;
        // Like a register entry, ENTER takes the line's value away with it:
        // what is typed next (the next amount, a rate for I/Y) starts on an
        // empty line instead of being appended to the stored amount.
        setExpression(QString(), 0);
    } else if (title == u"NPV") {
        if (m_waitingCompute) {
            setResultLabel(QStringLiteral("NPV"));
            m_command = QStringLiteral("Compute NPV");
            m_model.npv =
                CalculatorModel::calculateNpvWithRate(m_cashFlowArray, m_model.rate / 100.0);
            displayAndLogValue(m_model.npv);
            if (!std::isfinite(m_model.npv))
                setNote(QStringLiteral("No number: these cash flows have no NPV at this I/Y."));
            setWaitingCompute(false);
        }
        requestReview();
    } else if (title == u"IRR") {
        if (!m_waitingCompute)
            return;
        setResultLabel(QStringLiteral("IRR"));
        m_command = QStringLiteral("Compute IRR");
        const CalculatorModel::Rates rates =
            CalculatorModel::internalRatesOfReturn(m_cashFlowArray);
        RootSearch::Roots roots;
        roots.all = rates.all;
        m_model.irr = roots.nearest(0.1);
        displayAndLogValue(m_model.irr);
        // The other rates that fit too, or why none does.
        QStringList others;
        for (double rate : rates.all) {
            if (rate != m_model.irr)
                others << NumberFormat::displayString(rate);
        }
        setNote(others.isEmpty() ? rates.reason : QStringLiteral("also: ") + others.join(u", "));
        setWaitingCompute(false);
    }
}

// Display and history.

void CalculatorController::displayResult()
{
    m_command = QStringLiteral("Evaluate Expression");
    if (const std::optional<double> value = CalculatorModel::evaluateExpression(m_expression))
        displayAndLogValue(*value);
    else
        clearDisplayNumber();
}

void CalculatorController::displayValue(double value)
{
    setDisplayNumber(NumberFormat::displayString(value));
    // A compute that has more to say sets its own note after this one.
    if (!std::isfinite(value))
        setNote(QStringLiteral("No number: this has no real value."));
}

void CalculatorController::displayAndLogValue(double value)
{
    displayValue(value);
    logValues();
}

void CalculatorController::logValues()
{
    // Only the last maxHistoryEntries results are kept, the oldest dropped
    // first: each entry holds its own copy of the expression line, so an
    // unbounded log of a long session (a line that grows with every "=")
    // would grow with the square of its length. Dropping from the front of
    // a QList only moves its start, so a full log costs no copying.
    m_logArray->append({m_displayNumber, m_expression, m_command, m_resultLabel});
    if (m_logArray->size() > maxHistoryEntries)
        m_logArray->remove(0, m_logArray->size() - maxHistoryEntries);
    emit historyChanged();
}

void CalculatorController::clearDisplayNumber()
{
    setDisplayNumber(QStringLiteral("0"));
}

// The expression line.

void CalculatorController::insertText(const QString& text)
{
    const QString updated =
        m_expression.left(m_selectionStart) + text + m_expression.mid(m_selectionEnd);
    setExpression(updated, m_selectionStart + int(text.size()));
}

void CalculatorController::typeText(const QString& text, bool afterResult)
{
    // Deliberately unlike a plain text editor: right after "=" the line
    // still holds the expression just evaluated, and typing onto its end
    // would quietly change it ("12*3 =", then "7+8 =" gave 12*37+8 = 452).
    // So the next key decides, as on a pocket calculator: an operator goes
    // on from the result (the line becomes the shown value followed by the
    // operator, "36+"), anything else (a digit, ".", a bracket, a function,
    // pi, letters) starts a new expression in place of the old one.
    if (!afterResult) {
        insertText(text);
        return;
    }
    if (QStringLiteral("+-*/^").contains(text.front())) {
        // The shown value as the line writes numbers, with "." for the
        // decimal point whatever the locale's display uses.
        const QString shown =
            QString(m_displayNumber).replace(NumberFormat::decimalSeparator(), QStringLiteral("."));
        setExpression(shown + text, int(shown.size() + text.size()));
    } else {
        setExpression(text, int(text.size()));
    }
}

void CalculatorController::moveCursorBack()
{
    const int caret = qMax(0, m_selectionStart - 1);
    setSelection(caret, caret);
}

void CalculatorController::moveCursorForward()
{
    const int caret = qMin(int(m_expression.size()), m_selectionStart + 1);
    setSelection(caret, caret);
}

void CalculatorController::deleteFromExpression()
{
    if (m_selectionStart != m_selectionEnd) {
        insertText(QString());
    } else if (m_selectionStart > 0) {
        setExpression(m_expression.left(m_selectionStart - 1) + m_expression.mid(m_selectionStart),
                      m_selectionStart - 1);
    }
}

void CalculatorController::resetCalculator()
{
    clearDisplayNumber();
    m_model = CalculatorModel();
    m_model.paymentFrequency = 1;
    m_model.compounding = 1;
    m_model.paymentMode = QStringLiteral("END");
    m_resultStorage.clear();
    m_logArray->clear();
    m_cashFlowArray = CalculatorModel::freshCashFlows();
    emit historyChanged();
}

// Store and recall.

int CalculatorController::intValue(const QString& text)
{
    qsizetype i = 0;
    while (i < text.size() && text.at(i).isSpace())
        ++i;
    bool negative = false;
    if (i < text.size() && (text.at(i) == u'-' || text.at(i) == u'+')) {
        negative = text.at(i) == u'-';
        ++i;
    }
    qint64 value = 0;
    // Any script's digits, as everywhere numbers are read.
    while (i < text.size()) {
        const DecimalDigit digit = decimalDigitAt(text, i);
        if (!digit)
            break;
        value = value * 10 + digit.value;
        if (value > qint64(INT_MAX) + 1)
            break; // saturated below
        i += digit.length;
    }
    value = negative ? -value : value;
    return int(qBound(qint64(INT_MIN), value, qint64(INT_MAX)));
}

void CalculatorController::showStoreAlert()
{
    if (!presenter())
        return;
    AlertRequest alert;
    alert.title = QStringLiteral("Store");
    alert.message = QStringLiteral("Please enter an index to store the result %1.\n(Index must be "
                                   "between 0-100)")
                        .arg(m_displayNumber);
    alert.actions = {{QStringLiteral("OK")}};
    alert.hasTextField = true;
    alert.numericTextField = true;
    QPointer<CalculatorController> self(this);
    const QString shown = m_displayNumber;
    presenter()->present(alert, [self, shown](const QString&, const QString& text) {
        const int index = intValue(text);
        if (self && index < 101) {
            self->m_resultStorage.insert(index, shown);
            self->keepRegisters();
        }
    });
}

void CalculatorController::showRecallAlert()
{
    if (!presenter())
        return;
    AlertRequest alert;
    alert.title = QStringLiteral("Store");
    alert.message =
        QStringLiteral("Please enter an index to recall a value.\n(Index is between 0-100)");
    alert.actions = {{QStringLiteral("OK")}};
    alert.hasTextField = true;
    alert.numericTextField = true;
    QPointer<CalculatorController> self(this);
    presenter()->present(alert, [self](const QString&, const QString& text) {
        const int index = intValue(text);
        if (!self || index >= 101)
            return;
        const QString value = self->m_resultStorage.value(index);
        self->setDisplayNumber(value);
        // The expression line always takes "." as its decimal point; the
        // stored text has nothing else outside the expression syntax.
        const QString typed =
            QString(value).replace(NumberFormat::decimalSeparator(), QStringLiteral("."));
        self->setExpression(typed, int(typed.size()));
        self->setResultLabel(QStringLiteral("Ans"));
    });
}

void CalculatorController::navigateToHistory()
{
    emit historyRequested();
}

void CalculatorController::navigateToHelp()
{
    emit helpRequested();
}

Presenter* CalculatorController::presenter() const
{
    return m_presenter ? m_presenter : Presenter::defaultPresenter();
}
