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
    showResultOf(QStringLiteral("callPriceLabel"), "callPrice");
    showResultOf(QStringLiteral("putPriceLabel"), "putPrice");
    showResultOf(QStringLiteral("callDeltaLabel"), "callDelta");
    showResultOf(QStringLiteral("putDeltaLabel"), "putDelta");
    showResultOf(QStringLiteral("callGammaLabel"), "callGamma");
    showResultOf(QStringLiteral("putGammaLabel"), "putGamma");
    showResultOf(QStringLiteral("callVegaLabel"), "callVega");
    showResultOf(QStringLiteral("putVegaLabel"), "putVega");
    showResultOf(QStringLiteral("callThetaLabel"), "callTheta");
    showResultOf(QStringLiteral("putThetaLabel"), "putTheta");
    showResultOf(QStringLiteral("callRhoLabel"), "callRho");
    showResultOf(QStringLiteral("putRhoLabel"), "putRho");
}
