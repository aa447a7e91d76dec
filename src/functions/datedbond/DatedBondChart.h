#pragma once

#include "charts/MultiLineGraphDataSource.h"

#include <QObject>
#include <QPointer>

class DatedBondModel;

// The chart under the dated bond's results: its clean price against the
// yield, from 0 % (or the yield, when it is below 0) to twice the larger
// of the yield and 10 % (at most 1000 %), in ten equal steps. Prices that
// are not finite are left out of the line.
class DatedBondChart : public QObject,
                       public SingleLineGraphDataSource,
                       public MultiLineGraphDelegate {
    Q_OBJECT
    Q_INTERFACES(MultiLineGraphDataSource MultiLineGraphDelegate)

public:
    explicit DatedBondChart(DatedBondModel* model, QObject* parent = nullptr);

    static constexpr int steps = 10;
    static constexpr double maximumYield = 1000;

    // The yields of the points, in percent a year.
    QList<double> yields() const;

    Rgba colorForTheLineWithLineNumber(int) const override;
    QString nameForTheLineWithLineNumber(int) const override;
    QStringList dataForXAxisWithLineNumber(int) const override;
    QList<std::optional<double>> dataForYAxisWithLineNumber(int) const override;
    MultiLineGraphMarker customViewForLineChartTouchWithXValueAndYValue(const QString& x,
                                                                        double y) const override;

private:
    QPointer<DatedBondModel> m_model;
};
