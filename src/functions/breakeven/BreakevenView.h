#pragma once

#include "framework/QVFunctionView.h"

// Outlets, in form order: fixedCostField, variableCostField, priceField,
// profitField, quantityField.
class BreakevenView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
