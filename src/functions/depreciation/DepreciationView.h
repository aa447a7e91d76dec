#pragma once

#include "framework/QVFunctionView.h"

// Outlets, in form order: costField, salvageField, lifeField,
// firstYearMonthsField, methodButton, factorField;
// firstYearDepreciationLabel, totalDepreciationLabel.
class DepreciationView : public QVFunctionView {
    Q_OBJECT

public:
    using QVFunctionView::QVFunctionView;
};
