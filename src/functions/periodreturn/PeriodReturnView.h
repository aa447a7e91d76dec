#pragma once

#include "framework/QVFunctionView.h"

// Outlets, in form order: initialValueField, endingValueField, incomeField;
// hprResultLabel.
class PeriodReturnView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
