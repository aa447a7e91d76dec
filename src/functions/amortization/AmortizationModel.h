#pragma once

#include "LoanSchedule.h"
#include "charts/MultiLineGraphDataSource.h"
#include "framework/QVFunctionModel.h"

#include <QDate>
#include <QList>
#include <QStringList>
#include <optional>

// A loan paid off by level payments: the payment, the full schedule
// (interest, principal and balance of every payment), the totals, the last
// payment, the payoff date and the "AMORT" range of a hand-held calculator
// (principal and interest paid from payment P1 to P2, and the balance after
// P2).
//
// The rate per payment period comes from the annual rate compounded
// `compoundingPerYear` times: (1 + r/c)^(c/p) − 1. With "round payments to
// cents" on, as lenders do, the whole schedule is kept in integer cents (see
// Cents), so no drift builds up over a million payments, and every amount
// is rounded half away from zero on its exact decimal value:
// - the interest of a period is the balance times the rate, formed exactly.
//   When interest compounds as often as payments are made the rate is the
//   annual rate ÷ 100 ÷ p, an exact decimal fraction (150,000.00 at 5.25 %
//   paid 24 times a year: 328.125, so 328.13). Otherwise (1 + r/c)^(c/p) − 1
//   has no exact decimal at all; its double is taken at its shortest decimal
//   (the 17 digits it shows), and that product is rounded exactly;
// - the level payment is the annuity payment, computed in doubles and
//   rounded on its shortest decimal; at a zero rate and for a single
//   payment, where it is a plain decimal that may end in a half cent, it is
//   computed exactly instead;
// - the last payment is whatever clears the balance to exactly 0.00.
// An extra amount paid with every payment goes to the principal and ends the
// loan early. In BEG mode each payment is made at the start of its period,
// so the first one carries no interest.
//
// A loan can change on the way (see LoanSchedule for the steps of each
// payment): one-time extra principal with chosen payments, which shortens
// the term or lowers the payments after it; a new annual rate from a chosen
// payment, the payment then worked out again over the payments left of the
// term; interest alone for the first payments; the whole balance due at a
// balloon payment. An event falls on a payment by its number, or on the
// first payment dated on or after its date. Instead of the term the payment
// can be given (solving for the term): the loan then runs until it is paid.
// Besides the schedule it tells the interest saved against the same loan
// without any of those events (nor the extra with every payment), and the
// APR: the nominal annual rate at which the payments are worth the loan
// less its fees.
//
// Semimonthly payments fall on two days of every month 14 days apart (see
// dateOfPayment); the other frequencies step by whole weeks or months.
//
// Results that are no number carry a one-line note saying why (no loan
// amount, no term, more than 1,000,000 payments, amounts beyond the cents
// that can be counted).
//
// Its chart has two lines over the years of the loan: the balance still
// owed and the interest paid so far, both at the end of each year (at most
// maximumChartPoints of those, evenly spread, on very long loans).
class AmortizationModel : public QVFunctionModel,
                          public MultiLineGraphDataSource,
                          public MultiLineGraphDelegate {
    Q_OBJECT
    Q_INTERFACES(MultiLineGraphDataSource MultiLineGraphDelegate)
    Q_PROPERTY(double loanAmount MEMBER loanAmount)
    Q_PROPERTY(double annualRate MEMBER annualRate)
    Q_PROPERTY(double years MEMBER years)
    Q_PROPERTY(double paymentsPerYear MEMBER paymentsPerYear)
    Q_PROPERTY(double compoundingPerYear MEMBER compoundingPerYear)
    Q_PROPERTY(double extraPayment MEMBER extraPayment)
    Q_PROPERTY(QString afterExtra MEMBER afterExtra)
    Q_PROPERTY(int interestOnly MEMBER interestOnly)
    Q_PROPERTY(int balloonAt MEMBER balloonAt)
    Q_PROPERTY(double fees MEMBER fees)
    // Given when solving for the term; the level payment worked out
    // otherwise.
    Q_PROPERTY(double payment READ levelPayment WRITE setGivenPayment)
    Q_PROPERTY(double numberOfPayments MEMBER numberOfPayments)
    Q_PROPERTY(double totalInterest MEMBER totalInterest)
    Q_PROPERTY(double totalPaid MEMBER totalPaid)
    Q_PROPERTY(double lastPayment MEMBER lastPayment)
    Q_PROPERTY(QString payoffDate READ payoffDateText)
    Q_PROPERTY(double rangePrincipal MEMBER rangePrincipal)
    Q_PROPERTY(double rangeInterest MEMBER rangeInterest)
    Q_PROPERTY(double rangeBalance MEMBER rangeBalance)
    Q_PROPERTY(double interestSaved MEMBER interestSaved)
    Q_PROPERTY(double apr MEMBER apr)

public:
    using QVFunctionModel::QVFunctionModel;

    using Row = LoanSchedule::Row;

    // A one-time extra payment (`value` the amount) or a rate change (`value`
    // the annual rate in percent), at payment `payment` or, when that is 0,
    // at the first payment dated on or after `date`.
    struct Event {
        int payment = 0;
        QDate date;
        double value = 0;
    };

    // More payments than any loan has (a weekly loan over 19,000 years); a
    // longer term gives no schedule and a note saying so. A schedule this
    // long takes about 50 MB and a fraction of a second.
    static constexpr int maximumPayments = LoanSchedule::maximumPayments;
    // The chart shows at most this many year ends, evenly spread; the last
    // payment is always among them.
    static constexpr int maximumChartPoints = 1200;
    // The report's schedule shows at most this many payments (a weekly loan
    // over 57 years), and says so when there are more; the CSV has them all.
    static constexpr int maximumReportRows = 3000;
    // The payment frequencies and their counts a year.
    static const QList<std::pair<QString, int>>& frequencies();
    // Their words, in that order ("Monthly", "Semimonthly", ...), and the
    // count a year of one of them; none for any other word.
    static QStringList frequencyWords();
    static std::optional<int> countOf(const QString& word);
    // When in its period each payment is made: "BEG" or "END".
    static const QStringList& modes();
    // What a one-time extra payment does: "Shorten term" or "Lower payment".
    static const QStringList& afterExtraWords();

    double loanAmount = 0;
    double annualRate = 0; // percent
    double years = 0;
    double paymentsPerYear = 12;
    double compoundingPerYear = 12;
    QString paymentMode = QStringLiteral("END"); // one of modes(); any other has no schedule
    double extraPayment = 0;
    QDate firstPaymentDate;
    bool roundToCents = true;
    int rangeStart = 1;
    int rangeEnd = 12;
    QList<Event> extras;
    QList<Event> rateChanges;
    QString afterExtra = QStringLiteral("Shorten term"); // one of afterExtraWords()
    int interestOnly = 0;
    int balloonAt = 0; // 0: none
    // Solving for the term from a given payment, rather than the payment
    // from the term.
    bool solveTerm = false;
    double givenPayment = 0;
    double fees = 0;
    // Why the events cannot all be read (the screen's list); when set, no
    // schedule is worked out and every result says this.
    QString eventsProblem;

    double payment = 0;
    double numberOfPayments = 0;
    double totalInterest = 0;
    double totalPaid = 0;
    double lastPayment = 0;
    double rangePrincipal = 0;
    double rangeInterest = 0;
    double rangeBalance = 0;
    double interestSaved = 0;
    double apr = 0; // percent
    QDate payoffDate;
    QList<Row> schedule;

    double levelPayment() const { return payment; }
    void setGivenPayment(double value) { givenPayment = value; }

    void calculateResult() override;
    // The date of payment `period` (1 = the first payment date).
    QDate dateOfPayment(int period) const;
    // The payoff date as YYYY-MM-DD; empty without a first payment date.
    QString payoffDateText() const { return isoDate(payoffDate); }
    // YYYY-MM-DD, also for the years past 9999 that Qt's ISO format leaves
    // empty; empty for an invalid date.
    static QString isoDate(const QDate& date);
    // "period,date,payment,interest,principal,balance,extra,event", one row a
    // payment (the principal includes the extra).
    QByteArray scheduleCsv() const;
    void createReport(const QVariantMap& userInfo) override;
    // Each year's sums (payment, interest, principal, extra) and the balance
    // at its end; `period` is the year, from 1. Years count from the first
    // payment. Worked out when first asked for after each calculation.
    const QList<Row>& yearTotals() const;
    // Events as the command line takes them: "13:5000,2028-06-01:2500".
    static QString eventsText(const QList<Event>& events);

    // The chart: line 0 the balance, line 1 the interest paid so far, at
    // year 0 and at the end of every year (or of the last payment).
    int numberOfLinesToBePlotted() const override { return schedule.isEmpty() ? 0 : 2; }
    int typeOfLineToBeDrawnWithLineNumber(int) const override { return 2; }
    Rgba colorForTheLineWithLineNumber(int line) const override;
    double widthForTheLineWithLineNumber(int) const override { return 1.0; }
    QString nameForTheLineWithLineNumber(int line) const override;
    bool shouldFillGraphWithLineNumber(int) const override { return false; }
    bool shouldDrawPointsWithLineNumber(int) const override { return true; }
    QStringList dataForXAxisWithLineNumber(int) const override;
    QList<std::optional<double>> dataForYAxisWithLineNumber(int line) const override;
    MultiLineGraphMarker customViewForLineChartTouchWithXValueAndYValue(const QString& x,
                                                                        double y) const override;

protected:
    void configureNames() override;

private:
    mutable std::optional<QList<Row>> m_yearTotals;
    // The schedule rows that end a year (and the last one).
    QList<qsizetype> yearEnds() const;
    static QString yearsText(double years, int decimals);
    void clearResults();
    // Leaves every result NaN, each with `reason` as its note.
    void refuse(const QString& reason);
    // Why the terms cannot be scheduled, in one line; empty when they can.
    // `count` is the payments of the term (0 when solving for it).
    QString problemWithEvents(int count) const;
    // The schedule's terms, the events placed on payment numbers.
    LoanSchedule::Terms terms(int count) const;
    // The payment an event falls on (its number, or the first payment
    // dated on or after its date); 0 when none does within `last` payments.
    int paymentOf(const Event& event, int last) const;
    void calculateRange();
    // The schedule as a text table with year subtotals, for the report.
    QString scheduleTable() const;
};
