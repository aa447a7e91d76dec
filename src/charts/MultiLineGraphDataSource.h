#pragma once

#include "platform/Rgba.h"

#include <QList>
#include <QObject>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <optional>

// What a multi-line graph asks of its owner: how many series, and for each
// its kind, colour, width, name, fill and points, x labels and values.
// Values may hold empty entries, which are skipped.
class MultiLineGraphDataSource {
public:
    virtual ~MultiLineGraphDataSource() = default;

    virtual int numberOfLinesToBePlotted() const = 0;
    // 2 is the straight-line series; other kinds draw as straight lines too.
    virtual int typeOfLineToBeDrawnWithLineNumber(int line) const = 0;
    virtual Rgba colorForTheLineWithLineNumber(int line) const = 0;
    virtual double widthForTheLineWithLineNumber(int line) const = 0;
    virtual QString nameForTheLineWithLineNumber(int line) const = 0;
    virtual bool shouldFillGraphWithLineNumber(int line) const = 0;
    virtual bool shouldDrawPointsWithLineNumber(int line) const = 0;
    virtual QStringList dataForXAxisWithLineNumber(int line) const = 0;
    virtual QList<std::optional<double>> dataForYAxisWithLineNumber(int line) const = 0;
};

// A graph of one straight line, 1 wide, unfilled, with its points drawn:
// the owner says only its colour, name and values.
class SingleLineGraphDataSource : public MultiLineGraphDataSource {
public:
    int numberOfLinesToBePlotted() const override { return 1; }
    int typeOfLineToBeDrawnWithLineNumber(int) const override { return 2; }
    double widthForTheLineWithLineNumber(int) const override { return 1.0; }
    bool shouldFillGraphWithLineNumber(int) const override { return false; }
    bool shouldDrawPointsWithLineNumber(int) const override { return true; }
};

// The box shown at a touched point, as the delegate wants it.
struct MultiLineGraphMarker {
    QString text;
    QSizeF size{100, 30};
};

// Optional: supplies a custom marker for a touched point.
class MultiLineGraphDelegate {
public:
    virtual ~MultiLineGraphDelegate() = default;
    virtual MultiLineGraphMarker customViewForLineChartTouchWithXValueAndYValue(const QString& x,
                                                                                double y) const = 0;
};

Q_DECLARE_INTERFACE(MultiLineGraphDataSource, "app.tallyvane.MultiLineGraphDataSource/1.0")
Q_DECLARE_INTERFACE(MultiLineGraphDelegate, "app.tallyvane.MultiLineGraphDelegate/1.0")
