#pragma once

#include "DepreciationModel.h"
#include "framework/QVFunctionController.h"

#include <QVariantList>

// The depreciation screen: cost, salvage value, life, the months of the
// first year, the method (a choice) and the declining-balance factor; the
// first year's and the total depreciation and the year-by-year schedule,
// recomputed on every edit. The schedule can be saved as CSV. Its fields,
// choice and results are those of its description
// (DepreciationDescription.cpp).
class DepreciationController : public QVFunctionController {
    Q_OBJECT
    // One map a year: "year", "depreciation", "accumulated", "bookValue",
    // the numbers as the results' format writes them.
    Q_PROPERTY(QVariantList scheduleRows READ scheduleRows NOTIFY scheduleChanged)

public:
    // Ready to use: the model and view are made here.
    explicit DepreciationController(QObject* parent = nullptr);

    // The description's change action; the schedule follows.
    void fieldChanged() override;
    QByteArray scheduleCsv() const override;
    QVariantList scheduleRows() const;

    // The method's sheet, offering the description's words; a method
    // chosen is set in the model.
    Q_INVOKABLE void methodClicked();

    DepreciationModel* depreciationModel() const
    {
        return static_cast<DepreciationModel*>(model());
    }

signals:
    void scheduleChanged();

protected:
    void connectMvc() override;
};
