#pragma once

#include "CapmModel.h"
#include "framework/QVFunctionController.h"

// The CAPM screen: four fields, each with a solve button. A button reads
// all four fields, solves its own value from the other three and writes it
// into its field, replacing what was typed there. Edits compute nothing.
// Its fields and solve buttons are those of its description
// (CapmDescription.cpp).
class CapmController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit CapmController(QObject* parent = nullptr);

    Q_INVOKABLE void stockReturnClicked();
    Q_INVOKABLE void marketReturnClicked();
    Q_INVOKABLE void riskFreeRateClicked();
    Q_INVOKABLE void betaClicked();

    CapmModel* capmModel() const { return static_cast<CapmModel*>(model()); }

protected:
    void solveFor(const QString& name) override;
    void connectMvc() override;

private:
    // Solves the value of `key` into its field.
    void solveInto(const QString& key, double (CapmModel::*solver)());
};
