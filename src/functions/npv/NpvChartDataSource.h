#pragma once

#include "charts/MultiLineGraphDataSource.h"

#include <QObject>
#include <QPointer>

class NpvModel;

// The chart under the NPV result: the net present value of the model's
// cash flows against the discount rate, from 0 % to twice the larger of the
// model's rate and 10 % (at most 1000 %), in ten equal steps. NPVs that are
// not finite are left out of the line.
class NpvChartDataSource : public QObject,
                           public SingleLineGraphDataSource,
                           public MultiLineGraphDelegate {
    Q_OBJECT
    Q_INTERFACES(MultiLineGraphDataSource MultiLineGraphDelegate)

public:
    explicit NpvChartDataSource(NpvModel* model, QObject* parent = nullptr);

    static constexpr int steps = 10;
    static constexpr double maximumRate = 1000;

    // The discount rates of the points, in percent.
    QList<double> rates() const;

    Rgba colorForTheLineWithLineNumber(int) const override;
    QString nameForTheLineWithLineNumber(int) const override;
    QStringList dataForXAxisWithLineNumber(int) const override;
    QList<std::optional<double>> dataForYAxisWithLineNumber(int) const override;
    MultiLineGraphMarker customViewForLineChartTouchWithXValueAndYValue(const QString& x,
                                                                        double y) const override;

private:
    QPointer<NpvModel> m_model;
};
