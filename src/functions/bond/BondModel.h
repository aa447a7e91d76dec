#pragma once

#include "framework/QVFunctionModel.h"

#include <QList>
#include <utility>

// A level-coupon bond: its price, Macaulay and modified duration and its
// convexity, from the face value, the annual coupon rate and yield (percent),
// the years to maturity and the number of coupons a year.
//
// With f coupons a year, n = trunc(years × f) whole periods, the yield per
// period y, the coupon per period C and b = 1 + y:
//   price      = C·(1 − b^−n)/y + face·b^−n
//   Macaulay   = Σ t·CFₜ·b^−t / (price·f)               (years)
//   modified   = Macaulay / b
//   convexity  = Σ (t² + t)·CFₜ·b^−t / b² / (price·f²)   (years²)
// where CFₜ is the coupon, plus the face value at t = n. Nothing is guarded:
// a yield of 0 or a price of 0 gives NaN or infinite results.
class BondModel : public QVFunctionModel {
    Q_OBJECT
    Q_PROPERTY(double faceValue MEMBER faceValue)
    Q_PROPERTY(double couponPayment MEMBER couponPayment)
    Q_PROPERTY(double couponRate MEMBER couponRate)
    Q_PROPERTY(double yieldToMaturity MEMBER yieldToMaturity)
    Q_PROPERTY(double years MEMBER years)
    Q_PROPERTY(int frequencyValue MEMBER frequencyValue)
    Q_PROPERTY(QString frequency MEMBER frequency)
    Q_PROPERTY(double bondValue MEMBER bondValue)
    Q_PROPERTY(double maculayDuration MEMBER maculayDuration)
    Q_PROPERTY(double modifiedDuration MEMBER modifiedDuration)
    Q_PROPERTY(double convexity MEMBER convexity)

public:
    using QVFunctionModel::QVFunctionModel;

    double faceValue = 0;
    double couponPayment = 0;   // not used by the computation
    double couponRate = 0;      // annual, percent of the face value
    double yieldToMaturity = 0; // annual, percent
    double years = 0;
    int frequencyValue = 0; // coupons a year; 0 until the first computation
    QString frequency;      // "Monthly", "Quarterly", "Semiannually" or "Annually"
    double bondValue = 0;
    double maculayDuration = 0; // years
    double modifiedDuration = 0;
    double convexity = 0; // years²

    // Bonds with more coupon periods than this have their duration and
    // convexity sums taken in closed form instead of period by period.
    static constexpr double maximumSummedPeriods = 100000;

    // The frequency words and their coupons a year, in the order offered.
    static const QList<std::pair<QString, int>>& frequencies();

    // Turns the frequency word into frequencyValue. The first call always
    // makes it 1 (annual), whatever the word; later calls follow the word,
    // and a word that is none of the four keeps the previous value.
    void setFreqValue();
    void calculateResult() override;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;

private:
    struct Sums {
        double duration = 0;  // Σ t·CFₜ·b^−t
        double convexity = 0; // Σ (t² + t)·CFₜ·b^−t / b²
    };
    static Sums sumPeriodByPeriod(double n, double coupon, double face, double b);
    static Sums sumInClosedForm(double n, double coupon, double face, double y, double b);
};
