#pragma once

#include "framework/QVFunctionModel.h"

#include <QList>

// The rates of one period, in percent.
struct GrowthRates {
    double returnRate = 0; // required return r
    double growthRate = 0; // dividend growth g
};

// The value of a share whose dividend grows at a different rate in each
// period: the dividends of the early periods discounted one by one, and the
// last period valued as a perpetuity growing at its rate (the Gordon value).
// The rates arrive one at a time from the rate table through
// "RateChangedNotification"; every change recomputes the price and posts
// "ResultCalculatedNotification".
class NoncGrowthModel : public QVFunctionModel {
    Q_OBJECT
    Q_PROPERTY(double dividend MEMBER dividend)
    Q_PROPERTY(double period MEMBER period)
    Q_PROPERTY(QList<double> returnRate READ returnRates)
    Q_PROPERTY(QList<double> growthRate READ growthRates)
    Q_PROPERTY(double price MEMBER price)

public:
    explicit NoncGrowthModel(QObject* parent = nullptr);

    // Room for the rates of 100 periods; the list never changes size.
    static constexpr int rateCapacity = 100;

    double dividend = 0; // the current dividend D0
    double period = 4;   // number of periods N; the last is the perpetuity
    // Rates beyond `period` are kept and count again when it grows.
    QList<GrowthRates> rates;
    double price = 0;

    // The columns of `rates`, all 100 rows.
    QList<double> returnRates() const;
    QList<double> growthRates() const;

    void calculateResult() override;
    void rateChangedNotificationReceived(const QVariantMap& userInfo);
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;
};
