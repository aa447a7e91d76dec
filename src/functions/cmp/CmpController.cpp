#include "CmpController.h"

#include "platform/ReviewPrompt.h"
#include "platform/Services.h"

namespace {
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
    setView(new QVFunctionView(this));
    // The buttons' first titles; the model reads them at the first edit.
    qvFunctionView()->setText(modeButton, QStringLiteral("END"));
    qvFunctionView()->setText(frequencyButton, QStringLiteral("Monthly"));
}

void CmpController::fieldChanged()
{
    QVChartController::fieldChanged();
    redrawChart(cmpModel()->yearlyBalances().size() > 1);
}

void CmpController::modeClicked()
{
    choose(modeButton, QStringLiteral("Mode"),
           QStringLiteral("Please choose a mode for your payments."));
}

void CmpController::frequencyClicked()
{
    choose(frequencyButton, QStringLiteral("Compounding"),
           QStringLiteral("Please choose compounding."));
}

void CmpController::choose(const QString& outlet, const QString& title, const QString& message)
{
    Services::reviewPrompt().requestReview();
    presentChoices(title, message, description()->field(outlet)->words, QString(),
                   [this, outlet](const QString& word) {
                       qvFunctionView()->setText(outlet, word);
                       fieldChanged();
                   });
}
