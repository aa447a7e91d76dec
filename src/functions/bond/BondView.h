#pragma once

#include "framework/QVFunctionView.h"

// Outlets: faceValueField, couponRateField, couponPaymentField (never read),
// yieldToMaturityField, yearsField; frequencyButton, titled with the
// frequency word; bondValueLabel, maculayDurationLabel,
// modifiedDurationLabel, convexityLabel.
class BondView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
