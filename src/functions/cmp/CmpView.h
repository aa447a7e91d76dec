#pragma once

#include "framework/QVFunctionView.h"

// Outlets: principalAmountField, annualRateField, periodField, paymentField;
// modeButton and frequencyButton, titled with the current choice; the result
// labels balanceResultLabel, interestAmounResultLabel,
// totalPrincipalResultLabel and apyResultLabel.
class CmpView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
