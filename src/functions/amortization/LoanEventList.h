#pragma once

#include "AmortizationModel.h"

#include <QAbstractListModel>
#include <QStringList>

// The events of a loan as the screen edits them: rows of a payment number or
// date ("at"), a kind ("Extra payment" or "Rate change") and an amount or a
// rate, each kept as typed. A row with both texts empty is no event; a text
// that cannot be read is marked on its row (its line in the problem roles)
// and keeps the results blank, with a note naming the row.
class LoanEventList : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)

public:
    enum Role { AtRole = Qt::UserRole + 1, KindRole, ValueRole, AtProblemRole, ValueProblemRole };
    // The most rows the list takes.
    static constexpr int maximumRows = 600;

    using QAbstractListModel::QAbstractListModel;

    // The kinds a row can be: "Extra payment", "Rate change".
    static const QStringList& kinds();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // A new empty row of `kind` at the end; false when the list is full.
    bool append(const QString& kind, const QString& at = {}, const QString& value = {});
    void remove(int row);
    // Every row of `kind` replaced by `pairs` ("13:5000", as the command line
    // takes them; an empty text is none); false for too many rows.
    bool replaceKind(const QString& kind, const QStringList& pairs);
    void setAt(int row, const QString& text);
    void setKind(int row, const QString& kind);
    void setValue(int row, const QString& text);

    // The rows of `kind` as replaceKind takes them back ("13:5000", the
    // payment and the value as typed), in list order; rows with nothing
    // typed in them are no events and are left out.
    QStringList pairs(const QString& kind) const;
    // The readable events of `kind`, for the model.
    QList<AmortizationModel::Event> events(const QString& kind) const;
    // Why the rows cannot all be read ("Event 2 cannot be read. ..."), in one
    // line; empty when they can.
    QString problem() const;

signals:
    void countChanged();

private:
    struct Row {
        QString at;
        QString kind;
        QString value;
    };
    QString atProblem(const Row& row) const;
    QString valueProblem(const Row& row) const;
    void changed(int row);

    QList<Row> m_rows;
};
