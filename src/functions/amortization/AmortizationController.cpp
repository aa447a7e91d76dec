#include "AmortizationController.h"

#include "numerics/DateText.h"
#include "numerics/NumberFormat.h"

#include <limits>

namespace {
const QString paymentsPerYearButton = QStringLiteral("paymentsPerYearButton");
const QString compoundingPerYearButton = QStringLiteral("compoundingPerYearButton");
const QString paymentModeButton = QStringLiteral("paymentModeButton");
const QString firstPaymentDateField = QStringLiteral("firstPaymentDateField");
const QString roundToCentsField = QStringLiteral("roundToCentsField");
const QString rangeStartField = QStringLiteral("rangeStartField");
const QString rangeEndField = QStringLiteral("rangeEndField");
const QString payoffDateLabel = QStringLiteral("payoffDateLabel");
const QString afterExtraButton = QStringLiteral("afterExtraButton");
const QString extraKind = QStringLiteral("Extra payment");
const QString rateKind = QStringLiteral("Rate change");

// The payments or compoundings a year of a frequency word. A word without a
// count (the sheets offer none) is no frequency: the model then refuses to
// work out a schedule rather than take a count for it.
double countOf(const QString& word)
{
    return AmortizationModel::countOf(word).value_or(std::numeric_limits<double>::quiet_NaN());
}
} // namespace

AmortizationController::AmortizationController(QObject* parent)
    : QVChartController(parent), m_events(this)
{
    load();
}

void AmortizationController::connectMvc()
{
    setModel(QVFunctionModel::create<AmortizationModel>());
    auto* view = new QVFunctionView(this);
    setView(view);
    // The choices as the model starts: monthly, at the end of the period.
    view->setText(paymentsPerYearButton, QStringLiteral("Monthly"));
    view->setText(compoundingPerYearButton, QStringLiteral("Monthly"));
    view->setText(paymentModeButton, QStringLiteral("END"));
    view->setText(afterExtraButton, AmortizationModel::afterExtraWords().first());
    view->setText(roundToCentsField, QStringLiteral("1"));
    view->setText(rangeStartField, QStringLiteral("1"));
    view->setText(rangeEndField, QStringLiteral("12"));
}

void AmortizationController::paymentsPerYearClicked()
{
    presentChoice(QStringLiteral("paymentsPerYear"), QStringLiteral("Payments"),
                  QStringLiteral("How often is a payment made?"), [this](const QString& word) {
                      AmortizationModel* m = amortizationModel();
                      m->paymentsPerYear = countOf(word);
                      if (!m_compoundingChosen) {
                          m->compoundingPerYear = m->paymentsPerYear;
                          qvFunctionView()->setText(compoundingPerYearButton, word);
                      }
                  });
}

void AmortizationController::compoundingPerYearClicked()
{
    presentChoice(QStringLiteral("compoundingPerYear"), QStringLiteral("Compounding"),
                  QStringLiteral("How often is interest compounded?"), [this](const QString& word) {
                      m_compoundingChosen = true;
                      amortizationModel()->compoundingPerYear = countOf(word);
                  });
}

void AmortizationController::paymentModeClicked()
{
    presentChoice(QStringLiteral("paymentMode"), QStringLiteral("Mode"),
                  QStringLiteral("Please choose a mode for your payments."),
                  [this](const QString& word) { amortizationModel()->paymentMode = word; });
}

void AmortizationController::afterExtraClicked()
{
    // The word is the model's; fieldChanged reads it from the button.
    presentChoice(QStringLiteral("afterExtra"), QStringLiteral("After an extra payment"),
                  QStringLiteral("What does an extra payment change?"), [](const QString&) {});
}

void AmortizationController::solveFor(const QString& name)
{
    const bool term = name == QLatin1String("term");
    if (term != amortizationModel()->solveTerm) {
        amortizationModel()->solveTerm = term;
        emit solvingTermChanged();
    }
    fieldChanged();
}

namespace {
// The kind of event the table `property` holds; empty for no table.
QString eventKindOf(const QString& property)
{
    return property == QLatin1String("extraPayments") ? extraKind
           : property == QLatin1String("rateChanges") ? rateKind
                                                      : QString();
}
} // namespace

bool AmortizationController::setTableInput(const QString& property, const QStringList& values)
{
    const QString kind = eventKindOf(property);
    if (kind.isEmpty() || !m_events.replaceKind(kind, values))
        return false;
    fieldChanged();
    return true;
}

QStringList AmortizationController::tableTexts(const QString& property) const
{
    const QString kind = eventKindOf(property);
    return kind.isEmpty() ? QStringList() : m_events.pairs(kind);
}

void AmortizationController::addEvent(const QString& kind)
{
    if (m_events.append(kind))
        fieldChanged();
}

void AmortizationController::removeEvent(int row)
{
    m_events.remove(row);
    fieldChanged();
}

void AmortizationController::eventAtEdited(int row, const QString& text)
{
    m_events.setAt(row, text);
    fieldChanged();
}

void AmortizationController::eventKindChosen(int row, const QString& kind)
{
    m_events.setKind(row, kind);
    fieldChanged();
}

void AmortizationController::eventValueEdited(int row, const QString& text)
{
    m_events.setValue(row, text);
    fieldChanged();
}

void AmortizationController::fieldChanged()
{
    AmortizationModel* m = amortizationModel();
    QVFunctionView* v = qvFunctionView();
    // The amounts, the rate and the term; the choices were set by their
    // actions.
    readFields();
    // A date that cannot be read gives the schedule no dates, and the payoff
    // date says why instead of standing empty.
    const QString dateText = v->text(firstPaymentDateField);
    m->firstPaymentDate = DateText::readIsoDate(dateText).value_or(QDate());
    const QString dateProblem = DateText::problemWith(dateText);
    m->roundToCents = fieldNumber(roundToCentsField) != 0;
    m->rangeStart = int(std::clamp(fieldNumber(rangeStartField), 0.0, 1e9));
    m->rangeEnd = int(std::clamp(fieldNumber(rangeEndField), 0.0, 1e9));
    m->extras = m_events.events(extraKind);
    m->rateChanges = m_events.events(rateKind);
    m->eventsProblem = m_events.problem();
    m->calculateResult();
    blankResultsOfUnreadableFields();
    showResults();
    v->setNote(payoffDateLabel,
               dateProblem.isEmpty()
                   ? QString()
                   : QStringLiteral("The first payment date cannot be read. %1").arg(dateProblem));
    redrawChart(!m->schedule.isEmpty());
    emit scheduleChanged();
}

int AmortizationController::scheduleRowCount() const
{
    const qsizetype rows = amortizationModel()->schedule.size();
    const qsizetype perYear = std::max(1, int(amortizationModel()->paymentsPerYear));
    return int(rows + (rows + perYear - 1) / perYear);
}

QVariantMap AmortizationController::scheduleRow(int index) const
{
    const AmortizationModel* m = amortizationModel();
    const QList<AmortizationModel::Row>& rows = m->schedule;
    if (index < 0 || index >= scheduleRowCount())
        return {};
    // Each year is its payments, then its subtotal.
    const int perYear = std::max(1, int(m->paymentsPerYear));
    const int year = index / (perYear + 1);
    const int within = index % (perYear + 1);
    const qsizetype payment = qsizetype(year) * perYear + within;
    const bool subtotal = within == perYear || payment >= rows.size();
    const AmortizationModel::Row r = subtotal ? m->yearTotals().value(year) : rows.at(payment);
    const auto amount = [m](double value) {
        return m->roundToCents ? NumberFormat::money(value) : stringFromDouble(value);
    };
    return {{QStringLiteral("kind"), subtotal ? QStringLiteral("year") : QStringLiteral("payment")},
            {QStringLiteral("number"),
             subtotal ? QStringLiteral("Year %1").arg(year + 1) : QString::number(r.period)},
            {QStringLiteral("date"), AmortizationModel::isoDate(r.date)},
            {QStringLiteral("payment"), amount(r.payment)},
            {QStringLiteral("interest"), amount(r.interest)},
            {QStringLiteral("principal"), amount(r.principal)},
            {QStringLiteral("extra"), amount(r.extra)},
            {QStringLiteral("balance"), amount(r.balance)},
            {QStringLiteral("event"), r.event}};
}

ChartPicture AmortizationController::reportChart() const
{
    AmortizationModel* m = amortizationModel();
    if (m->schedule.isEmpty())
        return {};
    ChartPicture picture;
    picture.source = m;
    picture.delegate = m;
    return picture;
}

QByteArray AmortizationController::scheduleCsv() const
{
    return amortizationModel()->scheduleCsv();
}
