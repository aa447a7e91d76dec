#include "DayCountController.h"

#include <cmath>

namespace {
const QString startField = QStringLiteral("startField");
const QString endField = QStringLiteral("endField");
const QString basisButton = QStringLiteral("basisButton");
const QString addDaysField = QStringLiteral("addDaysField");
} // namespace

DayCountController::DayCountController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void DayCountController::connectMvc()
{
    setModel(QVFunctionModel::create<DayCountModel>());
    setView(new QVFunctionView(this));
    // Until another is chosen, the spreadsheets' default basis.
    qvFunctionView()->setText(basisButton, dayCountModel()->basis);
}

void DayCountController::basisClicked()
{
    presentChoice(QStringLiteral("basis"), QStringLiteral("Day Count Basis"),
                  QStringLiteral("How should the days be counted?"), [](const QString&) {});
}

void DayCountController::fieldChanged()
{
    DayCountModel* m = dayCountModel();
    m->start = givenDate(startField, &m->startProblem);
    m->end = givenDate(endField, &m->endProblem);
    m->basis = qvFunctionView()->text(basisButton);
    // An empty field adds nothing.
    m->addDays = givenNumber(addDaysField);
    const QString problem = fieldProblem(addDaysField);
    m->addDaysProblem =
        problem.isEmpty()
            ? QString()
            : QStringLiteral("%1 cannot be read. %2").arg(labelOf(addDaysField), problem);
    if (problem.isEmpty() && !std::isfinite(m->addDays))
        m->addDaysProblem = QVFunctionModel::tooLarge();
    m->calculateResult();
    showResults();
}
