#pragma once

#include "framework/TableController.h"

#include <QString>

// The rate table under the nonconstant-growth form: one row (a RateCellView
// in the screen) per period, numbered from 1, with the required return and
// the dividend growth of that period. It keeps its own copies of the rates
// and talks to the rest of the screen only by notifications: it posts
// "RateChangedNotification" ("type": "return-rate" or "growth-rate"; "tag":
// the row; "value": the rate) for every edit.
class GrowthTableController : public TableController {
    Q_OBJECT
    Q_PROPERTY(QStringList yearLabelTexts READ yearLabelTexts NOTIFY reloaded)
    Q_PROPERTY(QStringList returnRateTexts READ returnRateTexts NOTIFY reloaded)
    Q_PROPERTY(QStringList growthRateTexts READ growthRateTexts NOTIFY reloaded)

public:
    // Ready to use: 4 rows of zeros, listening for period changes.
    explicit GrowthTableController(QObject* parent = nullptr);

    const QList<double>& growthArr() const { return m_growthArr; }
    const QList<double>& returnRateArr() const { return m_returnRateArr; }

    // A cell's text: empty for 0, else RateTable::cellText.
    Q_INVOKABLE QString returnRateText(int row) const;
    Q_INVOKABLE QString growthRateText(int row) const;
    // "1", "2", ...: the periods' numbers.
    QStringList yearLabelTexts() const { return shownRowNumbers(); }
    QStringList returnRateTexts() const { return shownTexts(m_returnRateArr); }
    QStringList growthRateTexts() const { return shownTexts(m_growthArr); }

    // The edit actions of row `tag`'s two fields: keep the rate (0 when the
    // text is not a number) and announce it.
    Q_INVOKABLE void returnRateChanged(int tag, const QString& text);
    Q_INVOKABLE void growthRateChanged(int tag, const QString& text);

private:
    QList<double> m_growthArr;
    QList<double> m_returnRateArr;
};
