#include "RateConversionController.h"

namespace {
const QString nominalRateField = QStringLiteral("nominalRateField");
const QString effectiveRateField = QStringLiteral("effectiveRateField");
const QString compoundingPerYearField = QStringLiteral("compoundingPerYearField");
const QString continuousRateLabel = QStringLiteral("continuousRateResultLabel");
} // namespace

RateConversionController::RateConversionController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void RateConversionController::connectMvc()
{
    setModel(QVFunctionModel::create<RateConversionModel>());
    setView(new RateConversionView(this));
}

QList<FunctionInput> RateConversionController::inputs() const
{
    return {{QStringLiteral("nominalRate"), nominalRateField},
            {QStringLiteral("effectiveRate"), effectiveRateField},
            {QStringLiteral("compoundingPerYear"), compoundingPerYearField}};
}

QStringList RateConversionController::solveButtons() const
{
    return {QStringLiteral("effectiveRate"), QStringLiteral("nominalRate")};
}

void RateConversionController::solve(const QString& name)
{
    RateConversionModel* m = rateConversionModel();
    m->nominalRate = fieldNumber(nominalRateField);
    m->effectiveRate = fieldNumber(effectiveRateField);
    m->compoundingPerYear = fieldNumber(compoundingPerYearField);
    if (name == u"effectiveRate")
        showNumber(effectiveRateField, m->calculateEffectiveRate());
    else if (name == u"nominalRate")
        showNumber(nominalRateField, m->calculateNominalRate());
    else
        return;
    showResultOf(continuousRateLabel, "continuousRate", QStringLiteral("%"));
}
