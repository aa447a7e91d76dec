#pragma once

#include "BreakevenModel.h"
#include "framework/QVFunctionController.h"

// The breakeven screen: five fields, each with a solve button. A button
// reads all five fields, solves its own value from the other four and
// writes it into its field. Its fields and solve buttons are those of its
// description (BreakevenDescription.cpp).
class BreakevenController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit BreakevenController(QObject* parent = nullptr);

    BreakevenModel* breakevenModel() const { return static_cast<BreakevenModel*>(model()); }

protected:
    void solveFor(const QString& name) override;
    void connectMvc() override;
};
