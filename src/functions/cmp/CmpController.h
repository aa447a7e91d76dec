#pragma once

#include "CmpModel.h"
#include "CmpView.h"
#include "framework/QVFunctionController.h"

// The compound-interest screen: four fields, the deposit mode and the
// compounding choice, four results and the chart of the balance year by
// year. Every edit and every choice recomputes everything.
class CmpController : public QVFunctionController {
    Q_OBJECT
    Q_PROPERTY(QObject* chartDataSource READ chartDataSource CONSTANT)
    Q_PROPERTY(bool chartShown READ chartShown NOTIFY chartChanged)
    Q_PROPERTY(int chartRevision READ chartRevision NOTIFY chartChanged)

public:
    // Ready to use: the model and view are made here.
    explicit CmpController(QObject* parent = nullptr);

    QList<FunctionInput> inputs() const override;
    void fieldChanged() override;

    Q_INVOKABLE void modeClicked();
    Q_INVOKABLE void frequencyClicked();

    CmpModel* cmpModel() const { return static_cast<CmpModel*>(model()); }
    CmpView* cmpView() const { return static_cast<CmpView*>(qvFunctionView()); }

    QObject* chartDataSource() const { return model(); }
    // Whether the last calculation ran at least one month.
    bool chartShown() const { return m_chartShown; }
    int chartRevision() const { return m_chartRevision; }

signals:
    // The results changed: the chart is to be drawn again (or cleared).
    void chartChanged();

protected:
    void connectMvc() override;

private:
    void setInputValues();
    void recalculate();
    void showResult();

    bool m_chartShown = false;
    int m_chartRevision = 0;
};
