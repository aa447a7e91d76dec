#pragma once

#include "framework/QVFunctionModel.h"

// The capital asset pricing model, Rs = Rf + beta·(Rm − Rf), solved for
// whichever of the four values is asked for from the other three. Returns
// and the rate are in percent. No division is guarded: beta 0 for the
// market return, beta 1 for the risk-free rate and Rm = Rf for beta give
// infinite or NaN results.
class CapmModel : public QVFunctionModel {
    Q_OBJECT
    Q_PROPERTY(double stockReturn MEMBER stockReturn)
    Q_PROPERTY(double marketReturn MEMBER marketReturn)
    Q_PROPERTY(double riskFreeRate MEMBER riskFreeRate)
    Q_PROPERTY(double beta MEMBER beta)

public:
    using QVFunctionModel::QVFunctionModel;

    double stockReturn = 0;  // percent
    double marketReturn = 0; // percent
    double riskFreeRate = 0; // percent
    double beta = 0;

    // Each solves one value from the three others, stores it and returns it.
    double calculateStockReturn();
    double calculateMarketReturn();
    double calculateRiskFreeRate();
    double calculateBeta();

    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;

private:
    // The notes after a solve: the entries too large to compute with, and
    // why the solved value is no number (`reason`, else too large).
    void explainSolve(const char* solved, const QString& reason);
};
