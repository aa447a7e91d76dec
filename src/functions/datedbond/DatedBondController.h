#pragma once

#include "DatedBondModel.h"
#include "framework/QVChartController.h"
#include "framework/RateSweepChart.h"

// The dated bond screen: the bond's dates, coupon, redemption, frequency
// and basis, the yield and the clean price each with its solve button, and
// an optional call. A button reads the fields, solves its value from the
// other and writes it into its field; every result and the chart of the
// price against the yield follow. Edits compute nothing. Its fields,
// results and solve buttons are those of its description
// (DatedBondDescription.cpp).
class DatedBondController : public QVChartController {
    Q_OBJECT

public:
    // Ready to use: the model, the view and the chart are made here.
    explicit DatedBondController(QObject* parent = nullptr);

    Q_INVOKABLE void frequencyClicked();
    Q_INVOKABLE void basisClicked();

    QObject* chartDataSource() const override { return m_chart; }
    QString chartTitle() const override;
    ChartPicture reportChart() const override;

    DatedBondModel* datedBondModel() const { return static_cast<DatedBondModel*>(model()); }

protected:
    void solveFor(const QString& name) override;
    void connectMvc() override;

private:
    // Reads every field into the model, `given` ("yield" or "price") as
    // the value the solve starts from.
    void readInputs(const QString& given);
    // The number in `outlet` (`empty` for an empty field); NaN for a text
    // that cannot be read, and then `problem` says why, naming the field.
    double givenValue(const QString& outlet, double empty, QString* problem) const;

    RateSweepChart* m_chart = nullptr;
};
