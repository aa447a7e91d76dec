#pragma once

#include "DayCountModel.h"
#include "framework/QVFunctionController.h"

// The "Days between dates" screen: the start and end dates, the basis and
// the days to add; every edit and every basis chosen recomputes all four
// results. A date or number that cannot be read leaves the results that
// need it blank, with a note naming it. Its fields and results are those of
// its description (DayCountDescription.cpp).
class DayCountController : public QVFunctionController {
    Q_OBJECT

public:
    // Ready to use: the model and view are made here.
    explicit DayCountController(QObject* parent = nullptr);

    void fieldChanged() override;
    Q_INVOKABLE void basisClicked();

    DayCountModel* dayCountModel() const { return static_cast<DayCountModel*>(model()); }

protected:
    void connectMvc() override;
};
