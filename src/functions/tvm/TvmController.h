#pragma once

#include "TvmModel.h"
#include "framework/QVFunctionController.h"

#include <QImage>
#include <QSize>

// The TVM screen: five fields, the mode and frequency buttons, five solve
// buttons and the chart of the solved quantity. Nothing is computed on
// edits; each solve button reads every field and overwrites its own.
class TvmController : public QVFunctionController {
    Q_OBJECT
    Q_PROPERTY(QObject* chartDataSource READ chartDataSource CONSTANT)
    Q_PROPERTY(bool chartShown READ chartShown NOTIFY chartChanged)
    Q_PROPERTY(int chartRevision READ chartRevision NOTIFY chartChanged)

public:
    // Ready to use: the model and view are made here.
    explicit TvmController(QObject* parent = nullptr);

    QList<FunctionInput> inputs() const override;
    QStringList solveButtons() const override;
    void solve(const QString& name) override;

    Q_INVOKABLE void presentValueClicked();
    Q_INVOKABLE void futureValueClicked();
    Q_INVOKABLE void interestRateClicked();
    Q_INVOKABLE void periodClicked();
    Q_INVOKABLE void paymentClicked();
    Q_INVOKABLE void modeClicked();
    Q_INVOKABLE void frequencyClicked();

    // The size the chart is drawn at on screen, used for the e-mailed image.
    // The chart's size on screen, for the mailed picture. A hidden chart
    // reports an empty size; the last real one is kept.
    Q_INVOKABLE void setChartSize(const QSize& size)
    {
        if (!size.isEmpty())
            m_chartSize = size;
    }

    TvmModel* tvmModel() const { return static_cast<TvmModel*>(model()); }
    QObject* chartDataSource() const { return model(); }
    bool chartShown() const { return m_chartShown; }
    int chartRevision() const { return m_chartRevision; }

    // The chart as a picture, as it is drawn on screen.
    QImage chartImage() const;

    static const QList<std::pair<QString, double>>& frequencies();

signals:
    void chartChanged();

protected:
    void connectMvc() override;
    void prepareReportImage() override;

private:
    void setInitialTvmSettings();
    void setInputValues();
    void solveInto(const QString& outlet, double (TvmModel::*solver)());
    void clearChart();
    void finishChartSolve(const QString& quantity);
    void showGraph();

    QSize m_chartSize{380, 300};
    bool m_chartShown = false;
    int m_chartRevision = 0;
};
