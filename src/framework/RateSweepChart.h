#pragma once

#include "charts/MultiLineGraphDataSource.h"

#include <QObject>
#include <functional>

// A calculator's chart of one value against a rate: the rate (in percent)
// runs in ten equal steps from 0 (or from the calculator's own rate, when
// that is below 0 and the chart says so) to twice the larger of its own
// rate and 10 %, at most 1000 %. Values that are not finite are left out of
// the line; a chart with no line (`drawn` false) has no points at all.
class RateSweepChart : public QObject,
                       public SingleLineGraphDataSource,
                       public MultiLineGraphDelegate {
    Q_OBJECT
    Q_INTERFACES(MultiLineGraphDataSource MultiLineGraphDelegate)

public:
    struct Line {
        QString name;   // the legend's "NPV"
        QString color;  // "#RRGGBB"
        QString marker; // the touched point's box, "NPV at %1: %2" (rate, value)
        bool fromOwnRateBelowZero = false;
    };
    RateSweepChart(Line line, std::function<double()> ownRate,
                   std::function<double(double)> valueAt, std::function<bool()> drawn,
                   QObject* parent);

    static constexpr int steps = 10;
    static constexpr double maximumRate = 1000;

    // The rates of the points, in percent.
    QList<double> rates() const;

    Rgba colorForTheLineWithLineNumber(int) const override;
    QString nameForTheLineWithLineNumber(int) const override;
    QStringList dataForXAxisWithLineNumber(int) const override;
    QList<std::optional<double>> dataForYAxisWithLineNumber(int) const override;
    MultiLineGraphMarker customViewForLineChartTouchWithXValueAndYValue(const QString& x,
                                                                        double y) const override;

private:
    Line m_line;
    std::function<double()> m_ownRate;
    std::function<double(double)> m_valueAt;
    std::function<bool()> m_drawn;
};
