#pragma once

#include "BlackScholesModel.h"
#include "BlackScholesView.h"
#include "framework/QVFunctionController.h"

// The Black-Scholes screen: five fields and the twelve results (price and
// greeks of the call and the put), recomputed on every edit.
class BlackScholesController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit BlackScholesController(QObject* parent = nullptr);

    QList<FunctionInput> inputs() const override;
    void fieldChanged() override;

    BlackScholesModel* blackScholesModel() const
    {
        return static_cast<BlackScholesModel*>(model());
    }
    BlackScholesView* blackScholesView() const
    {
        return static_cast<BlackScholesView*>(qvFunctionView());
    }

protected:
    void connectMvc() override;

private:
    void setInputValues();
    void showResult();
};
