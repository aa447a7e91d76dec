#pragma once

#include <QList>
#include <QObject>
#include <QString>

// One row of NpvTableModel: an input row shows its field, a result row
// shows `result` instead.
struct NpvCell {
    QString leftLabelStr;
    double result = 0;
    double fieldValue = 0;
    int intFieldValue = 0;
    bool fieldHidden = false;
};

// The whole calculator as one list of rows: "Period", "Discount Rate", one
// "Cash Flow n" row per period, "Net Present Value" and "Internal Rate of
// Return". It computes with the same formulas as NpvModel. The screen does
// not use it; it keeps the calculation available as a plain table.
class NpvTableModel : public QObject {
    Q_OBJECT

public:
    explicit NpvTableModel(QObject* parent = nullptr);

    // The list holds at most this many flows, as the screen's does.
    static constexpr int maximumCashFlows = 100;

    int period = 4;
    double discountRate = 0; // percent per period
    QList<double> cashArray;
    double npv = 0;
    double irr = 0; // percent, or NaN
    QList<NpvCell> tableArray;

    // Pads the flows with zeros up to `period` (at most maximumCashFlows).
    void loadCashArray();
    // Rebuilds `tableArray` from the current values.
    void loadNpvArray();
    // loadCashArray, then the NPV and the IRR.
    void calculateResults();
};
