#include "GrowthController.h"

GrowthController::GrowthController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void GrowthController::connectMvc()
{
    setModel(QVFunctionModel::create<GrowthModel>());
    setView(new QVFunctionView(this));
}
