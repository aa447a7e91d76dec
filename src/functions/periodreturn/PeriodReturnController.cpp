#include "PeriodReturnController.h"

namespace {
const QString initialValueField = QStringLiteral("initialValueField");
const QString endingValueField = QStringLiteral("endingValueField");
const QString incomeField = QStringLiteral("incomeField");
const QString hprResultLabel = QStringLiteral("hprResultLabel");
} // namespace

PeriodReturnController::PeriodReturnController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void PeriodReturnController::connectMvc()
{
    setModel(QVFunctionModel::create<PeriodReturnModel>());
    setView(new PeriodReturnView(this));
}

QList<FunctionInput> PeriodReturnController::inputs() const
{
    return {{QStringLiteral("initialValue"), initialValueField},
            {QStringLiteral("endingValue"), endingValueField},
            {QStringLiteral("income"), incomeField}};
}

void PeriodReturnController::fieldChanged()
{
    setInputValues();
    periodReturnModel()->calculateResult();
    showResult();
}

void PeriodReturnController::setInputValues()
{
    PeriodReturnModel* m = periodReturnModel();
    m->initialValue = fieldNumber(initialValueField);
    m->endingValue = fieldNumber(endingValueField);
    m->income = fieldNumber(incomeField);
}

void PeriodReturnController::showResult()
{
    showResultOf(hprResultLabel, "hpr", QStringLiteral("%"));
}
