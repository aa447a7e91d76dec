#pragma once

#include "PeriodReturnModel.h"
#include "PeriodReturnView.h"
#include "framework/QVFunctionController.h"

// The holding-period-return screen: three fields, one result, recomputed on
// every edit.
class PeriodReturnController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit PeriodReturnController(QObject* parent = nullptr);

    QList<FunctionInput> inputs() const override;
    void fieldChanged() override;

    PeriodReturnModel* periodReturnModel() const
    {
        return static_cast<PeriodReturnModel*>(model());
    }
    PeriodReturnView* periodReturnView() const
    {
        return static_cast<PeriodReturnView*>(qvFunctionView());
    }

protected:
    void connectMvc() override;

private:
    void setInputValues();
    void showResult();
};
