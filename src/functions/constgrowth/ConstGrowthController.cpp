#include "ConstGrowthController.h"

const QString ConstGrowthController::unchosenTitle = QStringLiteral("Choose");

ConstGrowthController::ConstGrowthController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

const FieldDescription& ConstGrowthController::dividendTypeField() const
{
    return *description()->field(QStringLiteral("dividendType"));
}

void ConstGrowthController::connectMvc()
{
    setModel(QVFunctionModel::create<ConstGrowthModel>());
    setView(new QVFunctionView(this));
    qvFunctionView()->setText(dividendTypeField().outlet, unchosenTitle);
}

void ConstGrowthController::fieldChanged()
{
    // The type is the button's title as it stands: a title that is neither
    // type (before the first choice) leaves the price as it was.
    constGrowthModel()->dividendType = qvFunctionView()->text(dividendTypeField().outlet);
    QVFunctionController::fieldChanged();
}

void ConstGrowthController::dividendTypeClicked()
{
    // This sheet offers the two types only, with no "Cancel" button.
    const FieldDescription& field = dividendTypeField();
    const QString outlet = field.outlet;
    presentChoices(
        QStringLiteral("Dividend Type"), QStringLiteral("Please choose a type for dividends."),
        field.words, outlet,
        [this, outlet](const QString& word) {
            qvFunctionView()->setText(outlet, word);
            fieldChanged();
        },
        false);
}
