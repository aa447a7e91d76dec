#pragma once

#include "CmpModel.h"
#include "framework/QVChartController.h"

// The compound-interest screen: four fields, the deposit mode and the
// compounding choice, four results and the chart of the balance year by
// year. Every edit and every choice recomputes everything. Its fields and
// results are those of its description (CmpDescription.cpp); every
// computation takes the words the two choice buttons show.
class CmpController : public QVChartController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit CmpController(QObject* parent = nullptr);

    void fieldChanged() override;

    Q_INVOKABLE void modeClicked();
    Q_INVOKABLE void frequencyClicked();

    CmpModel* cmpModel() const { return static_cast<CmpModel*>(model()); }

    // Shown when the last calculation ran at least one month.
    QObject* chartDataSource() const override { return model(); }

protected:
    void connectMvc() override;

private:
    // `outlet`'s choice: its sheet (no button to point at: popovers sit in
    // the screen's centre), then the word on its button and a recompute.
    void choose(const QString& outlet, const QString& title, const QString& message);
};
