#include "BreakevenController.h"

namespace {

struct Unknown {
    const char* key;
    const char* name; // in the note that says it cannot be read
    double (BreakevenModel::*solver)();
};

// The five values in form order, each with the model's solver for it.
const Unknown unknowns[] = {
    {"fixedCost", "Fixed costs", &BreakevenModel::calculateFixedCost},
    {"variableCost", "Variable cost per unit", &BreakevenModel::calculateVariableCost},
    {"price", "Price per unit", &BreakevenModel::calculatePrice},
    {"profit", "Profit", &BreakevenModel::calculateProfit},
    {"quantity", "Quantity", &BreakevenModel::calculateQuantity},
};

} // namespace

BreakevenController::BreakevenController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void BreakevenController::connectMvc()
{
    setModel(QVFunctionModel::create<BreakevenModel>());
    setView(new QVFunctionView(this));
}

void BreakevenController::solveFor(const QString& name)
{
    // A given value that cannot be read leaves the answer blank (NaN), with
    // a note naming it, rather than counting as 0.
    BreakevenModel* m = breakevenModel();
    m->clearNotes();
    QString unreadable;
    for (const Unknown& unknown : unknowns) {
        const QString outlet = description()->field(QLatin1String(unknown.key))->outlet;
        m->setProperty(unknown.key, givenNumber(outlet));
        qvFunctionView()->setNote(outlet, QString());
        const QString problem = fieldProblem(outlet);
        if (name != QLatin1String(unknown.key) && !problem.isEmpty() && unreadable.isEmpty())
            unreadable =
                QStringLiteral("%1 cannot be read. %2").arg(QLatin1String(unknown.name), problem);
    }
    for (const Unknown& unknown : unknowns) {
        if (name == QLatin1String(unknown.key)) {
            (m->*unknown.solver)();
            // An unreadable field comes first: the model's reason assumed
            // it was a number.
            if (!unreadable.isEmpty())
                m->setNote(name, unreadable);
            showResultOf(description()->field(name)->outlet, unknown.key);
        }
    }
}
