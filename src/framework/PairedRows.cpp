#include "PairedRows.h"

#include <algorithm>

namespace {
enum Role { FirstRole = Qt::UserRole + 1, SecondRole, FirstProblemRole, SecondProblemRole };
} // namespace

PairedRows::PairedRows(Roles roles, int capacity, int shown, Problem problem, QObject* parent)
    : QAbstractListModel(parent),
      m_roles(std::move(roles)), m_columns{QStringList(capacity), QStringList(capacity)},
      m_shown(std::clamp(shown, 0, capacity)), m_problem(std::move(problem))
{}

int PairedRows::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_shown;
}

QVariant PairedRows::data(const QModelIndex& index, int role) const
{
    const int row = index.row();
    if (!index.isValid() || row >= m_shown)
        return {};
    switch (role) {
    case FirstRole:
        return text(0, row);
    case SecondRole:
        return text(1, row);
    case FirstProblemRole:
        return m_problem(row, 0);
    case SecondProblemRole:
        return m_problem(row, 1);
    default:
        return {};
    }
}

QHash<int, QByteArray> PairedRows::roleNames() const
{
    return {{FirstRole, m_roles.first},
            {SecondRole, m_roles.second},
            {FirstProblemRole, m_roles.firstProblem},
            {SecondProblemRole, m_roles.secondProblem}};
}

void PairedRows::setShown(int count)
{
    count = std::clamp(count, 0, capacity());
    if (count > m_shown) {
        beginInsertRows({}, m_shown, count - 1);
        m_shown = count;
        endInsertRows();
    } else if (count < m_shown) {
        beginRemoveRows({}, count, m_shown - 1);
        m_shown = count;
        endRemoveRows();
    }
}

bool PairedRows::setText(int column, int row, const QString& text)
{
    if (row < 0 || row >= capacity())
        return false;
    m_columns[column & 1][row] = text;
    if (row < m_shown)
        emit dataChanged(index(row), index(row));
    return true;
}

bool PairedRows::fill(int column, const QStringList& values)
{
    if (values.size() > capacity())
        return false;
    QStringList& cells = m_columns[column & 1];
    for (int row = 0; row < values.size(); ++row)
        cells[row] = values.at(row);
    const int wasShown = m_shown;
    setShown(std::max(m_shown, int(values.size())));
    if (const int changed = std::min(wasShown, int(values.size())); changed > 0)
        emit dataChanged(index(0), index(changed - 1));
    return true;
}

void PairedRows::replace(const QStringList& first, const QStringList& second)
{
    beginResetModel();
    for (int row = 0; row < capacity(); ++row) {
        m_columns[0][row] = first.value(row);
        m_columns[1][row] = second.value(row);
    }
    m_shown = std::min(int(first.size()), capacity());
    endResetModel();
}

QString PairedRows::readRows(const QString& what, const std::function<int(int row)>& number,
                             const std::function<void(int row)>& take) const
{
    int unreadable = 0;
    int first = -1;
    QString firstProblem;
    for (int row = 0; row < m_shown; ++row) {
        if (text(0, row).trimmed().isEmpty() && text(1, row).trimmed().isEmpty())
            continue; // an empty row is no row
        QString problem = m_problem(row, 0);
        if (problem.isEmpty())
            problem = m_problem(row, 1);
        if (problem.isEmpty()) {
            take(row);
        } else if (unreadable++ == 0) {
            first = row;
            firstProblem = problem;
        }
    }
    if (unreadable == 0)
        return {};
    if (unreadable == 1)
        return QStringLiteral("%1 %2 cannot be read. %3")
            .arg(what)
            .arg(number(first))
            .arg(firstProblem);
    return QStringLiteral("%1 %2 and %3 more cannot be read. %4")
        .arg(what)
        .arg(number(first))
        .arg(unreadable - 1)
        .arg(firstProblem);
}
