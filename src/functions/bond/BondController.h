#pragma once

#include "BondModel.h"
#include "BondView.h"
#include "framework/QVFunctionController.h"

// The bond screen: four fields and the frequency button; the price,
// durations and convexity are recomputed on every edit and every frequency
// choice.
class BondController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit BondController(QObject* parent = nullptr);

    QList<FunctionInput> inputs() const override;
    void fieldChanged() override;
    Q_INVOKABLE void frequencyClicked();

    BondModel* bondModel() const { return static_cast<BondModel*>(model()); }
    BondView* bondView() const { return static_cast<BondView*>(qvFunctionView()); }

protected:
    void connectMvc() override;

private:
    void setInputValues();
    void showResult();
};
