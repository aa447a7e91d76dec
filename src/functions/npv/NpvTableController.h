#pragma once

#include "framework/TableController.h"

#include <QString>

// The cash-flow table under the NPV form: one row per period, labelled
// "Cash Flow 0", "Cash Flow 1", ... It keeps its own copy of the flows and
// talks to the rest of the screen only by notifications: it posts
// "CashChangedNotification" ("tag": the row, "value": the flow) for every
// edit.
class NpvTableController : public TableController {
    Q_OBJECT
    Q_PROPERTY(QStringList leftLabelTexts READ leftLabelTexts NOTIFY reloaded)
    Q_PROPERTY(QStringList fieldTexts READ fieldTexts NOTIFY reloaded)

public:
    // Ready to use: 4 rows of zeros, listening for period changes.
    explicit NpvTableController(QObject* parent = nullptr);

    const QList<double>& cashArr() const { return m_cashArr; }

    Q_INVOKABLE QString leftLabelText(int row) const;
    // Empty for a flow of 0, else RateTable::cellText.
    Q_INVOKABLE QString fieldText(int row) const;
    QStringList leftLabelTexts() const;
    QStringList fieldTexts() const { return shownTexts(m_cashArr); }

    // The edit action of row `tag`'s field: keeps the flow and announces it.
    Q_INVOKABLE void fieldChanged(int tag, const QString& text);

private:
    QList<double> m_cashArr;
};
