#pragma once

#include "BreakevenModel.h"
#include "BreakevenView.h"
#include "framework/QVFunctionController.h"

// The breakeven screen: five fields, each with a solve button. A button
// reads all five fields, solves its own value from the other four and
// writes it into its field.
class BreakevenController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit BreakevenController(QObject* parent = nullptr);

    QList<FunctionInput> inputs() const override;
    QStringList solveButtons() const override;
    void solve(const QString& name) override;

    BreakevenModel* breakevenModel() const { return static_cast<BreakevenModel*>(model()); }

protected:
    void connectMvc() override;
};
