#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// The rate table under the nonconstant-growth form: one row (a RateCellView
// in the screen) per period, numbered from 1, with the required return and
// the dividend growth of that period. It keeps its own copies of the rates
// and of the period and talks to the rest of the screen only by
// notifications: it follows "PeriodChangedNotification" (from any sender)
// and posts "RateChangedNotification" ("type": "return-rate" or
// "growth-rate"; "tag": the row; "value": the rate) for every edit.
class GrowthTableController : public QObject {
    Q_OBJECT
    Q_PROPERTY(double period READ period NOTIFY reloaded)
    Q_PROPERTY(int rowCount READ numberOfRows NOTIFY reloaded)
    Q_PROPERTY(QStringList yearLabelTexts READ yearLabelTexts NOTIFY reloaded)
    Q_PROPERTY(QStringList returnRateTexts READ returnRateTexts NOTIFY reloaded)
    Q_PROPERTY(QStringList growthRateTexts READ growthRateTexts NOTIFY reloaded)

public:
    // Ready to use: 4 rows of zeros, listening for period changes.
    explicit GrowthTableController(QObject* parent = nullptr);

    double period() const { return m_period; }
    const QList<double>& growthArr() const { return m_growthArr; }
    const QList<double>& returnRateArr() const { return m_returnRateArr; }

    // One section with a row per whole period (never more rows than rates).
    Q_INVOKABLE int numberOfRows() const;
    // "1", "2", ...: the period's number.
    Q_INVOKABLE QString yearLabelText(int row) const;
    // A cell's text: empty for 0, else the rate in %g notation.
    Q_INVOKABLE QString returnRateText(int row) const;
    Q_INVOKABLE QString growthRateText(int row) const;
    QStringList yearLabelTexts() const;
    QStringList returnRateTexts() const;
    QStringList growthRateTexts() const;

    // The edit actions of row `tag`'s two fields: keep the rate (0 when the
    // text is not a number) and announce it.
    Q_INVOKABLE void returnRateChanged(int tag, const QString& text);
    Q_INVOKABLE void growthRateChanged(int tag, const QString& text);

    void periodChangedNotificationReceived(const QVariantMap& userInfo);

signals:
    // The rows are to be read again.
    void reloaded();

private:
    void reloadData();

    double m_period = 4.0;
    QList<double> m_growthArr;
    QList<double> m_returnRateArr;
};
