#include "BlackScholesController.h"

namespace {
const QString assetPriceField = QStringLiteral("assetPriceField");
const QString exercisePriceField = QStringLiteral("exercisePriceField");
const QString timeToExpirationField = QStringLiteral("timeToExpirationField");
const QString standardDeviationField = QStringLiteral("standardDeviationField");
const QString riskFreeRateField = QStringLiteral("riskFreeRateField");
} // namespace

BlackScholesController::BlackScholesController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void BlackScholesController::connectMvc()
{
    setModel(QVFunctionModel::create<BlackScholesModel>());
    setView(new BlackScholesView(this));
}

QList<FunctionInput> BlackScholesController::inputs() const
{
    return {{QStringLiteral("assetPrice"), assetPriceField},
            {QStringLiteral("exercisePrice"), exercisePriceField},
            {QStringLiteral("timeToExpiration"), timeToExpirationField},
            {QStringLiteral("standardDeviation"), standardDeviationField},
            {QStringLiteral("riskFreeRate"), riskFreeRateField}};
}

void BlackScholesController::fieldChanged()
{
    setInputValues();
    blackScholesModel()->calculateResult();
    showResult();
}

void BlackScholesController::setInputValues()
{
    BlackScholesModel* m = blackScholesModel();
    m->assetPrice = fieldNumber(assetPriceField);
    m->exercisePrice = fieldNumber(exercisePriceField);
    m->timeToExpiration = fieldNumber(timeToExpirationField);
    m->standardDeviation = fieldNumber(standardDeviationField);
    m->riskFreeRate = fieldNumber(riskFreeRateField);
}

void BlackScholesController::showResult()
{
    const BlackScholesModel* m = blackScholesModel();
    showNumber(QStringLiteral("callPriceLabel"), m->callPrice);
    showNumber(QStringLiteral("putPriceLabel"), m->putPrice);
    showNumber(QStringLiteral("callDeltaLabel"), m->callDelta);
    showNumber(QStringLiteral("putDeltaLabel"), m->putDelta);
    showNumber(QStringLiteral("callGammaLabel"), m->callGamma);
    showNumber(QStringLiteral("putGammaLabel"), m->putGamma);
    showNumber(QStringLiteral("callVegaLabel"), m->callVega);
    showNumber(QStringLiteral("putVegaLabel"), m->putVega);
    showNumber(QStringLiteral("callThetaLabel"), m->callTheta);
    showNumber(QStringLiteral("putThetaLabel"), m->putTheta);
    showNumber(QStringLiteral("callRhoLabel"), m->callRho);
    showNumber(QStringLiteral("putRhoLabel"), m->putRho);
}
