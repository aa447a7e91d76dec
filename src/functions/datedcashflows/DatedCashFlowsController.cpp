#include "DatedCashFlowsController.h"

#include "numerics/DateText.h"
#include "numerics/NumberFormat.h"

#include <cmath>

namespace {
const QString rowCountField = QStringLiteral("rowCountField");
const QString rateField = QStringLiteral("rateField");
const QString basisButton = QStringLiteral("basisButton");
const QString notADate = QStringLiteral("Not a date: use YYYY-MM-DD");
} // namespace

DatedCashFlowRows::DatedCashFlowRows(DatedCashFlowsController* controller)
    : QAbstractListModel(controller), m_controller(controller)
{}

int DatedCashFlowRows::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_controller->rowCount();
}

QVariant DatedCashFlowRows::data(const QModelIndex& index, int role) const
{
    const int row = index.row();
    if (!index.isValid() || row >= rowCount())
        return {};
    switch (role) {
    case DateRole:
        return m_controller->dateText(row);
    case AmountRole:
        return m_controller->amountText(row);
    case DateProblemRole:
        return m_controller->dateProblem(row);
    case AmountProblemRole:
        return m_controller->amountProblem(row);
    default:
        return {};
    }
}

QHash<int, QByteArray> DatedCashFlowRows::roleNames() const
{
    return {{DateRole, "date"},
            {AmountRole, "amount"},
            {DateProblemRole, "dateProblem"},
            {AmountProblemRole, "amountProblem"}};
}

DatedCashFlowsController::DatedCashFlowsController(QObject* parent)
    : QVFunctionController(parent), m_dates(DatedCashFlowsModel::maximumRows),
      m_amounts(DatedCashFlowsModel::maximumRows), m_rows(this)
{
    load();
}

void DatedCashFlowsController::connectMvc()
{
    setModel(QVFunctionModel::create<DatedCashFlowsModel>());
    auto* view = new QVFunctionView(this);
    setView(view);
    view->setText(rowCountField, QString::number(m_rowCount));
    view->setText(basisButton, datedCashFlowsModel()->basis);
}

void DatedCashFlowsController::basisClicked()
{
    presentChoice(QStringLiteral("basis"), QStringLiteral("Day Count Basis"),
                  QStringLiteral("How should the years between the dates be counted?"),
                  [this](const QString& word) { datedCashFlowsModel()->basis = word; });
}

QString DatedCashFlowsController::dateProblem(int row) const
{
    const QString date = m_dates.value(row);
    // An amount needs a date to be placed in time.
    if (date.trimmed().isEmpty() && !m_amounts.value(row).trimmed().isEmpty())
        return notADate;
    return DateText::problemWith(date);
}

QString DatedCashFlowsController::amountProblem(int row) const
{
    const QString amount = m_amounts.value(row);
    if (QString problem = NumberFormat::problemWith(amount); !problem.isEmpty())
        return problem;
    // "1e400" or "Infinity" read, but no sum can take them: named like any
    // other amount that cannot be used, never left out.
    if (const std::optional<double> value = NumberFormat::readNumber(amount);
        value && !std::isfinite(*value))
        return QStringLiteral("Too large a number to compute with.");
    return {};
}

QStringList DatedCashFlowsController::tableTexts(const QString& property) const
{
    if (property == QLatin1String("dates"))
        return withoutTrailingEmptyRows(m_dates);
    if (property == QLatin1String("amounts"))
        return withoutTrailingEmptyRows(m_amounts);
    return {};
}

bool DatedCashFlowsController::setTableInput(const QString& property, const QStringList& values)
{
    const bool dates = property == QLatin1String("dates");
    if ((!dates && property != QLatin1String("amounts")) ||
        values.size() > DatedCashFlowsModel::maximumRows)
        return false;
    QStringList& column = dates ? m_dates : m_amounts;
    for (int row = 0; row < values.size(); ++row)
        column[row] = values.at(row);
    // The table shows at least as many rows as were given.
    const int shown = m_rowCount;
    setRowCount(std::max(m_rowCount, int(values.size())));
    qvFunctionView()->setText(rowCountField, QString::number(m_rowCount));
    if (const int changed = std::min(shown, int(values.size())); changed > 0)
        emit m_rows.dataChanged(m_rows.index(0), m_rows.index(changed - 1));
    compute();
    return true;
}

void DatedCashFlowsController::dateChanged(int row, const QString& text)
{
    if (row < 0 || row >= m_dates.size())
        return;
    m_dates[row] = text;
    if (row < m_rowCount)
        emit m_rows.dataChanged(m_rows.index(row), m_rows.index(row));
    compute();
}

void DatedCashFlowsController::amountChanged(int row, const QString& text)
{
    if (row < 0 || row >= m_amounts.size())
        return;
    m_amounts[row] = text;
    if (row < m_rowCount)
        emit m_rows.dataChanged(m_rows.index(row), m_rows.index(row));
    compute();
}

void DatedCashFlowsController::fieldChanged()
{
    // Only 2 to 10,000 rows are taken; anything else leaves the count as it
    // is.
    const double count = fieldNumber(rowCountField);
    if (count >= 2 && count <= DatedCashFlowsModel::maximumRows)
        setRowCount(int(count));
    compute();
}

void DatedCashFlowsController::setRowCount(int count)
{
    if (count > m_rowCount) {
        m_rows.beginInsertRows({}, m_rowCount, count - 1);
        m_rowCount = count;
        m_rows.endInsertRows();
    } else if (count < m_rowCount) {
        m_rows.beginRemoveRows({}, count, m_rowCount - 1);
        m_rowCount = count;
        m_rows.endRemoveRows();
    }
}

void DatedCashFlowsController::compute()
{
    DatedCashFlowsModel* m = datedCashFlowsModel();
    m->rate = fieldNumber(rateField);
    const QString rateProblem = fieldProblem(rateField);
    m->rateProblem = rateProblem.isEmpty()
                         ? QString()
                         : QStringLiteral("The rate cannot be read. %1").arg(rateProblem);
    m->flows.clear();
    m->flowsProblem.clear();
    int unreadable = 0;
    QString firstProblem;
    int firstRow = -1;
    for (int row = 0; row < m_rowCount; ++row) {
        const QString& date = m_dates.at(row);
        const QString& amount = m_amounts.at(row);
        if (date.trimmed().isEmpty() && amount.trimmed().isEmpty())
            continue; // an empty row is no flow
        QString problem = dateProblem(row);
        if (problem.isEmpty())
            problem = amountProblem(row);
        if (!problem.isEmpty()) {
            if (unreadable++ == 0) {
                firstRow = row;
                firstProblem = problem;
            }
            continue;
        }
        m->flows.append({*DateText::readIsoDate(date), NumberFormat::numberFromText(amount), row});
    }
    if (unreadable == 1)
        m->flowsProblem =
            QStringLiteral("Cash flow %1 cannot be read. %2").arg(firstRow).arg(firstProblem);
    else if (unreadable > 1)
        m->flowsProblem = QStringLiteral("Cash flow %1 and %2 more cannot be read. %3")
                              .arg(firstRow)
                              .arg(unreadable - 1)
                              .arg(firstProblem);
    m->calculateResult();
    showResults();
    emit rowsChanged();
}
