#pragma once

#include "framework/QVFunctionModel.h"

// Cost, price, profit margin and markup: the margin is the profit as a
// share of the price, the markup the profit as a share of the cost, both in
// percent. Any two of cost, price, margin and markup (other than margin
// with markup, which fix only each other) give the others; the two given
// are the fields not left blank.
class MarginModel : public QVFunctionModel {
    Q_OBJECT
    // The results the screen shows with a "%" after the number.
    Q_CLASSINFO("percentResults", "margin markup")
    Q_PROPERTY(double cost MEMBER cost)
    Q_PROPERTY(double price MEMBER price)
    Q_PROPERTY(double margin MEMBER margin)
    Q_PROPERTY(double markup MEMBER markup)
    Q_PROPERTY(double profit MEMBER profit)

public:
    using QVFunctionModel::QVFunctionModel;

    double cost = 0;
    double price = 0;
    double margin = 0; // percent of the price
    double markup = 0; // percent of the cost
    double profit = 0; // price − cost

    void calculateResult() override;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;

private:
    // Cost and price from the two given, each NaN with a note where the
    // pair gives none.
    void workOutCostAndPrice(bool costGiven, bool priceGiven, bool marginGiven);
};
