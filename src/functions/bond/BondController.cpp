#include "BondController.h"

#include "platform/ReviewPrompt.h"
#include "platform/Services.h"

namespace {
const QString faceValueField = QStringLiteral("faceValueField");
const QString couponRateField = QStringLiteral("couponRateField");
const QString yieldToMaturityField = QStringLiteral("yieldToMaturityField");
const QString yearsField = QStringLiteral("yearsField");
const QString frequencyButton = QStringLiteral("frequencyButton");
} // namespace

BondController::BondController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void BondController::connectMvc()
{
    setModel(QVFunctionModel::create<BondModel>());
    setView(new BondView(this));
    bondView()->setText(frequencyButton, QStringLiteral("Annually"));
}

QList<FunctionInput> BondController::inputs() const
{
    return {{QStringLiteral("faceValue"), faceValueField},
            {QStringLiteral("couponRate"), couponRateField},
            {QStringLiteral("yieldToMaturity"), yieldToMaturityField},
            {QStringLiteral("years"), yearsField},
            {QStringLiteral("frequency"), frequencyButton, FunctionInput::Kind::Choice,
             QStringLiteral("frequencyClicked")}};
}

void BondController::fieldChanged()
{
    setInputValues();
    bondModel()->calculateResult();
    showResult();
}

void BondController::frequencyClicked()
{
    Services::reviewPrompt().requestReview();
    QStringList words;
    for (const auto& [word, count] : BondModel::frequencies())
        words << word;
    presentChoices(QStringLiteral("Frequency"), QStringLiteral("Please choose a frequency."), words,
                   frequencyButton, [this](const QString& word) {
                       bondView()->setText(frequencyButton, word);
                       fieldChanged();
                   });
}

void BondController::setInputValues()
{
    BondModel* m = bondModel();
    m->faceValue = fieldNumber(faceValueField);
    m->couponRate = fieldNumber(couponRateField);
    m->years = fieldNumber(yearsField);
    m->yieldToMaturity = fieldNumber(yieldToMaturityField);
    m->frequency = bondView()->text(frequencyButton);
}

void BondController::showResult()
{
    showResultOf(QStringLiteral("bondValueLabel"), "bondValue");
    showResultOf(QStringLiteral("maculayDurationLabel"), "maculayDuration");
    showResultOf(QStringLiteral("modifiedDurationLabel"), "modifiedDuration");
    showResultOf(QStringLiteral("convexityLabel"), "convexity");
}
