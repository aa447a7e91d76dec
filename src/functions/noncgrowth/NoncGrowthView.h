#pragma once

#include "framework/QVFunctionView.h"

// Outlets: dividendField, returnRateField, periodField; priceResultLabel.
// The return-rate field is never read: the rates come from the table
// (GrowthTableController), one row per period.
class NoncGrowthView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
