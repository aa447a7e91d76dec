#include "RoiController.h"

RoiController::RoiController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void RoiController::connectMvc()
{
    setModel(QVFunctionModel::create<RoiModel>());
    setView(new QVFunctionView(this));
}
