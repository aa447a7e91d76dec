#pragma once

#include "QVFunctionController.h"

// Base of the calculator screens that draw a chart under their results:
// whether the chart is shown, and a revision that changes every time it is
// to be drawn again from new data.
class QVChartController : public QVFunctionController {
    Q_OBJECT
    Q_PROPERTY(QObject* chartDataSource READ chartDataSource CONSTANT)
    Q_PROPERTY(bool chartShown READ chartShown NOTIFY chartChanged)
    Q_PROPERTY(int chartRevision READ chartRevision NOTIFY chartChanged)
    Q_PROPERTY(QString chartTitle READ chartTitle CONSTANT)

public:
    using QVFunctionController::QVFunctionController;

    // The chart's MultiLineGraphDataSource and MultiLineGraphDelegate.
    virtual QObject* chartDataSource() const = 0;
    // What the chart shows, for screen readers ("Chart of the price
    // against the yield"); screens laid out from their description show it
    // under the results.
    virtual QString chartTitle() const { return {}; }
    bool chartShown() const { return m_chartShown; }
    int chartRevision() const { return m_chartRevision; }

signals:
    // The chart is to be drawn again, or cleared.
    void chartChanged();

protected:
    // New data: the chart is drawn again, shown or not.
    void redrawChart(bool shown)
    {
        m_chartShown = shown;
        ++m_chartRevision;
        emit chartChanged();
    }
    void hideChart()
    {
        m_chartShown = false;
        emit chartChanged();
    }

private:
    bool m_chartShown = false;
    int m_chartRevision = 0;
};
