#pragma once

#include "CmpModel.h"
#include "CmpView.h"
#include "framework/QVChartController.h"

// The compound-interest screen: four fields, the deposit mode and the
// compounding choice, four results and the chart of the balance year by
// year. Every edit and every choice recomputes everything.
class CmpController : public QVChartController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit CmpController(QObject* parent = nullptr);

    QList<FunctionInput> inputs() const override;
    void fieldChanged() override;

    Q_INVOKABLE void modeClicked();
    Q_INVOKABLE void frequencyClicked();

    CmpModel* cmpModel() const { return static_cast<CmpModel*>(model()); }
    CmpView* cmpView() const { return static_cast<CmpView*>(qvFunctionView()); }

    // Shown when the last calculation ran at least one month.
    QObject* chartDataSource() const override { return model(); }

protected:
    void connectMvc() override;

private:
    void setInputValues();
    void recalculate();
    void showResult();
};
