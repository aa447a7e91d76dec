#pragma once

#include "framework/QVFunctionModel.h"

// Holding period return: what one period of ownership earned, price change
// plus income, as a percentage of the starting value. A starting value of 0
// is not guarded and gives an infinite or NaN return.
class PeriodReturnModel : public QVFunctionModel {
    Q_OBJECT
    // The results the screen shows with a "%" after the number.
    Q_CLASSINFO("percentResults", "hpr")
    Q_PROPERTY(double initialValue MEMBER initialValue)
    Q_PROPERTY(double endingValue MEMBER endingValue)
    Q_PROPERTY(double income MEMBER income)
    Q_PROPERTY(double hpr MEMBER hpr)

public:
    using QVFunctionModel::QVFunctionModel;

    double initialValue = 0; // P0
    double endingValue = 0;  // P1
    double income = 0;       // I, received during the period
    double hpr = 0;          // percent

    void calculateResult() override;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;
};
