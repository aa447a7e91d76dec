#pragma once

#include "framework/QVFunctionView.h"

// Outlets: dividendTypeButton (its title is the chosen dividend type),
// dividendField, returnRateField, growthRateField; priceResultLabel.
class ConstGrowthView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
