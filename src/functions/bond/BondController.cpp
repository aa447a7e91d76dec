#include "BondController.h"

#include "platform/ReviewPrompt.h"
#include "platform/Services.h"

namespace {
const QString frequencyButton = QStringLiteral("frequencyButton");
} // namespace

BondController::BondController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void BondController::connectMvc()
{
    setModel(QVFunctionModel::create<BondModel>());
    setView(new QVFunctionView(this));
    // The button's first title; the model reads it at the first edit.
    qvFunctionView()->setText(frequencyButton, QStringLiteral("Annually"));
}

void BondController::frequencyClicked()
{
    Services::reviewPrompt().requestReview();
    presentChoices(QStringLiteral("Frequency"), QStringLiteral("Please choose a frequency."),
                   description()->field(frequencyButton)->words, frequencyButton,
                   [this](const QString& word) {
                       qvFunctionView()->setText(frequencyButton, word);
                       fieldChanged();
                   });
}
