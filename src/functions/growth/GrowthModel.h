#pragma once

#include "framework/QVFunctionModel.h"

// Compound growth between a start and an end value over a number of years:
// end = start × (1 + rate)^years. Of the start value, the end value, the
// years and the growth rate a year, the one left blank is worked out from
// the other three; with none blank the rate is. The percent change
// (end − start) / start and the growth factor end / start follow from the
// two values alone. Rates in percent; years need not be whole.
class GrowthModel : public QVFunctionModel {
    Q_OBJECT
    // The results the screen shows with a "%" after the number.
    Q_CLASSINFO("percentResults", "cagr percentChange")
    Q_PROPERTY(double start MEMBER start)
    Q_PROPERTY(double end MEMBER end)
    Q_PROPERTY(double years MEMBER years)
    Q_PROPERTY(double cagr MEMBER cagr)
    Q_PROPERTY(double percentChange MEMBER percentChange)
    Q_PROPERTY(double factor MEMBER factor)
    Q_PROPERTY(QString workedOut MEMBER workedOut)

public:
    using QVFunctionModel::QVFunctionModel;

    double start = 0;
    double end = 0;
    double years = 0;
    double cagr = 0; // compound annual growth rate, percent
    double percentChange = 0;
    double factor = 0;
    // The key of the value worked out ("cagr", "end", ...); empty when too
    // few were given to work anything out.
    QString workedOut;

    void calculateResult() override;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;

private:
    // Why nothing follows from the start value (0); empty when it is not 0.
    QString startProblem() const;
    void workOutRate();
    void workOutEnd();
    void workOutStart();
    void workOutYears();
};
