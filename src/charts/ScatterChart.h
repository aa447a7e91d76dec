#pragma once

#include "charts/ScatterChartSource.h"

#include <QColor>
#include <QPointer>
#include <QQuickPaintedItem>

// A scatter chart item: the points of `source` (a QObject that implements
// ScatterChartSource) as dots and its curve as a line over them, on numeric
// x and y axes with a few round-numbered ticks. It reads the source again
// whenever `revision` changes; without points it draws nothing.
class ScatterChart : public QQuickPaintedItem {
    Q_OBJECT
    Q_PROPERTY(QObject* source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(int revision READ revision WRITE setRevision NOTIFY revisionChanged)
    Q_PROPERTY(QColor pointColor MEMBER m_pointColor WRITE setPointColor NOTIFY styleChanged)
    Q_PROPERTY(QColor curveColor MEMBER m_curveColor WRITE setCurveColor NOTIFY styleChanged)
    Q_PROPERTY(QColor gridLineColor MEMBER m_gridColor WRITE setGridLineColor NOTIFY styleChanged)
    Q_PROPERTY(QColor textColor MEMBER m_textColor WRITE setTextColor NOTIFY styleChanged)
    Q_PROPERTY(qreal textFontSize MEMBER m_textFontSize WRITE setTextFontSize NOTIFY styleChanged)
    Q_PROPERTY(int pointCount READ pointCount NOTIFY revisionChanged)

public:
    explicit ScatterChart(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    QObject* source() const { return m_source; }
    void setSource(QObject* source);
    int revision() const { return m_revision; }
    void setRevision(int revision);
    int pointCount() const { return int(m_data.points.size()); }
    void setPointColor(const QColor& color);
    void setCurveColor(const QColor& color);
    void setGridLineColor(const QColor& color);
    void setTextColor(const QColor& color);
    void setTextFontSize(qreal size);

    // Round tick values covering [low, high], about `wanted` of them (1, 2
    // or 5 times a power of ten apart); at most 20.
    static QList<double> ticks(double low, double high, int wanted);

signals:
    void sourceChanged();
    void revisionChanged();
    void styleChanged();

private:
    void reload();

    QPointer<QObject> m_source;
    int m_revision = 0;
    ScatterData m_data;
    QColor m_pointColor{0x35, 0x44, 0x58};
    QColor m_curveColor{0xF2, 0xA9, 0x3B};
    QColor m_gridColor{0xD3, 0xD3, 0xD3};
    QColor m_textColor{0x1B, 0x26, 0x33};
    qreal m_textFontSize = 12;
};
