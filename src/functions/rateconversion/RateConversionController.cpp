#include "RateConversionController.h"

#include <cmath>
#include <utility>

namespace {
const QString nominalRateField = QStringLiteral("nominalRateField");
const QString effectiveRateField = QStringLiteral("effectiveRateField");
const QString compoundingPerYearField = QStringLiteral("compoundingPerYearField");
} // namespace

RateConversionController::RateConversionController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void RateConversionController::connectMvc()
{
    setModel(QVFunctionModel::create<RateConversionModel>());
    setView(new QVFunctionView(this));
}

void RateConversionController::solveFor(const QString& name)
{
    const bool effective = name == u"effectiveRate";
    if (!effective && name != u"nominalRate")
        return;
    // A field the solve reads that cannot be read leaves what depends on it
    // blank (NaN), with a note naming it, rather than counting as 0.
    RateConversionModel* m = rateConversionModel();
    m->clearNotes();
    m->nominalRate = givenNumber(nominalRateField);
    m->effectiveRate = givenNumber(effectiveRateField);
    m->compoundingPerYear = givenNumber(compoundingPerYearField);
    const std::pair<QString, const char*> given[] = {
        {effective ? nominalRateField : effectiveRateField,
         effective ? "The nominal rate" : "The effective rate"},
        {compoundingPerYearField, "The compoundings a year"}};
    QString unreadable;
    for (const auto& [outlet, label] : given) {
        if (const QString problem = fieldProblem(outlet); !problem.isEmpty()) {
            unreadable = QStringLiteral("%1 cannot be read. %2").arg(QLatin1String(label), problem);
            break;
        }
    }
    if (effective)
        m->calculateEffectiveRate();
    else
        m->calculateNominalRate();
    // An unreadable field comes first: the model's reasons assumed it was a
    // number.
    if (!unreadable.isEmpty()) {
        m->setNote(name, unreadable);
        if (std::isnan(m->continuousRate))
            m->setNote(QStringLiteral("continuousRate"), unreadable);
    }
    qvFunctionView()->setNote(effective ? nominalRateField : effectiveRateField, QString());
    showResultOf(effective ? effectiveRateField : nominalRateField,
                 effective ? "effectiveRate" : "nominalRate");
    showResults();
}
