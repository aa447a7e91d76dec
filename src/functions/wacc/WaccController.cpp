#include "WaccController.h"

WaccController::WaccController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void WaccController::connectMvc()
{
    setModel(QVFunctionModel::create<WaccModel>());
    setView(new QVFunctionView(this));
}
