#pragma once

#include "RoiModel.h"
#include "framework/QVFunctionController.h"

// The ROI screen: three fields (investment, amount received, years) and
// three results, recomputed on every edit. Its fields and results are
// those of its description (RoiDescription.cpp).
class RoiController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit RoiController(QObject* parent = nullptr);

    RoiModel* roiModel() const { return static_cast<RoiModel*>(model()); }

protected:
    void connectMvc() override;
};
