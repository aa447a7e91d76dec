#pragma once

#include "framework/QVFunctionModel.h"

// Breakeven: profit = quantity × (price − variable cost) − fixed costs,
// solved for whichever of the five is asked for from the other four. At the
// breakeven point itself the profit is 0. No division is guarded: a price
// equal to the variable cost, or a quantity of 0, gives infinite or NaN
// results.
class BreakevenModel : public QVFunctionModel {
    Q_OBJECT
    Q_PROPERTY(double fixedCost MEMBER fixedCost)
    Q_PROPERTY(double variableCost MEMBER variableCost)
    Q_PROPERTY(double price MEMBER price)
    Q_PROPERTY(double profit MEMBER profit)
    Q_PROPERTY(double quantity MEMBER quantity)

public:
    using QVFunctionModel::QVFunctionModel;

    double fixedCost = 0;    // per period
    double variableCost = 0; // per unit
    double price = 0;        // per unit
    double profit = 0;       // the target, 0 for the breakeven point
    double quantity = 0;     // units

    // Each solves one value from the four others, stores it and returns it.
    double calculateQuantity();
    double calculatePrice();
    double calculateFixedCost();
    double calculateVariableCost();
    double calculateProfit();

    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;

private:
    // The notes after a solve: the entries too large to compute with, and
    // why the solved value is no number (`reason`, else too large).
    void explainSolve(const char* solved, const QString& reason);
};
