#include "CapmController.h"

namespace {
const QString stockReturnField = QStringLiteral("stockReturnField");
const QString marketReturnField = QStringLiteral("marketReturnField");
const QString riskFreeRateField = QStringLiteral("riskFreeRateField");
const QString betaField = QStringLiteral("betaField");
} // namespace

CapmController::CapmController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void CapmController::connectMvc()
{
    setModel(QVFunctionModel::create<CapmModel>());
    setView(new CapmView(this));
}

QList<FunctionInput> CapmController::inputs() const
{
    return {{QStringLiteral("stockReturn"), stockReturnField},
            {QStringLiteral("marketReturn"), marketReturnField},
            {QStringLiteral("riskFreeRate"), riskFreeRateField},
            {QStringLiteral("beta"), betaField}};
}

QStringList CapmController::solveButtons() const
{
    return {QStringLiteral("stockReturn"), QStringLiteral("marketReturn"),
            QStringLiteral("riskFreeRate"), QStringLiteral("beta")};
}

void CapmController::solve(const QString& name)
{
    if (name == u"stockReturn")
        stockReturnClicked();
    else if (name == u"marketReturn")
        marketReturnClicked();
    else if (name == u"riskFreeRate")
        riskFreeRateClicked();
    else if (name == u"beta")
        betaClicked();
}

void CapmController::setInputValues()
{
    CapmModel* m = capmModel();
    m->stockReturn = fieldNumber(stockReturnField);
    m->marketReturn = fieldNumber(marketReturnField);
    m->riskFreeRate = fieldNumber(riskFreeRateField);
    m->beta = fieldNumber(betaField);
}

void CapmController::solveInto(const QString& outlet, double (CapmModel::*solver)())
{
    setInputValues();
    // A solve's note is about that solve alone.
    capmModel()->clearNotes();
    for (const FunctionInput& input : inputs())
        qvFunctionView()->setNote(input.outlet, {});
    (capmModel()->*solver)();
    for (const FunctionInput& input : inputs()) {
        if (input.outlet == outlet)
            showResultOf(outlet, input.property.toLatin1().constData());
    }
}

void CapmController::stockReturnClicked()
{
    solveInto(stockReturnField, &CapmModel::calculateStockReturn);
}

void CapmController::marketReturnClicked()
{
    solveInto(marketReturnField, &CapmModel::calculateMarketReturn);
}

void CapmController::riskFreeRateClicked()
{
    solveInto(riskFreeRateField, &CapmModel::calculateRiskFreeRate);
}

void CapmController::betaClicked()
{
    solveInto(betaField, &CapmModel::calculateBeta);
}
