#pragma once

#include "charts/MultiLineGraphDataSource.h"
#include "framework/QVFunctionModel.h"

#include <QDate>
#include <QList>

// A loan paid off by level payments: the payment, the full schedule
// (interest, principal and balance of every payment), the totals, the
// payoff date and the "AMORT" range of a hand-held calculator (principal
// and interest paid from payment P1 to P2, and the balance after P2).
//
// The rate per payment period comes from the annual rate compounded
// `compoundingPerYear` times: (1 + r/c)^(c/p) − 1. With "round payments to
// cents" on, as lenders do, the payment and every interest amount are
// rounded half away from zero to the cent and the whole schedule is kept in
// integer cents, so no drift builds up over thousands of payments; the last
// payment is whatever clears the balance to exactly 0.00. An extra amount
// paid with every payment goes to the principal and ends the loan early.
// In BEG mode each payment is made at the start of its period, so the first
// one carries no interest.
//
// Its chart has two lines over the years of the loan: the balance still
// owed and the interest paid so far, both at the end of each year.
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

    // More payments than any loan has; a longer term gives no schedule.
    static constexpr int maximumPayments = 100000;
    // The payment frequencies and their counts a year.
    static const QList<std::pair<QString, int>>& frequencies();

    double loanAmount = 0;
    double annualRate = 0; // percent
    double years = 0;
    double paymentsPerYear = 12;
    double compoundingPerYear = 12;
    QString paymentMode = QStringLiteral("END");
    double extraPayment = 0;
    QDate firstPaymentDate;
    bool roundToCents = true;
    int rangeStart = 1;
    int rangeEnd = 12;

    double payment = 0;
    double numberOfPayments = 0;
    double totalInterest = 0;
    double totalPaid = 0;
    double rangePrincipal = 0;
    double rangeInterest = 0;
    double rangeBalance = 0;
    QDate payoffDate;
    QList<Row> schedule;

    void calculateResult();
    // The date of payment `period` (1 = the first payment date).
    QDate dateOfPayment(int period) const;
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
    void clearResults();
    void calculateRange();
};
