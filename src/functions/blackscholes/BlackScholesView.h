#pragma once

#include "framework/QVFunctionView.h"

// Outlets: assetPriceField, exercisePriceField, timeToExpirationField,
// standardDeviationField, riskFreeRateField; callPriceLabel, putPriceLabel,
// callDeltaLabel, putDeltaLabel, callGammaLabel, putGammaLabel,
// callThetaLabel, putThetaLabel, callVegaLabel, putVegaLabel, callRhoLabel,
// putRhoLabel.
class BlackScholesView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
