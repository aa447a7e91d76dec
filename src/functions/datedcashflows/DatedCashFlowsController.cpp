#include "DatedCashFlowsController.h"

#include "framework/NumberFormat.h"

#include <cmath>

namespace {
const QString rowCountField = QStringLiteral("rowCountField");
const QString rateField = QStringLiteral("rateField");
} // namespace

DatedCashFlowsController::DatedCashFlowsController(QObject* parent)
    : QVFunctionController(parent), m_dates(DatedCashFlowsModel::maximumRows),
      m_amounts(DatedCashFlowsModel::maximumRows)
{
    load();
}

void DatedCashFlowsController::connectMvc()
{
    setModel(QVFunctionModel::create<DatedCashFlowsModel>());
    auto* view = new DatedCashFlowsView(this);
    setView(view);
    view->setText(rowCountField, QString::number(m_rowCount));
}

QList<FunctionInput> DatedCashFlowsController::inputs() const
{
    return {{QStringLiteral("rate"), rateField}, {QStringLiteral("rows"), rowCountField}};
}

QList<TableInput> DatedCashFlowsController::tableInputs() const
{
    return {{QStringLiteral("dates"), DatedCashFlowsModel::maximumRows},
            {QStringLiteral("amounts"), DatedCashFlowsModel::maximumRows}};
}

bool DatedCashFlowsController::setTableInput(const QString& property, const QStringList& values)
{
    const bool dates = property == QLatin1String("dates");
    if ((!dates && property != QLatin1String("amounts")) ||
        values.size() > DatedCashFlowsModel::maximumRows)
        return false;
    QStringList& column = dates ? m_dates : m_amounts;
    for (int row = 0; row < values.size(); ++row)
        column[row] = values.at(row).trimmed();
    // The table shows at least as many rows as were given.
    m_rowCount = std::max(m_rowCount, int(values.size()));
    qvFunctionView()->setText(rowCountField, QString::number(m_rowCount));
    compute();
    return true;
}

void DatedCashFlowsController::dateChanged(int row, const QString& text)
{
    if (row < 0 || row >= m_dates.size())
        return;
    m_dates[row] = text.trimmed();
    compute();
}

void DatedCashFlowsController::amountChanged(int row, const QString& text)
{
    if (row < 0 || row >= m_amounts.size())
        return;
    m_amounts[row] = text;
    compute();
}

void DatedCashFlowsController::fieldChanged()
{
    // Only 2 to 100 rows are taken; anything else leaves the count as it is.
    const double count = fieldNumber(rowCountField);
    if (count >= 2 && count <= DatedCashFlowsModel::maximumRows)
        m_rowCount = int(count);
    compute();
}

void DatedCashFlowsController::compute()
{
    DatedCashFlowsModel* m = datedCashFlowsModel();
    m->rate = fieldNumber(rateField);
    m->flows.clear();
    for (int row = 0; row < m_rowCount; ++row)
        m->flows.append({QDate::fromString(m_dates.at(row), Qt::ISODate),
                         NumberFormat::numberFromText(m_amounts.at(row))});
    m->calculateResult();
    showResultOf(QStringLiteral("xnpvLabel"), "xnpv");
    showResultOf(QStringLiteral("xirrLabel"), "xirr", QStringLiteral("%"));
    emit rowsChanged();
}
