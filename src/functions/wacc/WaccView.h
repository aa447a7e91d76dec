#pragma once

#include "framework/QVFunctionView.h"

// Outlets: costOfEquityField, equityField, costOfDebtField, debtField,
// corporateTaxRateField; waccResultLabel.
class WaccView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
