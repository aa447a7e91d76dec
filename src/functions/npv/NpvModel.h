#pragma once

#include "framework/QVFunctionModel.h"

#include <QList>
#include <optional>

// Net present value and internal rate of return of up to 99 cash flows, CF0
// (now, not discounted) to CF98. The cash flows arrive one at a time from
// the cash-flow table through "CashChangedNotification"; every change
// recomputes both results and posts "ResultCalculatedNotification".
class NpvModel : public QVFunctionModel {
    Q_OBJECT
    // The results the screen shows with a "%" after the number.
    Q_CLASSINFO("percentResults", "irr mirr")
    // Results that are lists, printed whole.
    Q_CLASSINFO("resultLists", "irrAll")
    Q_PROPERTY(int period MEMBER period)
    Q_PROPERTY(double discountRate MEMBER discountRate)
    Q_PROPERTY(QList<double> cashArray MEMBER cashArray)
    Q_PROPERTY(double npv MEMBER npv)
    Q_PROPERTY(double irr MEMBER irr)
    Q_PROPERTY(QList<double> irrAll MEMBER irrAll)
    Q_PROPERTY(double financeRate MEMBER financeRate)
    Q_PROPERTY(double reinvestRate MEMBER reinvestRate)
    Q_PROPERTY(double mirr MEMBER mirr)
    Q_PROPERTY(double profitabilityIndex MEMBER profitabilityIndex)
    Q_PROPERTY(double payback MEMBER payback)
    Q_PROPERTY(double discountedPayback MEMBER discountedPayback)

public:
    explicit NpvModel(QObject* parent = nullptr);

    // Room for CF0..CF99; the list never changes size.
    static constexpr int cashFlowCapacity = 100;

    int period = 4;          // number of cash flows in use, CF0 included
    double discountRate = 0; // percent per period
    // Flows beyond `period` are kept and count again when it grows.
    QList<double> cashArray;
    double npv = 0;
    double irr = 0; // percent, or NaN when no rate makes the NPV 0
    // Every rate that makes the NPV 0, in percent, lowest first; `irr` is
    // the one nearest 10 %.
    QList<double> irrAll;

    // The rates MIRR borrows at (for the outflows) and reinvests at (for
    // the inflows), percent per period, as typed; none typed means the
    // discount rate. financeRate and reinvestRate are the rates in use.
    std::optional<double> financeRateEntry;
    std::optional<double> reinvestRateEntry;
    double financeRate = 0;
    double reinvestRate = 0;
    // Modified IRR, percent per period: the inflows carried forward to the
    // last flow at the reinvestment rate, the outflows brought back to CF0
    // at the finance rate, and the rate that grows the one into the other.
    double mirr = 0;
    // The present value of CF1 onwards at the discount rate over the
    // outlay CF0.
    double profitabilityIndex = 0;
    // The periods until the running sum of the flows (discounted ones for
    // discountedPayback) is no longer negative, interpolated within the
    // period where it turns; 0 when it never was negative.
    double payback = 0;
    double discountedPayback = 0;

    // NPV of the first `period` flows at `rate` percent per period.
    double calculateNpvWithCashFlowsAndRate(const QList<double>& cashFlows, double rate) const;
    // IRR of the first `period` flows, in percent; NaN when none is found.
    double calculateIrrWithCashFlows(const QList<double>& cashFlows) const;

    // The same formulas for the first `count` flows of any list (fewer when
    // the list is shorter); no flows give 0.
    static double netPresentValue(const QList<double>& cashFlows, int count, double rate);
    static double internalRateOfReturn(const QList<double>& cashFlows, int count);
    // Every IRR of the first `count` flows in percent, lowest first, and,
    // when there is none, why.
    struct Rates {
        QList<double> all;
        QString reason;
    };
    static Rates internalRatesOfReturn(const QList<double>& cashFlows, int count);
    // MIRR of the first `count` flows in percent, as the spreadsheet
    // function defines it; NaN with a reason when there is none.
    struct Figure {
        double value;
        QString reason;
    };
    static Figure modifiedRateOfReturn(const QList<double>& cashFlows, int count,
                                       double financeRate, double reinvestRate);
    // Payback of the first `count` flows, each discounted at `rate` percent
    // (0 for the plain payback).
    static Figure paybackPeriods(const QList<double>& cashFlows, int count, double rate);

    void calculateResult() override;
    void cashChangedNotificationReceived(const QVariantMap& userInfo);
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;
};
