#pragma once

#include "TipModel.h"
#include "framework/QVFunctionController.h"

// The tip screen: bill, tip percent, people and sales tax; four results,
// recomputed on every edit. Its fields and results are
// those of its description (TipDescription.cpp).
class TipController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit TipController(QObject* parent = nullptr);

    TipModel* tipModel() const { return static_cast<TipModel*>(model()); }

protected:
    void connectMvc() override;
};
