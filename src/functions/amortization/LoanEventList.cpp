#include "LoanEventList.h"

#include "numerics/EventText.h"
#include "numerics/NumberFormat.h"

const QStringList& LoanEventList::kinds()
{
    static const QStringList words = {QStringLiteral("Extra payment"),
                                      QStringLiteral("Rate change")};
    return words;
}

int LoanEventList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant LoanEventList::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const Row& row = m_rows.at(index.row());
    switch (role) {
    case AtRole:
        return row.at;
    case KindRole:
        return row.kind;
    case ValueRole:
        return row.value;
    case AtProblemRole:
        return atProblem(row);
    case ValueProblemRole:
        return valueProblem(row);
    default:
        return {};
    }
}

QHash<int, QByteArray> LoanEventList::roleNames() const
{
    return {{AtRole, "at"},
            {KindRole, "kind"},
            {ValueRole, "value"},
            {AtProblemRole, "atProblem"},
            {ValueProblemRole, "valueProblem"}};
}

bool LoanEventList::append(const QString& kind, const QString& at, const QString& value)
{
    if (m_rows.size() >= maximumRows)
        return false;
    const int row = int(m_rows.size());
    beginInsertRows({}, row, row);
    m_rows.append({at, kinds().contains(kind) ? kind : kinds().first(), value});
    endInsertRows();
    emit countChanged();
    return true;
}

void LoanEventList::remove(int row)
{
    if (row < 0 || row >= m_rows.size())
        return;
    beginRemoveRows({}, row, row);
    m_rows.removeAt(row);
    endRemoveRows();
    emit countChanged();
}

bool LoanEventList::replaceKind(const QString& kind, const QStringList& pairs)
{
    QList<Row> rows;
    for (const Row& row : std::as_const(m_rows)) {
        if (row.kind != kind)
            rows.append(row);
    }
    for (const QString& pair : pairs) {
        if (pair.trimmed().isEmpty())
            continue;
        // The text left of the first colon is the payment; all of it stays
        // on the row (and is marked) when it has no colon.
        const qsizetype colon = pair.indexOf(QLatin1Char(':'));
        rows.append({colon < 0 ? pair : pair.left(colon), kind,
                     colon < 0 ? QString() : pair.mid(colon + 1)});
    }
    if (rows.size() > maximumRows)
        return false;
    beginResetModel();
    m_rows = rows;
    endResetModel();
    emit countChanged();
    return true;
}

void LoanEventList::setAt(int row, const QString& text)
{
    if (row >= 0 && row < m_rows.size() && m_rows[row].at != text) {
        m_rows[row].at = text;
        changed(row);
    }
}

void LoanEventList::setKind(int row, const QString& kind)
{
    if (row >= 0 && row < m_rows.size() && kinds().contains(kind) && m_rows[row].kind != kind) {
        m_rows[row].kind = kind;
        changed(row);
    }
}

void LoanEventList::setValue(int row, const QString& text)
{
    if (row >= 0 && row < m_rows.size() && m_rows[row].value != text) {
        m_rows[row].value = text;
        changed(row);
    }
}

void LoanEventList::changed(int row)
{
    emit dataChanged(index(row), index(row));
}

QString LoanEventList::atProblem(const Row& row) const
{
    if (row.at.trimmed().isEmpty())
        return row.value.trimmed().isEmpty() ? QString()
                                             : QStringLiteral("Enter a payment number or date");
    return EventText::problemWithAt(row.at);
}

QString LoanEventList::valueProblem(const Row& row) const
{
    if (row.value.trimmed().isEmpty())
        return row.at.trimmed().isEmpty()
                   ? QString()
                   : (row.kind == kinds().at(1) ? QStringLiteral("Enter the new rate")
                                                : QStringLiteral("Enter the amount"));
    return NumberFormat::problemWith(row.value);
}

QStringList LoanEventList::pairs(const QString& kind) const
{
    QStringList texts;
    for (const Row& row : m_rows) {
        if (row.kind == kind && !(row.at.trimmed().isEmpty() && row.value.trimmed().isEmpty()))
            texts << row.at + QLatin1Char(':') + row.value;
    }
    return texts;
}

QList<AmortizationModel::Event> LoanEventList::events(const QString& kind) const
{
    QList<AmortizationModel::Event> list;
    for (const Row& row : m_rows) {
        if (row.kind != kind)
            continue;
        const std::optional<EventText::At> at = EventText::readAt(row.at);
        const std::optional<double> value = NumberFormat::readNumber(row.value);
        if (at && value)
            list.append({at->payment, at->date, *value});
    }
    return list;
}

QString LoanEventList::problem() const
{
    for (qsizetype k = 0; k < m_rows.size(); ++k) {
        const Row& row = m_rows.at(k);
        QString problem = atProblem(row);
        if (problem.isEmpty())
            problem = valueProblem(row);
        if (!problem.isEmpty())
            return QStringLiteral("Event %1 cannot be read. %2").arg(k + 1).arg(problem);
    }
    return {};
}
