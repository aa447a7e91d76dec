#pragma once

#include "TvmModel.h"
#include "framework/QVChartController.h"

#include <QSize>

// The TVM screen: five fields, the mode and frequency buttons, five solve
// buttons and the chart of the solved quantity. Nothing is computed on
// edits; each solve button reads every field and overwrites its own. Its
// fields and solve buttons are those of its description
// (TvmDescription.cpp). The frequency choice sets the payments a year when
// it is made.
class TvmController : public QVChartController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit TvmController(QObject* parent = nullptr);

    Q_INVOKABLE void presentValueClicked();
    Q_INVOKABLE void futureValueClicked();
    Q_INVOKABLE void interestRateClicked();
    Q_INVOKABLE void periodClicked();
    Q_INVOKABLE void paymentClicked();
    Q_INVOKABLE void modeClicked();
    Q_INVOKABLE void frequencyClicked();

    // The chart's size on screen, for the mailed picture. A hidden chart
    // reports an empty size; the last real one is kept.
    Q_INVOKABLE void setChartSize(const QSize& size)
    {
        if (!size.isEmpty())
            m_chartSize = size;
    }

    TvmModel* tvmModel() const { return static_cast<TvmModel*>(model()); }
    QObject* chartDataSource() const override { return model(); }

    // The chart as it is drawn on screen, when it is shown.
    ChartPicture reportChart() const override;

    // The payments a year of each word the frequency button offers.
    static const QList<std::pair<QString, double>>& frequencies();

protected:
    void solveFor(const QString& name) override;
    void connectMvc() override;

private:
    void setInitialTvmSettings();
    void solveInto(const QString& outlet, double (TvmModel::*solver)());
    void finishChartSolve(const QString& quantity);
    void showGraph();

    QSize m_chartSize{380, 300};
};
