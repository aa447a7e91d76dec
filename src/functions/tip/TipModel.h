#pragma once

#include "framework/QVFunctionModel.h"

// Splits a bill that already includes sales tax: the tip is taken on the
// pre-tax amount. Nothing is guarded: 0 people give infinite or NaN shares,
// with a note asking for the number of people.
class TipModel : public QVFunctionModel {
    Q_OBJECT
    Q_PROPERTY(double bill MEMBER bill)
    Q_PROPERTY(double tipPercent MEMBER tipPercent)
    Q_PROPERTY(double salesTaxPercent MEMBER salesTaxPercent)
    Q_PROPERTY(int numberOfPeople MEMBER numberOfPeople)
    Q_PROPERTY(double tip MEMBER tip)
    Q_PROPERTY(double totalAmount MEMBER totalAmount)
    Q_PROPERTY(double tipPerPerson MEMBER tipPerPerson)
    Q_PROPERTY(double totalPerPerson MEMBER totalPerPerson)

public:
    // The results start as those of all-zero inputs (NaN where they
    // divide by zero), which is what a report made before any edit shows.
    explicit TipModel(QObject* parent = nullptr);

    double bill = 0;
    double tipPercent = 0;
    double salesTaxPercent = 0;
    int numberOfPeople = 0;
    double tip = 0;
    double totalAmount = 0;
    double tipPerPerson = 0;
    double totalPerPerson = 0;

    void calculateResult() override;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;
};
