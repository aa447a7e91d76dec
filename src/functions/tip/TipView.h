#pragma once

#include "framework/QVFunctionView.h"

// Outlets: billField, tipPercentField, numberOfPeopleField, salesTaxField;
// totalAmountResultLabel, totalPerPersonResultLabel, tipResultLabel,
// tipPerPersonResultLabel.
class TipView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
