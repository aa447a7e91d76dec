#pragma once

#include "framework/QVFunctionView.h"

// Outlets: stockReturnField, marketReturnField, riskFreeRateField, betaField.
// Each field has a solve button that overwrites it with its solved value.
class CapmView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
