#pragma once

#include "framework/QVFunctionView.h"

// Outlets, in form order: loanAmountField, annualRateField, yearsField,
// paymentsPerYearButton, compoundingPerYearButton, paymentModeButton,
// extraPaymentField, firstPaymentDateField, roundToCentsField,
// rangeStartField, rangeEndField; paymentLabel, numberOfPaymentsLabel,
// totalInterestLabel, totalPaidLabel, lastPaymentLabel, payoffDateLabel,
// rangePrincipalLabel, rangeInterestLabel, rangeBalanceLabel.
class AmortizationView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
