#pragma once

#include "framework/TableController.h"

#include <QString>

// The state table under the expected-return form: one row (an ExpCellView
// in the screen) per state, numbered from 1, with a probability and the
// returns of stocks A and B. It keeps its own copies of the values and
// talks to the rest of the screen only by notifications: it posts
// "RateChangedNotification" ("type": "probability", "stock-a" or "stock-b";
// "tag": the row; "value": the number) for every edit.
class ExpReturnTableController : public TableController {
    Q_OBJECT
    Q_PROPERTY(QStringList stateLabelTexts READ stateLabelTexts NOTIFY reloaded)
    Q_PROPERTY(QStringList probabilityTexts READ probabilityTexts NOTIFY reloaded)
    Q_PROPERTY(QStringList stockATexts READ stockATexts NOTIFY reloaded)
    Q_PROPERTY(QStringList stockBTexts READ stockBTexts NOTIFY reloaded)

public:
    // Ready to use: 4 rows of zeros, listening for period changes.
    explicit ExpReturnTableController(QObject* parent = nullptr);

    const QList<double>& probArr() const { return m_probArr; }
    const QList<double>& stockAArr() const { return m_stockAArr; }
    const QList<double>& stockBArr() const { return m_stockBArr; }

    // A cell's text: empty for 0, else RateTable::cellText.
    Q_INVOKABLE QString probabilityText(int row) const;
    Q_INVOKABLE QString stockAText(int row) const;
    Q_INVOKABLE QString stockBText(int row) const;
    // "1", "2", ...: the states' numbers.
    QStringList stateLabelTexts() const { return shownRowNumbers(); }
    QStringList probabilityTexts() const { return shownTexts(m_probArr); }
    QStringList stockATexts() const { return shownTexts(m_stockAArr); }
    QStringList stockBTexts() const { return shownTexts(m_stockBArr); }

    // The edit actions of row `tag`'s three fields: keep the number (0 when
    // the text is not one) and announce it.
    Q_INVOKABLE void probabilityChanged(int tag, const QString& text);
    Q_INVOKABLE void stockAChanged(int tag, const QString& text);
    Q_INVOKABLE void stockBChanged(int tag, const QString& text);

private:
    QList<double> m_probArr;
    QList<double> m_stockAArr;
    QList<double> m_stockBArr;
};
