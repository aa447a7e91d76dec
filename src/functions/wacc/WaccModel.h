#pragma once

#include "framework/QVFunctionModel.h"

// The after-tax weighted average cost of capital:
//   WACC = E/(E + D)·ke + D/(E + D)·kd·(1 − t)
// with the costs ke, kd and the tax rate t in percent and the values of
// equity E and debt D in money. E + D = 0 is not guarded and gives NaN.
class WaccModel : public QVFunctionModel {
    Q_OBJECT
    // The results the screen shows with a "%" after the number.
    Q_CLASSINFO("percentResults", "weightedAverageCostOfCapital")
    Q_PROPERTY(double costOfEquity MEMBER costOfEquity)
    Q_PROPERTY(double equity MEMBER equity)
    Q_PROPERTY(double costOfDebt MEMBER costOfDebt)
    Q_PROPERTY(double debt MEMBER debt)
    Q_PROPERTY(double corporateTaxRate MEMBER corporateTaxRate)
    Q_PROPERTY(double weightedAverageCostOfCapital MEMBER weightedAverageCostOfCapital)

public:
    using QVFunctionModel::QVFunctionModel;

    double costOfEquity = 0; // percent
    double equity = 0;
    double costOfDebt = 0; // percent, before tax
    double debt = 0;
    double corporateTaxRate = 0;             // percent
    double weightedAverageCostOfCapital = 0; // percent

    void calculateResult() override;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;
};
