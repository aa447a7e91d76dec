#include "PeriodReturnController.h"

PeriodReturnController::PeriodReturnController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void PeriodReturnController::connectMvc()
{
    setModel(QVFunctionModel::create<PeriodReturnModel>());
    setView(new QVFunctionView(this));
}
