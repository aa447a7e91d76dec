#pragma once

#include "framework/QVFunctionModel.h"
#include "numerics/BondMath.h"

#include <QDate>

// A coupon bond between real dates, priced as the spreadsheet functions
// PRICE, YIELD, DURATION and MDURATION do (the library's BondMath): the
// clean price from the yield or the yield from the clean price, and with
// either the accrued interest, the dirty price, the durations, the
// convexity and where the settlement falls among the coupons. Given a call
// date and a call price, the yield to call is the yield of the same bond
// redeemed at the call price on the call date. Rates and yields are in
// percent a year, prices per 100 of face value.
//
// What the screen could not read comes in `inputProblem` (the bond's own
// fields), `givenProblem` (the yield or price a solve starts from) and
// `callProblem` (the call's): it blanks what depends on it (NaN, or an
// empty date), with that line as the note.
class DatedBondModel : public QVFunctionModel {
    Q_OBJECT
    // The results the screen shows with a "%" after the number.
    Q_CLASSINFO("percentResults", "yieldToCall")
    Q_PROPERTY(QString settlement READ settlementText)
    Q_PROPERTY(QString maturity READ maturityText)
    Q_PROPERTY(double couponRate MEMBER couponRate)
    Q_PROPERTY(double redemption MEMBER redemption)
    Q_PROPERTY(QString frequency MEMBER frequency)
    Q_PROPERTY(QString basis MEMBER basis)
    Q_PROPERTY(double yield MEMBER yield)
    Q_PROPERTY(double price MEMBER price)
    Q_PROPERTY(QString callDate READ callDateText)
    Q_PROPERTY(double callPrice MEMBER callPrice)
    Q_PROPERTY(double accruedInterest MEMBER accruedInterest)
    Q_PROPERTY(double dirtyPrice MEMBER dirtyPrice)
    Q_PROPERTY(double macaulayDuration MEMBER macaulayDuration)
    Q_PROPERTY(double modifiedDuration MEMBER modifiedDuration)
    Q_PROPERTY(double convexity MEMBER convexity)
    Q_PROPERTY(double yieldToCall MEMBER yieldToCall)
    Q_PROPERTY(QString previousCouponDate READ previousCouponDate)
    Q_PROPERTY(QString nextCouponDate READ nextCouponDate)
    Q_PROPERTY(double daysFromPrevious MEMBER daysFromPrevious)
    Q_PROPERTY(double daysInPeriod MEMBER daysInPeriod)
    Q_PROPERTY(double daysToNext MEMBER daysToNext)
    Q_PROPERTY(double couponsRemaining MEMBER couponsRemaining)

public:
    using QVFunctionModel::QVFunctionModel;

    // The frequency words and their coupons a year, in the order offered.
    static const QList<std::pair<QString, int>>& frequencies();

    QDate settlement;
    QDate maturity;
    double couponRate = 0;   // percent a year
    double redemption = 100; // per 100
    QString frequency = QStringLiteral("Semiannually");
    QString basis = QStringLiteral("30/360"); // one of DayCount::basisWords()
    double yield = 0;                         // percent a year
    double price = 0;                         // clean, per 100
    QDate callDate;                           // invalid: no call
    double callPrice = 0;                     // per 100
    QString inputProblem;
    QString givenProblem;
    QString callProblem;

    double accruedInterest = 0;
    double dirtyPrice = 0;
    double macaulayDuration = 0; // years
    double modifiedDuration = 0;
    double convexity = 0;   // years²
    double yieldToCall = 0; // percent a year
    BondMath::Period period;
    double daysFromPrevious = 0;
    double daysInPeriod = 0;
    double daysToNext = 0;
    double couponsRemaining = 0;

    QString settlementText() const { return settlement.toString(Qt::ISODate); }
    QString maturityText() const { return maturity.toString(Qt::ISODate); }
    QString callDateText() const { return callDate.toString(Qt::ISODate); }
    QString previousCouponDate() const { return period.previous.toString(Qt::ISODate); }
    QString nextCouponDate() const { return period.next.toString(Qt::ISODate); }

    // The bond the inputs describe.
    BondMath::Bond bond() const;
    // Why the inputs give no bond to price, in one plain line; empty when
    // they do.
    QString bondProblem() const;

    // Each solves its value from the other (and the bond), stores it and
    // every result that follows from the pair, and returns it.
    double calculatePrice();
    double calculateYield();

    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;

private:
    // Why a solve from `given` (the yield or the price) cannot start;
    // empty when it can.
    QString givenValueProblem(const char* given) const;
    // Where the settlement falls among the coupons; blank with `reason`
    // when the bond cannot be priced.
    void calculatePeriod(const QString& reason);
    // Every result that needs the price and the yield, from the pair just
    // solved; or blank (NaN) with `reason`, the solved value `solved` too.
    void calculateRest(const char* solved, const QString& reason);
    void calculateYieldToCall();
};
