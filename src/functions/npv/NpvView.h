#pragma once

#include "framework/QVFunctionView.h"

// Outlets: periodField, discountRateField; npvResultLabel, irrResultLabel.
// The cash-flow rows belong to the table (NpvTableController).
class NpvView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
