#include "BreakevenController.h"

namespace {

struct Unknown {
    const char* name;
    const char* label;
    double BreakevenModel::*value;
    double (BreakevenModel::*solver)();
};

// The five values in form order, each with its field ("<name>Field"), its
// name on the screen and the model's solver for it.
const Unknown unknowns[] = {
    {"fixedCost", "Fixed costs", &BreakevenModel::fixedCost, &BreakevenModel::calculateFixedCost},
    {"variableCost", "Variable cost per unit", &BreakevenModel::variableCost,
     &BreakevenModel::calculateVariableCost},
    {"price", "Price per unit", &BreakevenModel::price, &BreakevenModel::calculatePrice},
    {"profit", "Profit", &BreakevenModel::profit, &BreakevenModel::calculateProfit},
    {"quantity", "Quantity", &BreakevenModel::quantity, &BreakevenModel::calculateQuantity},
};

QString fieldOf(const Unknown& unknown)
{
    return QLatin1String(unknown.name) + QStringLiteral("Field");
}

} // namespace

BreakevenController::BreakevenController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void BreakevenController::connectMvc()
{
    setModel(QVFunctionModel::create<BreakevenModel>());
    setView(new BreakevenView(this));
}

QList<FunctionInput> BreakevenController::inputs() const
{
    QList<FunctionInput> list;
    for (const Unknown& unknown : unknowns)
        list.append({QLatin1String(unknown.name), fieldOf(unknown)});
    return list;
}

QStringList BreakevenController::solveButtons() const
{
    // The usual question first.
    return {QStringLiteral("quantity"), QStringLiteral("price"), QStringLiteral("fixedCost"),
            QStringLiteral("variableCost"), QStringLiteral("profit")};
}

void BreakevenController::solve(const QString& name)
{
    // A given value that cannot be read leaves the answer blank (NaN), with
    // a note naming it, rather than counting as 0.
    BreakevenModel* m = breakevenModel();
    m->clearNotes();
    QString unreadable;
    for (const Unknown& unknown : unknowns) {
        m->*unknown.value = givenNumber(fieldOf(unknown));
        qvFunctionView()->setNote(fieldOf(unknown), QString());
        const QString problem = fieldProblem(fieldOf(unknown));
        if (name != QLatin1String(unknown.name) && !problem.isEmpty() && unreadable.isEmpty())
            unreadable =
                QStringLiteral("%1 cannot be read. %2").arg(QLatin1String(unknown.label), problem);
    }
    for (const Unknown& unknown : unknowns) {
        if (name == QLatin1String(unknown.name)) {
            (m->*unknown.solver)();
            // An unreadable field comes first: the model's reason assumed
            // it was a number.
            if (!unreadable.isEmpty())
                m->setNote(name, unreadable);
            showResultOf(fieldOf(unknown), unknown.name);
        }
    }
}
