#pragma once

#include "framework/QVFunctionModel.h"

// Nominal and effective annual rates for a number of compoundings a year,
// and the effective rate of continuous compounding at the nominal rate, all
// in percent. As the spreadsheet EFFECT and NOMINAL functions do, the count
// is taken as a whole number; fewer than one compounding gives NaN.
class RateConversionModel : public QVFunctionModel {
    Q_OBJECT
    // The results the screen shows with a "%" after the number.
    Q_CLASSINFO("percentResults", "continuousRate")
    Q_PROPERTY(double nominalRate MEMBER nominalRate)
    Q_PROPERTY(double effectiveRate MEMBER effectiveRate)
    Q_PROPERTY(double compoundingPerYear MEMBER compoundingPerYear)
    Q_PROPERTY(double continuousRate MEMBER continuousRate)

public:
    using QVFunctionModel::QVFunctionModel;

    double nominalRate = 0;        // percent, compounded compoundingPerYear times
    double effectiveRate = 0;      // percent, once a year
    double compoundingPerYear = 0; // whole times a year
    double continuousRate = 0;     // percent: e^nominal - 1

    // Each solves one rate from the other and the count, stores it, updates
    // the continuous rate and returns the solved rate.
    double calculateEffectiveRate();
    double calculateNominalRate();

    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;

private:
    double compoundings() const;
    // Why the compoundings a year give no count (empty when they do).
    QString compoundingsProblem() const;
    // The notes after a solve: the entries too large to compute with, and
    // why the solved rate is no number (`reason`, else too large).
    void explainSolve(const char* solved, const QString& reason);
    void calculateContinuousRate();
};
