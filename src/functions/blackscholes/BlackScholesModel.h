#pragma once

#include "framework/QVFunctionModel.h"

// European call and put on one asset: their prices and the five
// sensitivities of each, from the asset price S, the strike K, the time to
// expiry T, the volatility and the continuously compounded risk-free rate
// (both in percent as typed: 20 means 0.20).
//
// With s and r the volatility and rate as fractions and D = e^(−rT):
//   d1 = (ln(S/K) + (r + s²/2)·T) / (s·√T),   d2 = d1 − s·√T
//   call = S·N(d1) − K·D·N(d2)
//   put  = K·D·(1 − N(d2)) − S·(1 − N(d1))
// The put is taken from 1 − N(d) rather than N(−d) on purpose. Vega and rho
// are per unit of volatility and rate (a change of 1.00, not of one
// percentage point); theta is per unit of T. Nothing is guarded: T, s, S or
// K of 0 give infinite or NaN results, which are shown as they are.
class BlackScholesModel : public QVFunctionModel {
    Q_OBJECT
    Q_PROPERTY(double assetPrice MEMBER assetPrice)
    Q_PROPERTY(double exercisePrice MEMBER exercisePrice)
    Q_PROPERTY(double timeToExpiration MEMBER timeToExpiration)
    Q_PROPERTY(double standardDeviation MEMBER standardDeviation)
    Q_PROPERTY(double riskFreeRate MEMBER riskFreeRate)
    Q_PROPERTY(double d1 MEMBER d1)
    Q_PROPERTY(double d2 MEMBER d2)
    Q_PROPERTY(double n_d1 MEMBER n_d1)
    Q_PROPERTY(double n_d2 MEMBER n_d2)
    Q_PROPERTY(double callPrice MEMBER callPrice)
    Q_PROPERTY(double putPrice MEMBER putPrice)
    Q_PROPERTY(double callDelta MEMBER callDelta)
    Q_PROPERTY(double putDelta MEMBER putDelta)
    Q_PROPERTY(double callGamma MEMBER callGamma)
    Q_PROPERTY(double putGamma MEMBER putGamma)
    Q_PROPERTY(double callTheta MEMBER callTheta)
    Q_PROPERTY(double putTheta MEMBER putTheta)
    Q_PROPERTY(double callVega MEMBER callVega)
    Q_PROPERTY(double putVega MEMBER putVega)
    Q_PROPERTY(double callRho MEMBER callRho)
    Q_PROPERTY(double putRho MEMBER putRho)

public:
    using QVFunctionModel::QVFunctionModel;

    double assetPrice = 0;        // S
    double exercisePrice = 0;     // K
    double timeToExpiration = 0;  // T, in the time unit of the rate and volatility
    double standardDeviation = 0; // percent
    double riskFreeRate = 0;      // percent, continuously compounded

    double d1 = 0;
    double d2 = 0;
    double n_d1 = 0; // N(d1)
    double n_d2 = 0; // N(d2)

    double callPrice = 0;
    double putPrice = 0;
    double callDelta = 0;
    double putDelta = 0;
    double callGamma = 0;
    double putGamma = 0;
    double callTheta = 0; // per unit of T
    double putTheta = 0;
    double callVega = 0; // per unit of volatility
    double putVega = 0;
    double callRho = 0; // per unit of rate
    double putRho = 0;

    void calculateResult() override;
    void createReport(const QVariantMap& userInfo) override;

    // The standard normal distribution function, through erfc.
    static double cumulativeNormal(double x);
    // The standard normal density.
    static double standardPdf(double x);

protected:
    void configureNames() override;

private:
    // The note of each result that is no number: the first entry that
    // leaves the formulas undefined.
    void explainResults();
};
