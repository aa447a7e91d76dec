#pragma once

#include "CalculatorController.h"

#include <QAbstractListModel>
#include <QPointer>
#include <memory>

// The history screen's rows: the engine's log, oldest first. "Clear" only
// swaps this screen's list for an empty one; the engine keeps its log, so
// the next visit shows everything again.
class CalculatorHistoryModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(CalculatorController* calculator READ calculator WRITE setCalculator NOTIFY
                   calculatorChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        ResultRole = Qt::UserRole + 1, // the value shown
        DetailRole,                    // the expression typed, or the command ("Compute PV")
        LabelRole,                     // the result label without "="
    };

    using QAbstractListModel::QAbstractListModel;

    CalculatorController* calculator() const { return m_calculator; }
    void setCalculator(CalculatorController* calculator);
    void setLogArray(std::shared_ptr<const HistoryLog> log);
    int count() const { return m_log ? int(m_log->size()) : 0; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE void clearClicked();
    // Row `row`'s result as shown, for the clipboard ("" outside the list).
    Q_INVOKABLE QString resultAt(int row) const;
    // "Use": row `row`'s result onto the calculator's expression line at the
    // caret, written with the line's "." as the decimal point.
    Q_INVOKABLE void useResult(int row);

signals:
    void calculatorChanged();
    void countChanged();

private:
    QPointer<CalculatorController> m_calculator;
    std::shared_ptr<const HistoryLog> m_log;
};
