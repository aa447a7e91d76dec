#pragma once

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
    Q_PROPERTY(double payment MEMBER payment)
    Q_PROPERTY(double numberOfPayments MEMBER numberOfPayments)
    Q_PROPERTY(double totalInterest MEMBER totalInterest)
    Q_PROPERTY(double totalPaid MEMBER totalPaid)
    Q_PROPERTY(double lastPayment MEMBER lastPayment)
    Q_PROPERTY(QString payoffDate READ payoffDateText)
    Q_PROPERTY(double rangePrincipal MEMBER rangePrincipal)
    Q_PROPERTY(double rangeInterest MEMBER rangeInterest)
    Q_PROPERTY(double rangeBalance MEMBER rangeBalance)

public:
    using QVFunctionModel::QVFunctionModel;

    struct Row {
        int period = 0;
        QDate date; // invalid without a first-payment date
        double payment = 0;
        double interest = 0;
        double principal = 0;
        double balance = 0;
    };

    // More payments than any loan has (a weekly loan over 19,000 years); a
    // longer term gives no schedule and a note saying so. A schedule this
    // long takes about 50 MB and a fraction of a second.
    static constexpr int maximumPayments = 1000000;
    // The chart shows at most this many year ends, evenly spread; the last
    // payment is always among them.
    static constexpr int maximumChartPoints = 1200;
    // The payment frequencies and their counts a year.
    static const QList<std::pair<QString, int>>& frequencies();
    // Their words, in that order ("Monthly", "Semimonthly", ...), and the
    // count a year of one of them; none for any other word.
    static QStringList frequencyWords();
    static std::optional<int> countOf(const QString& word);
    // When in its period each payment is made: "BEG" or "END".
    static const QStringList& modes();

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

    double payment = 0;
    double numberOfPayments = 0;
    double totalInterest = 0;
    double totalPaid = 0;
    double lastPayment = 0;
    double rangePrincipal = 0;
    double rangeInterest = 0;
    double rangeBalance = 0;
    QDate payoffDate;
    QList<Row> schedule;

    void calculateResult() override;
    // The date of payment `period` (1 = the first payment date).
    QDate dateOfPayment(int period) const;
    // The payoff date as YYYY-MM-DD; empty without a first payment date.
    QString payoffDateText() const { return isoDate(payoffDate); }
    // YYYY-MM-DD, also for the years past 9999 that Qt's ISO format leaves
    // empty; empty for an invalid date.
    static QString isoDate(const QDate& date);
    // "period,date,payment,interest,principal,balance", one row a payment.
    QByteArray scheduleCsv() const;
    void createReport(const QVariantMap& userInfo) override;

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
    // The schedule rows that end a year (and the last one).
    QList<qsizetype> yearEnds() const;
    static QString yearsText(double years, int decimals);
    void clearResults();
    // Leaves every result NaN, each with `reason` as its note.
    void refuse(const QString& reason);
    // The schedule in whole cents (false when an amount passes Cents::maximum)
    // or in plain doubles.
    bool scheduleInCents(int count, double i, bool beginning, double level);
    void scheduleUnrounded(int count, double i, bool beginning, double level);
    void calculateRange();
};
