#pragma once

#include "framework/QVFunctionModel.h"

// Share value by the constant dividend growth formula, P = D1 / (r - g),
// from either the dividend just paid (D0, grown one year) or the next one
// (D1). r and g are in percent. Nothing checks r > g: equal rates divide by
// zero and a growth above the return gives a negative price.
class ConstGrowthModel : public QVFunctionModel {
    Q_OBJECT
    Q_PROPERTY(QString dividendType MEMBER dividendType)
    Q_PROPERTY(double dividend MEMBER dividend)
    Q_PROPERTY(double returnRate MEMBER returnRate)
    Q_PROPERTY(double growthRate MEMBER growthRate)
    Q_PROPERTY(double price MEMBER price)

public:
    using QVFunctionModel::QVFunctionModel;

    static const QString currentDividend; // "Current (D0)"
    static const QString nextDividend;    // "Next (D1)"
    // The two types, in the order the screen offers them.
    static QStringList dividendTypes() { return {currentDividend, nextDividend}; }

    // One of the two words above; anything else (the empty string too)
    // leaves the price as it was.
    QString dividendType;
    double dividend = 0;
    double returnRate = 0; // percent
    double growthRate = 0; // percent
    double price = 0;

    void calculateResult() override;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;
};
