#pragma once

#include "BlackScholesModel.h"
#include "framework/QVFunctionController.h"

// The Black-Scholes screen: five fields and the twelve results (price and
// greeks of the call and the put), recomputed on every edit. Its fields and results are
// those of its description (BlackScholesDescription.cpp).
class BlackScholesController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit BlackScholesController(QObject* parent = nullptr);

    BlackScholesModel* blackScholesModel() const
    {
        return static_cast<BlackScholesModel*>(model());
    }

protected:
    void connectMvc() override;
};
