#pragma once

#include "WaccModel.h"
#include "framework/QVFunctionController.h"

// The WACC screen: cost and market value of equity and of debt, and the
// tax rate; the weighted average cost of capital, recomputed on every edit. Its fields and results
// are those of its description (WaccDescription.cpp).
class WaccController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit WaccController(QObject* parent = nullptr);

    WaccModel* waccModel() const { return static_cast<WaccModel*>(model()); }

protected:
    void connectMvc() override;
};
