#pragma once

#include "ConstGrowthModel.h"
#include "framework/QVFunctionController.h"

// The constant-growth screen: the dividend-type button and three fields;
// the price follows every edit and every choice of dividend type. Its
// fields and results are those of its description
// (ConstGrowthDescription.cpp).
class ConstGrowthController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit ConstGrowthController(QObject* parent = nullptr);

    // The dividend-type button's title before the user picks a type. It is
    // neither choice, so no price is worked out until one is picked.
    static const QString unchosenTitle;

    // The description's change action, with the dividend type taken from
    // the button's title first.
    void fieldChanged() override;

    // The "Dividend Type" sheet: the description's words ("Current (D0)",
    // "Next (D1)") and no cancel button. A choice retitles the button and
    // recomputes.
    Q_INVOKABLE void dividendTypeClicked();

    ConstGrowthModel* constGrowthModel() const { return static_cast<ConstGrowthModel*>(model()); }

protected:
    void connectMvc() override;

private:
    const FieldDescription& dividendTypeField() const;
};
