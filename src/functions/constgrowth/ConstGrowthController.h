#pragma once

#include "ConstGrowthModel.h"
#include "ConstGrowthView.h"
#include "framework/QVFunctionController.h"

// The constant-growth screen: the dividend-type button and three fields;
// the price follows every edit and every choice of dividend type.
class ConstGrowthController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit ConstGrowthController(QObject* parent = nullptr);

    // The dividend-type button's title before the user picks a type. It is
    // neither choice, so no price is worked out until one is picked.
    static const QString unchosenTitle;

    QList<FunctionInput> inputs() const override;
    void fieldChanged() override;

    // The "Dividend Type" sheet: "Current (D0)" or "Next (D1)", and no
    // cancel button. A choice retitles the button and recomputes.
    Q_INVOKABLE void dividendTypeClicked();

    ConstGrowthModel* constGrowthModel() const { return static_cast<ConstGrowthModel*>(model()); }
    ConstGrowthView* constGrowthView() const
    {
        return static_cast<ConstGrowthView*>(qvFunctionView());
    }

protected:
    void connectMvc() override;

private:
    void setInputValues();
    void showResult();
};
