#pragma once

#include <QList>
#include <QObject>
#include <QPointF>

// What a scatter chart draws: the points, and a curve through them as a
// polyline (points in order of x; a break where a point is missing is not
// needed, the curves drawn have none).
struct ScatterData {
    QList<QPointF> points;
    QList<QPointF> curve;

    bool isEmpty() const { return points.isEmpty(); }
};

// What a scatter chart asks of its owner (a QObject that declares this
// interface with Q_INTERFACES).
class ScatterChartSource {
public:
    virtual ~ScatterChartSource() = default;
    virtual ScatterData scatterData() const = 0;
};

Q_DECLARE_INTERFACE(ScatterChartSource, "app.tallyvane.ScatterChartSource/1.0")
