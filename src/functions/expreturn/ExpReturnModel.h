#pragma once

#include "framework/QVFunctionModel.h"

#include <QList>

// One economic state: how likely it is and what stocks A and B return in it,
// all in percent.
struct ExpReturnState {
    double probability = 0;
    double stockA = 0;
    double stockB = 0;
};

// Probability-weighted expected return and standard deviation of two stocks
// over up to 99 economic states. The states arrive one value at a time from
// the state table through "RateChangedNotification"; every change
// recomputes the results and posts "ResultCalculatedNotification".
class ExpReturnModel : public QVFunctionModel {
    Q_OBJECT
    // The results the screen shows with a "%" after the number.
    Q_CLASSINFO("percentResults",
                "expectedReturnA expectedReturnB standardDeviationA standardDeviationB")
    Q_PROPERTY(int period MEMBER period)
    Q_PROPERTY(QList<double> probability READ probabilities)
    Q_PROPERTY(QList<double> stockA READ stockAReturns)
    Q_PROPERTY(QList<double> stockB READ stockBReturns)
    Q_PROPERTY(double expectedReturnA MEMBER expectedReturnA)
    Q_PROPERTY(double expectedReturnB MEMBER expectedReturnB)
    Q_PROPERTY(double standardDeviationA MEMBER standardDeviationA)
    Q_PROPERTY(double standardDeviationB MEMBER standardDeviationB)

public:
    explicit ExpReturnModel(QObject* parent = nullptr);

    // Room for 100 states; the list never changes size.
    static constexpr int stateCapacity = 100;

    int period = 4; // number of states in use
    // States beyond `period` are kept and count again when it grows.
    QList<ExpReturnState> rates;
    double expectedReturnA = 0;    // percent
    double expectedReturnB = 0;    // percent
    double standardDeviationA = 0; // percent
    double standardDeviationB = 0; // percent

    // The columns of `rates`, all 100 rows.
    QList<double> probabilities() const;
    QList<double> stockAReturns() const;
    QList<double> stockBReturns() const;

    void calculateResult() override;
    void rateChangedNotificationReceived(const QVariantMap& userInfo);
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;
};
