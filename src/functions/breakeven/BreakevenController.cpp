#include "BreakevenController.h"

namespace {

struct Unknown {
    const char* name;
    double BreakevenModel::*value;
    double (BreakevenModel::*solver)();
};

// The five values in form order, each with its field ("<name>Field") and
// the model's solver for it.
const Unknown unknowns[] = {
    {"fixedCost", &BreakevenModel::fixedCost, &BreakevenModel::calculateFixedCost},
    {"variableCost", &BreakevenModel::variableCost, &BreakevenModel::calculateVariableCost},
    {"price", &BreakevenModel::price, &BreakevenModel::calculatePrice},
    {"profit", &BreakevenModel::profit, &BreakevenModel::calculateProfit},
    {"quantity", &BreakevenModel::quantity, &BreakevenModel::calculateQuantity},
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
    BreakevenModel* m = breakevenModel();
    for (const Unknown& unknown : unknowns)
        m->*unknown.value = fieldNumber(fieldOf(unknown));
    for (const Unknown& unknown : unknowns) {
        if (name == QLatin1String(unknown.name))
            showNumber(fieldOf(unknown), (m->*unknown.solver)());
    }
}
