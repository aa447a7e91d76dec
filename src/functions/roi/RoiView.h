#pragma once

#include "framework/QVFunctionView.h"

// Outlets: investmentField, futureValueField, yearsField; gainResultLabel,
// roiResultLabel, annualizedRoiResultLabel.
class RoiView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
