#include "ConstGrowthController.h"

#include "framework/Presenter.h"

#include <QPointer>

namespace {
const QString dividendTypeButton = QStringLiteral("dividendTypeButton");
const QString dividendField = QStringLiteral("dividendField");
const QString returnRateField = QStringLiteral("returnRateField");
const QString growthRateField = QStringLiteral("growthRateField");
const QString priceResultLabel = QStringLiteral("priceResultLabel");
} // namespace

const QString ConstGrowthController::unchosenTitle = QStringLiteral("Choose");

ConstGrowthController::ConstGrowthController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void ConstGrowthController::connectMvc()
{
    setModel(QVFunctionModel::create<ConstGrowthModel>());
    setView(new ConstGrowthView(this));
    qvFunctionView()->setText(dividendTypeButton, unchosenTitle);
}

QList<FunctionInput> ConstGrowthController::inputs() const
{
    return {{QStringLiteral("dividendType"), dividendTypeButton, FunctionInput::Kind::Choice,
             QStringLiteral("dividendTypeClicked")},
            {QStringLiteral("dividend"), dividendField},
            {QStringLiteral("returnRate"), returnRateField},
            {QStringLiteral("growthRate"), growthRateField}};
}

void ConstGrowthController::fieldChanged()
{
    setInputValues();
    constGrowthModel()->calculateResult();
    showResult();
}

void ConstGrowthController::dividendTypeClicked()
{
    // Built here rather than with presentChoices(): this sheet offers the
    // two types only, with no "Cancel" button.
    Presenter* sheetPresenter = presenter();
    if (!sheetPresenter)
        return;
    const QStringList choices = {ConstGrowthModel::currentDividend, ConstGrowthModel::nextDividend};
    AlertRequest sheet;
    sheet.kind = AlertRequest::Kind::ActionSheet;
    sheet.title = QStringLiteral("Dividend Type");
    sheet.message = QStringLiteral("Please choose a type for dividends.");
    for (const QString& choice : choices)
        sheet.actions.append({choice});
    sheet.anchor = dividendTypeButton;
    QPointer<ConstGrowthController> self(this);
    sheetPresenter->present(sheet, [self, choices](const QString& action, const QString&) {
        if (!self || !choices.contains(action))
            return;
        self->qvFunctionView()->setText(dividendTypeButton, action);
        self->fieldChanged();
    });
}

void ConstGrowthController::setInputValues()
{
    ConstGrowthModel* m = constGrowthModel();
    m->dividendType = qvFunctionView()->text(dividendTypeButton);
    m->dividend = fieldNumber(dividendField);
    m->returnRate = fieldNumber(returnRateField);
    m->growthRate = fieldNumber(growthRateField);
}

void ConstGrowthController::showResult()
{
    showResultOf(priceResultLabel, "price");
}
