#pragma once

#include "PeriodReturnModel.h"
#include "framework/QVFunctionController.h"

// The holding-period-return screen: initial value, ending value and income;
// the return, recomputed on every edit. Its fields and results are
// those of its description (PeriodReturnDescription.cpp).
class PeriodReturnController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit PeriodReturnController(QObject* parent = nullptr);

    PeriodReturnModel* periodReturnModel() const
    {
        return static_cast<PeriodReturnModel*>(model());
    }

protected:
    void connectMvc() override;
};
