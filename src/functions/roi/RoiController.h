#pragma once

#include "RoiModel.h"
#include "framework/QVFunctionController.h"

// The ROI screen: three fields (investment, amount received, years) and
// three results, recomputed on every edit.
class RoiController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit RoiController(QObject* parent = nullptr);

    QList<FunctionInput> inputs() const override;
    void fieldChanged() override;

    RoiModel* roiModel() const { return static_cast<RoiModel*>(model()); }

protected:
    void connectMvc() override;

private:
    void setInputValues();
    void showResult();
};
