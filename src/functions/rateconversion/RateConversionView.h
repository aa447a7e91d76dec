#pragma once

#include "framework/QVFunctionView.h"

// Outlets, in form order: nominalRateField, effectiveRateField,
// compoundingPerYearField; continuousRateResultLabel.
class RateConversionView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
