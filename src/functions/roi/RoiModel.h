#pragma once

#include "framework/QVFunctionModel.h"

// Return on investment: the gain, the return in percent and its simple
// yearly average. Divisions are not guarded: an investment or a period of 0
// gives infinite or NaN results, each with a note saying which field to fill.
class RoiModel : public QVFunctionModel {
    Q_OBJECT
    // The results the screen shows with a "%" after the number.
    Q_CLASSINFO("percentResults", "roi annualizedRoi")
    Q_PROPERTY(double investmentAmount MEMBER investmentAmount)
    Q_PROPERTY(double futureValue MEMBER futureValue)
    Q_PROPERTY(double years MEMBER years)
    Q_PROPERTY(double gain MEMBER gain)
    Q_PROPERTY(double roi MEMBER roi)
    Q_PROPERTY(double annualizedRoi MEMBER annualizedRoi)

public:
    // The results start as those of all-zero inputs (NaN where they
    // divide by zero), which is what a report made before any edit shows.
    explicit RoiModel(QObject* parent = nullptr);

    double investmentAmount = 0;
    double futureValue = 0; // what came back; reported as income
    double years = 0;
    double gain = 0;
    double roi = 0;           // percent
    double annualizedRoi = 0; // percent per year, not compounded

    void calculateResult() override;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;
};
