#pragma once

#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

// Base of the tables embedded under a form (NPV's cash flows, the stock
// calculators' rate tables): columns of numbers with one row per period.
// A table keeps its own copy of the period, follows
// "PeriodChangedNotification" from any sender, and is read again
// (reloaded) at each one. The period starts at 4; the rows never outnumber
// the columns' capacity.
class TableController : public QObject {
    Q_OBJECT
    Q_PROPERTY(int period READ period NOTIFY reloaded)
    Q_PROPERTY(int rowCount READ numberOfRows NOTIFY reloaded)

public:
    int period() const { return m_period; }
    // One section of `period` rows, at most the capacity.
    Q_INVOKABLE int numberOfRows() const;

    void periodChangedNotificationReceived(const QVariantMap& userInfo);

signals:
    // The rows are to be read again.
    void reloaded();

protected:
    // Listens for period changes from the start.
    TableController(int capacity, QObject* parent);

    // A column of zeros, one per row the table can hold.
    QList<double> emptyColumn() const { return QList<double>(m_capacity, 0.0); }
    // The cell texts of the shown rows (see RateTable::cellText).
    QStringList shownTexts(const QList<double>& column) const;
    // "1", "2", ... for the shown rows.
    QStringList shownRowNumbers() const;

private:
    int m_capacity;
    int m_period = 4;
};
