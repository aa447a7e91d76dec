#include "TipController.h"

TipController::TipController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void TipController::connectMvc()
{
    setModel(QVFunctionModel::create<TipModel>());
    setView(new QVFunctionView(this));
}
