#pragma once

#include "charts/MultiLineGraphDataSource.h"

#include <QObject>
#include <QPair>
#include <cmath>

// A data source and delegate with lines set by the test; it records the
// points it was asked to make a marker for.
class FakeGraphSource : public QObject,
                        public MultiLineGraphDataSource,
                        public MultiLineGraphDelegate {
    Q_OBJECT
    Q_INTERFACES(MultiLineGraphDataSource MultiLineGraphDelegate)

public:
    struct Line {
        QString name;
        Rgba color = Rgba(0x28, 0xab, 0xe3);
        QStringList labels;
        QList<std::optional<double>> values;
        bool fill = false;
        bool points = true;
        double width = 1.0;
    };

    explicit FakeGraphSource(QList<Line> lines = {}) : m_lines(std::move(lines)) {}

    // A future value growing at 1 % a period from 1000: values for periods
    // 1..n, labels "0".."n" (one more label than values).
    static Line growth(int periods, const QString& name = "FV")
    {
        Line line;
        line.name = name;
        for (int k = 0; k <= periods; ++k)
            line.labels.append(QString::number(k));
        for (int k = 1; k <= periods; ++k)
            line.values.append(1000 * std::pow(1.01, k));
        return line;
    }

    QList<Line>& lines() { return m_lines; }
    QList<QPair<QString, double>> touches() const { return m_touches; }

    int numberOfLinesToBePlotted() const override { return int(m_lines.size()); }
    int typeOfLineToBeDrawnWithLineNumber(int) const override { return 2; }
    Rgba colorForTheLineWithLineNumber(int line) const override { return m_lines[line].color; }
    double widthForTheLineWithLineNumber(int line) const override { return m_lines[line].width; }
    QString nameForTheLineWithLineNumber(int line) const override { return m_lines[line].name; }
    bool shouldFillGraphWithLineNumber(int line) const override { return m_lines[line].fill; }
    bool shouldDrawPointsWithLineNumber(int line) const override { return m_lines[line].points; }
    QStringList dataForXAxisWithLineNumber(int line) const override { return m_lines[line].labels; }
    QList<std::optional<double>> dataForYAxisWithLineNumber(int line) const override
    {
        return m_lines[line].values;
    }

    MultiLineGraphMarker customViewForLineChartTouchWithXValueAndYValue(const QString& x,
                                                                        double y) const override
    {
        m_touches.append({x, y});
        return {QStringLiteral("%1: %2").arg(m_lines.value(0).name).arg(y), QSizeF(100, 30)};
    }

private:
    QList<Line> m_lines;
    mutable QList<QPair<QString, double>> m_touches;
};
