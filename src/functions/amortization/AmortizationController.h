#pragma once

#include "AmortizationModel.h"
#include "framework/QVChartController.h"

#include <QVariantMap>

// The amortization screen: the loan, its rate and term, the payment and
// compounding frequencies, BEG/END, an extra payment, the first payment's
// date, rounding to cents and the P1–P2 range; recomputed on every edit.
// The schedule is shown row by row (scheduleRow) and can be saved as CSV.
// Its fields, choices and results are those of its description
// (AmortizationDescription.cpp); a choice sets the model in its action.
class AmortizationController : public QVChartController {
    Q_OBJECT
    Q_PROPERTY(int scheduleRowCount READ scheduleRowCount NOTIFY scheduleChanged)

public:
    // Ready to use: the model and view are made here.
    explicit AmortizationController(QObject* parent = nullptr);

    void fieldChanged() override;
    QByteArray scheduleCsv() const override;
    QObject* chartDataSource() const override { return model(); }

    int scheduleRowCount() const { return int(amortizationModel()->schedule.size()); }
    // Row `index` of the schedule: "period", "date", "payment", "interest",
    // "principal", "balance", as the results' format writes them.
    Q_INVOKABLE QVariantMap scheduleRow(int index) const;

    // The choices' sheets, offering the description's words.
    Q_INVOKABLE void paymentsPerYearClicked();
    Q_INVOKABLE void compoundingPerYearClicked();
    Q_INVOKABLE void paymentModeClicked();

    AmortizationModel* amortizationModel() const
    {
        return static_cast<AmortizationModel*>(model());
    }

    // The chart of the balance and the interest, when there is a schedule.
    ChartPicture reportChart() const override;

signals:
    void scheduleChanged();

protected:
    void connectMvc() override;

private:
    // Compounding follows the payments until it is chosen on its own.
    bool m_compoundingChosen = false;
};
