#include "AmortizationController.h"

#include "numerics/DateText.h"

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

// The payments or compoundings a year of a frequency word. A word without a
// count (the sheets offer none) is no frequency: the model then refuses to
// work out a schedule rather than take a count for it.
double countOf(const QString& word)
{
    return AmortizationModel::countOf(word).value_or(std::numeric_limits<double>::quiet_NaN());
}
} // namespace

AmortizationController::AmortizationController(QObject* parent) : QVChartController(parent)
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

QVariantMap AmortizationController::scheduleRow(int index) const
{
    const QList<AmortizationModel::Row>& rows = amortizationModel()->schedule;
    if (index < 0 || index >= rows.size())
        return {};
    const AmortizationModel::Row& r = rows.at(index);
    return {{QStringLiteral("period"), r.period},
            {QStringLiteral("date"), AmortizationModel::isoDate(r.date)},
            {QStringLiteral("payment"), stringFromDouble(r.payment)},
            {QStringLiteral("interest"), stringFromDouble(r.interest)},
            {QStringLiteral("principal"), stringFromDouble(r.principal)},
            {QStringLiteral("balance"), stringFromDouble(r.balance)}};
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
