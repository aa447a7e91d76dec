#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// The cash-flow table under the NPV form: one row per period, labelled
// "Cash Flow 0", "Cash Flow 1", ... It keeps its own copy of the flows and
// of the period, and talks to the rest of the screen only by notifications:
// it follows "PeriodChangedNotification" and posts "CashChangedNotification"
// ("tag": the row, "value": the flow) for every edit.
class NpvTableController : public QObject {
    Q_OBJECT
    Q_PROPERTY(int period READ period NOTIFY reloaded)
    Q_PROPERTY(int rowCount READ numberOfRows NOTIFY reloaded)
    Q_PROPERTY(QStringList leftLabelTexts READ leftLabelTexts NOTIFY reloaded)
    Q_PROPERTY(QStringList fieldTexts READ fieldTexts NOTIFY reloaded)

public:
    // Ready to use: 4 rows of zeros, listening for period changes.
    explicit NpvTableController(QObject* parent = nullptr);

    int period() const { return m_period; }
    const QList<double>& cashArr() const { return m_cashArr; }

    // The table's data source: one section of `period` rows (never more
    // rows than there are flows).
    Q_INVOKABLE int numberOfRows() const;
    Q_INVOKABLE QString leftLabelText(int row) const;
    // Empty for a flow of 0, else the flow in %g notation.
    Q_INVOKABLE QString fieldText(int row) const;
    QStringList leftLabelTexts() const;
    QStringList fieldTexts() const;

    // The edit action of row `tag`'s field: keeps the flow and announces it.
    Q_INVOKABLE void fieldChanged(int tag, const QString& text);

    void periodChangedNotificationReceived(const QVariantMap& userInfo);

signals:
    // The rows are to be read again.
    void reloaded();

private:
    void reloadData();

    QList<double> m_cashArr;
    int m_period = 4;
};
