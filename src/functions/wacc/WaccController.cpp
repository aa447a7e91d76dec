#include "WaccController.h"

namespace {
const QString costOfEquityField = QStringLiteral("costOfEquityField");
const QString equityField = QStringLiteral("equityField");
const QString costOfDebtField = QStringLiteral("costOfDebtField");
const QString debtField = QStringLiteral("debtField");
const QString corporateTaxRateField = QStringLiteral("corporateTaxRateField");
} // namespace

WaccController::WaccController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void WaccController::connectMvc()
{
    setModel(QVFunctionModel::create<WaccModel>());
    setView(new WaccView(this));
}

QList<FunctionInput> WaccController::inputs() const
{
    return {{QStringLiteral("costOfEquity"), costOfEquityField},
            {QStringLiteral("equity"), equityField},
            {QStringLiteral("costOfDebt"), costOfDebtField},
            {QStringLiteral("debt"), debtField},
            {QStringLiteral("corporateTaxRate"), corporateTaxRateField}};
}

void WaccController::fieldChanged()
{
    setInputValues();
    waccModel()->calculateResult();
    showResult();
}

void WaccController::setInputValues()
{
    WaccModel* m = waccModel();
    m->costOfEquity = fieldNumber(costOfEquityField);
    m->equity = fieldNumber(equityField);
    m->costOfDebt = fieldNumber(costOfDebtField);
    m->debt = fieldNumber(debtField);
    m->corporateTaxRate = fieldNumber(corporateTaxRateField);
}

void WaccController::showResult()
{
    showResultOf(QStringLiteral("waccResultLabel"), "weightedAverageCostOfCapital",
                 QStringLiteral("%"));
}
