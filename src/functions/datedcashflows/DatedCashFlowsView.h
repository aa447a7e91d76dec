#pragma once

#include "framework/QVFunctionView.h"

// Outlets: rowCountField, rateField; xnpvLabel, xirrLabel. The rows' date
// and amount texts are kept by the controller.
class DatedCashFlowsView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
