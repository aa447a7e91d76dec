#include "CmpController.h"

#include "platform/ReviewPrompt.h"
#include "platform/Services.h"

namespace {
const QString principalAmountField = QStringLiteral("principalAmountField");
const QString annualRateField = QStringLiteral("annualRateField");
const QString periodField = QStringLiteral("periodField");
const QString paymentField = QStringLiteral("paymentField");
const QString modeButton = QStringLiteral("modeButton");
const QString frequencyButton = QStringLiteral("frequencyButton");
} // namespace

CmpController::CmpController(QObject* parent) : QVChartController(parent)
{
    load();
}

void CmpController::connectMvc()
{
    setModel(QVFunctionModel::create<CmpModel>());
    setView(new CmpView(this));
    // The buttons' first titles; the model reads them at the first edit.
    qvFunctionView()->setText(modeButton, QStringLiteral("END"));
    qvFunctionView()->setText(frequencyButton, QStringLiteral("Monthly"));
}

QList<FunctionInput> CmpController::inputs() const
{
    return {{QStringLiteral("principalAmount"), principalAmountField},
            {QStringLiteral("annualRate"), annualRateField},
            {QStringLiteral("period"), periodField},
            {QStringLiteral("payment"), paymentField},
            {QStringLiteral("mode"), modeButton, FunctionInput::Kind::Choice,
             QStringLiteral("modeClicked")},
            {QStringLiteral("compounding"), frequencyButton, FunctionInput::Kind::Choice,
             QStringLiteral("frequencyClicked")}};
}

void CmpController::fieldChanged()
{
    recalculate();
}

void CmpController::setInputValues()
{
    CmpModel* m = cmpModel();
    m->principalAmount = fieldNumber(principalAmountField);
    m->annualRate = fieldNumber(annualRateField);
    m->period = fieldNumber(periodField);
    m->payment = fieldNumber(paymentField);
    m->compounding = qvFunctionView()->text(frequencyButton);
    m->mode = qvFunctionView()->text(modeButton);
}

void CmpController::recalculate()
{
    setInputValues();
    cmpModel()->calculateResult();
    showResult();
}

void CmpController::showResult()
{
    const CmpModel* m = cmpModel();
    showResultOf(QStringLiteral("balanceResultLabel"), "balance");
    showResultOf(QStringLiteral("interestAmounResultLabel"), "interestAmount");
    showResultOf(QStringLiteral("totalPrincipalResultLabel"), "totalPrincipal");
    showResultOf(QStringLiteral("apyResultLabel"), "apy", QStringLiteral("%"));

    redrawChart(m->yearlyBalances().size() > 1);
}

void CmpController::modeClicked()
{
    Services::reviewPrompt().requestReview();
    // Popovers have no button to point at: they sit in the screen's centre.
    presentChoices(
        QStringLiteral("Mode"), QStringLiteral("Please choose a mode for your payments."),
        {QStringLiteral("BEG"), QStringLiteral("END")}, QString(), [this](const QString& word) {
            qvFunctionView()->setText(modeButton, word);
            recalculate();
        });
}

void CmpController::frequencyClicked()
{
    Services::reviewPrompt().requestReview();
    presentChoices(QStringLiteral("Compounding"), QStringLiteral("Please choose compounding."),
                   {QStringLiteral("Monthly"), QStringLiteral("Quarterly"),
                    QStringLiteral("Semiannually"), QStringLiteral("Annually")},
                   QString(), [this](const QString& word) {
                       qvFunctionView()->setText(frequencyButton, word);
                       recalculate();
                   });
}
