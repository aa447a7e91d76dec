#include "MarginController.h"

MarginController::MarginController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void MarginController::connectMvc()
{
    setModel(QVFunctionModel::create<MarginModel>());
    setView(new QVFunctionView(this));
}
