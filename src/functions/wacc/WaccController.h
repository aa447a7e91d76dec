#pragma once

#include "WaccModel.h"
#include "WaccView.h"
#include "framework/QVFunctionController.h"

// The WACC screen: five fields and the result, recomputed on every edit.
class WaccController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit WaccController(QObject* parent = nullptr);

    QList<FunctionInput> inputs() const override;
    void fieldChanged() override;

    WaccModel* waccModel() const { return static_cast<WaccModel*>(model()); }
    WaccView* waccView() const { return static_cast<WaccView*>(qvFunctionView()); }

protected:
    void connectMvc() override;

private:
    void setInputValues();
    void showResult();
};
