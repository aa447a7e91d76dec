#pragma once

#include <QAbstractListModel>
#include <QByteArray>
#include <QStringList>
#include <functional>

// A screen's table whose rows hold two typed cells each (a date and an
// amount, an x and a y), for its list: every cell's text as typed, for up
// to `capacity` rows, of which the first shown() are on the screen; hidden
// rows keep their texts and come back when the table grows. Each row gives
// the list its two texts and, for a text that cannot be read, the line its
// cell shows (`problem`). An edit changes only its own row, so a long list
// stays quick to edit.
class PairedRows : public QAbstractListModel {
    Q_OBJECT

public:
    // The roles the list reads: the two texts, then the two problems.
    struct Roles {
        QByteArray first, second, firstProblem, secondProblem;
    };
    // Why the text of cell `column` (0 or 1) of `row` cannot be read;
    // empty when it can.
    using Problem = std::function<QString(int row, int column)>;

    PairedRows(Roles roles, int capacity, int shown, Problem problem, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int capacity() const { return int(m_columns[0].size()); }
    int shown() const { return m_shown; }
    // Shows `count` rows (0 to capacity()), the list told of the rows that
    // come or go.
    void setShown(int count);
    QString text(int column, int row) const { return m_columns[column & 1].value(row); }
    // Every text of a column, the hidden rows too.
    const QStringList& column(int column) const { return m_columns[column & 1]; }
    // One edit of a cell; false (and nothing changes) for a row out of range.
    bool setText(int column, int row, const QString& text);
    // Fills the first rows of a column with `values` and shows at least as
    // many rows; false (and nothing changes) when they are more than
    // capacity().
    bool fill(int column, const QStringList& values);
    // Replaces both columns with `first` and `second` (the rows beyond them
    // empty) and shows as many rows as `first` has.
    void replace(const QStringList& first, const QStringList& second);
    // The shown rows in use (a row with both cells empty is none): each
    // whose cells both read goes to `take`, in order; the others are left
    // out and told in the line returned, which names the first by `what`
    // and its number (`number(row)`) with the problem of its first cell
    // that cannot be read ("Row 3 cannot be read. Not a number", "Row 3 and
    // 2 more cannot be read. ..."); empty when every row reads.
    QString readRows(const QString& what, const std::function<int(int row)>& number,
                     const std::function<void(int row)>& take) const;

private:
    Roles m_roles;
    QStringList m_columns[2];
    int m_shown;
    Problem m_problem;
};
