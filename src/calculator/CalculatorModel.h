#pragma once

#include <QString>
#include <optional>
#include <vector>

// One entry of the keypad's cash-flow list: an amount and how many
// consecutive periods it repeats, both kept as the display texts typed.
struct CashFlow {
    QString cash = QStringLiteral("0");
    QString freq = QStringLiteral("1");
};
using CashFlowList = std::vector<CashFlow>;

// The arithmetic behind the keypad's financial keys: the five TVM registers
// with P/Y, C/Y and BEG/END, NPV and IRR of a cash-flow list, and the
// evaluation of typed expressions.
//
// Money carries no sign by direction: the registers satisfy
//   FV = PV·(1 + i)^N + PMT·(1 + i·b)·((1 + i)^N − 1)/i
// with i the rate per payment period and b = 1 in "BEG" mode, else 0.
// Nothing reports an error: impossible inputs give infinities or NaN.
class CalculatorModel {
public:
    int paymentFrequency = 0; // P/Y
    double period = 0;        // N
    double rate = 0;          // I/Y, annual percent
    double pv = 0;
    double pmt = 0;
    double fv = 0;
    double compounding = 0; // C/Y; formulas use its integer part
    QString paymentMode;    // "BEG", or anything else for END
    double npv = 0;
    double irr = 0;

    static double equivalentRateOfRateAndCompoundingAndNewCompounding(double rate, int compounding,
                                                                      int newCompounding);
    static double
    equivalentRatePerPeriodWithRateAndCompoundingAndNewCompounding(double rate, int compounding,
                                                                   int newCompounding);

    void computePeriod();
    // The nominal annual rate that makes the registers agree (the shared
    // rate search: every rate from just above −100 % a period up; of several,
    // the one nearest 10 % a year). NaN when none does, with the reason in
    // rateNote.
    void computeRate();
    void computePayment();
    void computePresentValue();
    void computeFutureValue();

    // NPV at `rate` per period (a fraction) of the 100-entry list.
    static double calculateNpvWithRate(const CashFlowList& flows, double rate);
    // IRR per period as a fraction: the rate that makes the NPV 0, found by
    // the shared rate search; of several, the one nearest 10 %. All flows 0
    // give 0 (every rate fits; 0 is the plainest). NaN when no rate does.
    static double calculateIrr(const CashFlowList& flows);
    // Every IRR of the list, lowest first, and why there is none.
    struct Rates {
        std::vector<double> all;
        QString reason;
    };
    static Rates internalRatesOfReturn(const CashFlowList& flows);

    // Why the last computeRate gave no number; empty when it gave one.
    QString rateNote;

    static std::optional<double> evaluateExpression(const QString& text);

    // A stored display text as a number, by NumberFormat's one reading rule
    // (so "NaN" and "Infinity" read back too); unreadable text is 0.
    static double numberFromText(const QString& text);

    static constexpr int cashFlowCount = 100;
    static CashFlowList freshCashFlows() { return CashFlowList(cashFlowCount); }

private:
    int compoundingPeriods() const;
    double ratePerPeriod() const;
    double beginFactor(double i) const;
};
