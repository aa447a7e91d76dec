#pragma once

#include "framework/QVFunctionModel.h"

#include <QDate>
#include <QList>
#include <limits>
#include <vector>

// Cash flows on real dates: their net present value at a yearly rate and
// their internal rate of return (the spreadsheet's XNPV and XIRR): each
// amount is discounted by (1 + rate)^years, the years from the first flow's
// date counted on the chosen day-count basis (YEARFRAC's, the library's
// DayCount; negative for a flow dated before the first). Actual/365, the
// spreadsheet functions' own count (days ÷ 365), is the default.
//
// XIRR is the yearly rate where XNPV is 0, found by the app's one rate
// search (every rate from just above −100 % up; of two, the one nearer
// 10 %, the spreadsheet's default guess); with none (flows of one sign, or
// no sign change anywhere) the result is NaN, never a wrong number.
//
// A table of 10,000 flows is worked out again after every edit, so what an
// edit leaves alone is kept: each flow's years are counted again only when
// its date, the first date or the basis changed; XIRR is searched for again
// only when a flow or the basis changed (not for a new rate); and each
// discount factor is exp(−years · log(1 + rate)), one exp a flow with one
// log a rate rather than a pow a flow.
//
// The flows are the rows that can be read. A row that cannot be read is
// never left out quietly (the flows without it would give another, wrong
// answer): the screen names it in `flowsProblem`, which blanks XNPV and
// XIRR (NaN, with that line as their note); `rateProblem` does the same to
// XNPV alone.
class DatedCashFlowsModel : public QVFunctionModel {
    Q_OBJECT
    // The results the screen shows with a "%" after the number.
    Q_CLASSINFO("percentResults", "xirr")
    Q_PROPERTY(double rate MEMBER rate)
    Q_PROPERTY(QString basis MEMBER basis)
    Q_PROPERTY(double xnpv MEMBER xnpv)
    Q_PROPERTY(double xirr MEMBER xirr)

public:
    using QVFunctionModel::QVFunctionModel;

    struct Flow {
        QDate date;
        double amount = 0;
        int row = 0; // the screen's row it came from, counted from 0
    };
    static constexpr int maximumRows = 10000;

    QList<Flow> flows; // in the order entered
    // Why some rows or the rate cannot be read, naming them; empty when
    // they can.
    QString flowsProblem;
    QString rateProblem;
    double rate = 0;                              // percent a year
    QString basis = QStringLiteral("Actual/365"); // one of DayCount::basisWords()
    double xnpv = 0;
    double xirr = 0; // percent a year

    void calculateResult() override;
    // XNPV at `yearlyRate` (a fraction) of the flows with dates, as the last
    // calculateResult() read them.
    double netPresentValue(double yearlyRate) const;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;

private:
    // Each flow with a date and a finite amount as its years from the first
    // such flow's date and its amount, in the order entered; the years kept
    // from the last time for a flow whose date, first date and basis are
    // the same.
    void updateTerms();
    // XIRR as a fraction, or NaN with `reason` saying why there is none.
    double internalRate(QString& reason) const;

    struct Term {
        double years = 0;
        double amount = 0;
        bool operator==(const Term&) const = default;
    };
    std::vector<Term> m_terms;
    std::vector<QDate> m_termDates; // the date of each of m_terms
    QString m_termsBasis;
    // The terms XIRR was last found for, and what it found. The basis is
    // in the terms' years, so the same terms have the same XIRR.
    std::vector<Term> m_solvedTerms;
    double m_solvedRate = std::numeric_limits<double>::quiet_NaN();
    QString m_solvedReason;
    bool m_solved = false;
};
