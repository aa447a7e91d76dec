#include "RoiController.h"

#include "RoiView.h"

RoiController::RoiController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void RoiController::connectMvc()
{
    setModel(QVFunctionModel::create<RoiModel>());
    setView(new RoiView(this));
}

QList<FunctionInput> RoiController::inputs() const
{
    return {{QStringLiteral("investmentAmount"), QStringLiteral("investmentField")},
            {QStringLiteral("futureValue"), QStringLiteral("futureValueField")},
            {QStringLiteral("years"), QStringLiteral("yearsField")}};
}

void RoiController::fieldChanged()
{
    setInputValues();
    roiModel()->calculateResult();
    showResult();
}

void RoiController::setInputValues()
{
    RoiModel* m = roiModel();
    m->investmentAmount = fieldNumber(QStringLiteral("investmentField"));
    m->futureValue = fieldNumber(QStringLiteral("futureValueField"));
    m->years = fieldNumber(QStringLiteral("yearsField"));
}

void RoiController::showResult()
{
    showResultOf(QStringLiteral("gainResultLabel"), "gain");
    showResultOf(QStringLiteral("roiResultLabel"), "roi", QStringLiteral("%"));
    showResultOf(QStringLiteral("annualizedRoiResultLabel"), "annualizedRoi", QStringLiteral("%"));
}
