#pragma once

#include "framework/QVFunctionView.h"

// Outlets: periodField; expReturnAResultLabel, expReturnBResultLabel,
// standardDeviationAResultLabel, standardDeviationBResultLabel. The state
// rows belong to the table (ExpReturnTableController).
class ExpReturnView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
