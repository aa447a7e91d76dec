#pragma once

#include "framework/QVFunctionView.h"

// Outlets: pvField, fvField, interestField, periodField, pmtField;
// frequencyButton and modeButton, titled with the current choice.
class TvmView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
