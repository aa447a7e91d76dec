#pragma once

#include "DayCount.h"

#include <QDate>
#include <QString>

// A coupon bond between real dates, as the common spreadsheet functions
// price it (COUPPCD, COUPNCD, COUPNUM, COUPDAYBS, COUPDAYS, COUPDAYSNC,
// PRICE, YIELD, DURATION, MDURATION), so that every figure can be checked
// against a spreadsheet.
//
// Coupon dates run backwards from maturity in steps of 12 / frequency
// months, each counted from maturity itself: a maturity on the 30th gives
// coupons on the 30th, or on the last day of a shorter month. When maturity
// is the last day of its month, every coupon date is the last day of its
// month (the end-of-month rule: 31 August gives 28 or 29 February).
//
// With the settlement between the previous coupon date and the next one:
//   A   the days from the previous coupon to settlement (COUPDAYBS): the
//       basis's day count (DAYS360 US or European for the 30/360 bases);
//   E   the days of the coupon period (COUPDAYS): 360 / f for the 30/360
//       bases and Actual/360, 365 / f for Actual/365, the calendar's days
//       from coupon to coupon for Actual/actual;
//   DSC the days from settlement to the next coupon (COUPDAYSNC): E − A for
//       the 30/360 bases, the calendar's days for the others;
//   N   the coupons still to come (COUPNUM), maturity's included.
// A coupon is C = 100 · rate / f and the yield a period r = yield / f.
// Each payment k = 1 … N is discounted over k − 1 + DSC/E periods.
namespace BondMath {

struct Bond {
    QDate settlement;
    QDate maturity;
    double rate = 0;         // the coupon, a fraction a year of 100 (0.0575)
    double redemption = 100; // paid at maturity, per 100 of face value
    int frequency = 2;       // coupons a year: 1, 2 or 4
    DayCount::Basis basis = DayCount::Basis::Us30360;
};

// Where the settlement falls in the coupon schedule.
struct Period {
    QDate previous;              // COUPPCD (the settlement itself on a coupon date)
    QDate next;                  // COUPNCD
    int remaining = 0;           // N, COUPNUM
    double daysFromPrevious = 0; // A, COUPDAYBS
    double daysInPeriod = 0;     // E, COUPDAYS
    double daysToNext = 0;       // DSC, COUPDAYSNC
};

// Why the bond's dates cannot be priced, in one plain line; empty when they
// can. Every function below returns NaN (or an empty period) for such a
// bond.
QString problemWith(const Bond& bond);

// The coupon date `periods` coupons before maturity.
QDate couponDate(const QDate& maturity, int periods, int frequency);

Period period(const Bond& bond);

// Interest accrued from the previous coupon to settlement, per 100: C · A/E.
double accruedInterest(const Bond& bond);

// PRICE: the clean price per 100 at the yearly `yield` (a fraction):
//   N > 1:  Σₖ C / (1 + r)^(k−1+DSC/E) + R / (1 + r)^(N−1+DSC/E) − C · A/E
//   N = 1:  (R + C) / (1 + DSC/E · r) − C · A/E
// (with one coupon or less left, simple interest, as the spreadsheets do).
double price(const Bond& bond, double yield);

// YIELD: the yearly yield (a fraction) at which the clean price is `price`.
// With one coupon left, the simple-interest formula solved for r:
//   r = ((R + C) − (P + C·A/E)) / (P + C·A/E) · E / DSC.
// Otherwise the app's one rate search (RootSearch) over r; of several
// yields the one nearest 10 % a year. NaN when no yield gives the price.
double yield(const Bond& bond, double price);

// DURATION: Macaulay duration in years at `yield`, each payment Pₖ (the
// coupons, and the redemption with the last) weighted by its present value
// over their sum, tₖ = k − 1 + DSC/E periods:
//   D = Σ tₖ Pₖ (1 + r)^−tₖ / Σ Pₖ (1 + r)^−tₖ / f.
// With a redemption of 100 this is the spreadsheet function (whose bond is
// always redeemed at 100), also with one coupon left.
double macaulayDuration(const Bond& bond, double yield);
// MDURATION: the Macaulay duration / (1 + r).
double modifiedDuration(const Bond& bond, double yield);
// Convexity in years², the second derivative of the price in the yield
// over the price, with the same payments and times:
//   Σ tₖ (tₖ + 1) Pₖ (1 + r)^−(tₖ+2) / Σ Pₖ (1 + r)^−tₖ / f².
// On a coupon date with whole periods left it is the convexity of the
// whole-years bond calculator.
double convexity(const Bond& bond, double yield);

} // namespace BondMath
