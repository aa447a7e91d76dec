#include "BlackScholesController.h"

BlackScholesController::BlackScholesController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void BlackScholesController::connectMvc()
{
    setModel(QVFunctionModel::create<BlackScholesModel>());
    setView(new QVFunctionView(this));
}
