#include "CapmController.h"

CapmController::CapmController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void CapmController::connectMvc()
{
    setModel(QVFunctionModel::create<CapmModel>());
    setView(new QVFunctionView(this));
}

void CapmController::solveFor(const QString& name)
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

void CapmController::solveInto(const QString& key, double (CapmModel::*solver)())
{
    readFields();
    // A solve's note is about that solve alone.
    capmModel()->clearNotes();
    for (const FieldDescription& field : description()->fields)
        qvFunctionView()->setNote(field.outlet, {});
    (capmModel()->*solver)();
    showResultOf(description()->field(key)->outlet, key.toLatin1().constData());
}

void CapmController::stockReturnClicked()
{
    solveInto(QStringLiteral("stockReturn"), &CapmModel::calculateStockReturn);
}

void CapmController::marketReturnClicked()
{
    solveInto(QStringLiteral("marketReturn"), &CapmModel::calculateMarketReturn);
}

void CapmController::riskFreeRateClicked()
{
    solveInto(QStringLiteral("riskFreeRate"), &CapmModel::calculateRiskFreeRate);
}

void CapmController::betaClicked()
{
    solveInto(QStringLiteral("beta"), &CapmModel::calculateBeta);
}
