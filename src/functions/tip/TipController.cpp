#include "TipController.h"

#include "TipView.h"
#include "framework/FinanceMath.h"

TipController::TipController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void TipController::connectMvc()
{
    setModel(QVFunctionModel::create<TipModel>());
    setView(new TipView(this));
}

QList<FunctionInput> TipController::inputs() const
{
    return {{QStringLiteral("bill"), QStringLiteral("billField")},
            {QStringLiteral("tipPercent"), QStringLiteral("tipPercentField")},
            {QStringLiteral("numberOfPeople"), QStringLiteral("numberOfPeopleField")},
            {QStringLiteral("salesTaxPercent"), QStringLiteral("salesTaxField")}};
}

void TipController::fieldChanged()
{
    setInputValues();
    tipModel()->calculateResult();
    showResult();
}

void TipController::setInputValues()
{
    TipModel* m = tipModel();
    m->bill = fieldNumber(QStringLiteral("billField"));
    m->tipPercent = fieldNumber(QStringLiteral("tipPercentField"));
    // People are whole: 2.9 count as 2, -1.5 as -1.
    m->numberOfPeople =
        FinanceMath::saturatedInteger(fieldNumber(QStringLiteral("numberOfPeopleField")));
    m->salesTaxPercent = fieldNumber(QStringLiteral("salesTaxField"));
}

void TipController::showResult()
{
    showResultOf(QStringLiteral("tipResultLabel"), "tip");
    showResultOf(QStringLiteral("totalAmountResultLabel"), "totalAmount");
    showResultOf(QStringLiteral("tipPerPersonResultLabel"), "tipPerPerson");
    showResultOf(QStringLiteral("totalPerPersonResultLabel"), "totalPerPerson");
}
