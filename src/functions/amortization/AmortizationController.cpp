#include "AmortizationController.h"

#include "framework/DateText.h"

namespace {
const QString loanAmountField = QStringLiteral("loanAmountField");
const QString annualRateField = QStringLiteral("annualRateField");
const QString yearsField = QStringLiteral("yearsField");
const QString paymentsPerYearButton = QStringLiteral("paymentsPerYearButton");
const QString compoundingPerYearButton = QStringLiteral("compoundingPerYearButton");
const QString paymentModeButton = QStringLiteral("paymentModeButton");
const QString extraPaymentField = QStringLiteral("extraPaymentField");
const QString firstPaymentDateField = QStringLiteral("firstPaymentDateField");
const QString roundToCentsField = QStringLiteral("roundToCentsField");
const QString rangeStartField = QStringLiteral("rangeStartField");
const QString rangeEndField = QStringLiteral("rangeEndField");
} // namespace

AmortizationController::AmortizationController(QObject* parent) : QVChartController(parent)
{
    load();
}

void AmortizationController::connectMvc()
{
    setModel(QVFunctionModel::create<AmortizationModel>());
    auto* view = new AmortizationView(this);
    setView(view);
    view->setText(paymentsPerYearButton, QStringLiteral("Monthly"));
    view->setText(compoundingPerYearButton, QStringLiteral("Monthly"));
    view->setText(paymentModeButton, QStringLiteral("END"));
    view->setText(roundToCentsField, QStringLiteral("1"));
    view->setText(rangeStartField, QStringLiteral("1"));
    view->setText(rangeEndField, QStringLiteral("12"));
}

QList<FunctionInput> AmortizationController::inputs() const
{
    using Kind = FunctionInput::Kind;
    return {{QStringLiteral("loanAmount"), loanAmountField},
            {QStringLiteral("annualRate"), annualRateField},
            {QStringLiteral("years"), yearsField},
            {QStringLiteral("paymentsPerYear"), paymentsPerYearButton, Kind::Choice,
             QStringLiteral("paymentsPerYearClicked")},
            {QStringLiteral("compoundingPerYear"), compoundingPerYearButton, Kind::Choice,
             QStringLiteral("compoundingPerYearClicked")},
            {QStringLiteral("paymentMode"), paymentModeButton, Kind::Choice,
             QStringLiteral("paymentModeClicked")},
            {QStringLiteral("extraPayment"), extraPaymentField},
            {QStringLiteral("firstPaymentDate"), firstPaymentDateField, Kind::DateField},
            {QStringLiteral("roundToCents"), roundToCentsField},
            {QStringLiteral("rangeStart"), rangeStartField},
            {QStringLiteral("rangeEnd"), rangeEndField}};
}

QStringList AmortizationController::frequencyWords() const
{
    QStringList words;
    for (const auto& [word, count] : AmortizationModel::frequencies())
        words << word;
    return words;
}

double AmortizationController::countOf(const QString& word) const
{
    for (const auto& [known, count] : AmortizationModel::frequencies()) {
        if (known == word)
            return count;
    }
    return 12;
}

void AmortizationController::paymentsPerYearClicked()
{
    presentChoices(QStringLiteral("Payments"), QStringLiteral("How often is a payment made?"),
                   frequencyWords(), paymentsPerYearButton, [this](const QString& word) {
                       qvFunctionView()->setText(paymentsPerYearButton, word);
                       if (!m_compoundingChosen)
                           qvFunctionView()->setText(compoundingPerYearButton, word);
                       fieldChanged();
                   });
}

void AmortizationController::compoundingPerYearClicked()
{
    presentChoices(QStringLiteral("Compounding"),
                   QStringLiteral("How often is interest compounded?"), frequencyWords(),
                   compoundingPerYearButton, [this](const QString& word) {
                       m_compoundingChosen = true;
                       qvFunctionView()->setText(compoundingPerYearButton, word);
                       fieldChanged();
                   });
}

void AmortizationController::paymentModeClicked()
{
    presentChoices(QStringLiteral("Mode"),
                   QStringLiteral("Please choose a mode for your payments."),
                   {QStringLiteral("BEG"), QStringLiteral("END")}, paymentModeButton,
                   [this](const QString& word) {
                       qvFunctionView()->setText(paymentModeButton, word);
                       fieldChanged();
                   });
}

void AmortizationController::fieldChanged()
{
    AmortizationModel* m = amortizationModel();
    QVFunctionView* v = qvFunctionView();
    m->loanAmount = fieldNumber(loanAmountField);
    m->annualRate = fieldNumber(annualRateField);
    m->years = fieldNumber(yearsField);
    m->paymentsPerYear = countOf(v->text(paymentsPerYearButton));
    m->compoundingPerYear = countOf(v->text(compoundingPerYearButton));
    m->paymentMode = v->text(paymentModeButton);
    m->extraPayment = fieldNumber(extraPaymentField);
    // A date that cannot be read gives the schedule no dates, and the payoff
    // date says why instead of standing empty.
    const QString dateText = v->text(firstPaymentDateField);
    m->firstPaymentDate = DateText::readIsoDate(dateText).value_or(QDate());
    const QString dateProblem = DateText::problemWith(dateText);
    m->roundToCents = fieldNumber(roundToCentsField) != 0;
    m->rangeStart = int(std::clamp(fieldNumber(rangeStartField), 0.0, 1e9));
    m->rangeEnd = int(std::clamp(fieldNumber(rangeEndField), 0.0, 1e9));
    m->calculateResult();
    showResultOf(QStringLiteral("paymentLabel"), "payment");
    showResultOf(QStringLiteral("numberOfPaymentsLabel"), "numberOfPayments");
    showResultOf(QStringLiteral("totalInterestLabel"), "totalInterest");
    showResultOf(QStringLiteral("totalPaidLabel"), "totalPaid");
    showResultOf(QStringLiteral("lastPaymentLabel"), "lastPayment");
    v->setText(QStringLiteral("payoffDateLabel"), m->payoffDateText());
    v->setNote(QStringLiteral("payoffDateLabel"),
               dateProblem.isEmpty()
                   ? QString()
                   : QStringLiteral("The first payment date cannot be read. %1").arg(dateProblem));
    showResultOf(QStringLiteral("rangePrincipalLabel"), "rangePrincipal");
    showResultOf(QStringLiteral("rangeInterestLabel"), "rangeInterest");
    showResultOf(QStringLiteral("rangeBalanceLabel"), "rangeBalance");
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
