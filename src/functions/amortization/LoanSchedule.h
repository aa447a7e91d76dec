#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

// The payments of a loan, one after the other, with whatever changes on the
// way: one-time extra principal, rate changes, an interest-only start, a
// balloon, or a payment given instead of a term. It knows payment numbers
// only; the amortization model places dated events and dates the rows.
//
// Payment k (from 1) goes like this:
// 1. the rate of the period is the annual rate in force at k (the last rate
//    change at or before k), as a rate per payment period (see Rate);
// 2. the level payment is worked out before it when k is the first payment,
//    the first after the interest-only payments, or a rate change after
//    them, over the payments left of the term; and after a one-time extra
//    when the payment is to be lowered rather than the term shortened. In
//    BEG mode only a level worked out at payment 1 is an annuity due: from
//    payment 2 on each payment pays the interest of the period just passed,
//    so what is left is an ordinary annuity. With a given payment (solving
//    for the term) the level is that payment throughout;
// 3. its interest is the balance times the rate (none for payment 1 in BEG
//    mode), in cents rounded half away from zero on the exact product;
// 4. its principal is the level less the interest (none in the
//    interest-only payments), plus the extra with every payment and the
//    one-time extras at k;
// 5. it is the last when its principal reaches the balance, at the end of
//    the term, or at the balloon: it then clears the whole balance.
// In cents every amount is whole; unrounded the same steps run in doubles.
namespace LoanSchedule {

struct Terms {
    double loanAmount = 0;
    double annualRate = 0; // percent
    int paymentsPerYear = 12;
    int compoundingPerYear = 12;
    // Payments in the term; 0 when the payment is given and the term
    // follows from it.
    int count = 0;
    std::optional<double> givenPayment;
    bool beginning = false;
    bool roundToCents = true;
    double extraEveryPayment = 0;
    int interestOnly = 0; // the first payments that are interest alone
    int balloonAt = 0;    // the payment the whole balance is due at; 0 for none
    // After a one-time extra: a lower payment over the same term (true), or
    // the same payment over a shorter term (false).
    bool lowerPaymentAfterExtra = false;
    QList<std::pair<int, double>> extras;      // payment, amount
    QList<std::pair<int, double>> rateChanges; // payment, annual percent
};

struct Row {
    int period = 0;
    QDate date; // set by the caller; invalid without a first payment date
    double payment = 0;
    double interest = 0;
    double principal = 0; // the extra included
    double extra = 0;
    double balance = 0;
    // What changed at this payment ("Rate 7.5 %; Payment 1234.56"), or empty.
    QString event;
};

struct Outcome {
    QList<Row> rows;
    double level = 0; // the level payment of the first amortizing payment
    double totalInterest = 0;
    double totalPaid = 0;
    // Why there is no schedule, in one plain line; empty when there is one.
    QString problem;
};

// The most payments a schedule runs to (a weekly loan over 19,000 years).
inline constexpr int maximumPayments = 1000000;

// The schedule of `terms`; rates and counts are taken as they are (the
// caller has checked them), amounts past what cents can count give a
// problem instead of rows.
Outcome run(const Terms& terms);

// The annual percentage rate of a schedule: the nominal annual rate (in
// percent, the period rate × payments a year) at which its payments,
// discounted at whole periods (payment k at k periods, or at k − 1 in BEG
// mode), are worth what the borrower got, the loan less `fees`. NaN when
// no rate makes them so.
double annualPercentageRate(const QList<Row>& rows, double received, int paymentsPerYear,
                            bool beginning);

} // namespace LoanSchedule
