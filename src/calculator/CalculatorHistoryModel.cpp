#include "CalculatorHistoryModel.h"

#include "numerics/NumberFormat.h"

#include <QLocale>
#include <cmath>

void CalculatorHistoryModel::setCalculator(CalculatorController* calculator)
{
    if (calculator == m_calculator)
        return;
    m_calculator = calculator;
    setLogArray(calculator ? calculator->logArray() : nullptr);
    emit calculatorChanged();
}

void CalculatorHistoryModel::setLogArray(std::shared_ptr<const HistoryLog> log)
{
    beginResetModel();
    m_log = std::move(log);
    endResetModel();
    emit countChanged();
}

int CalculatorHistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant CalculatorHistoryModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    const HistoryEntry& entry = m_log->at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case ResultRole:
        return entry.result;
    case DetailRole:
        return entry.command == QLatin1String("Evaluate Expression") ? entry.expression
                                                                     : entry.command;
    case LabelRole:
        return QString(entry.resultLabel).remove(QLatin1Char('='));
    default:
        return {};
    }
}

QHash<int, QByteArray> CalculatorHistoryModel::roleNames() const
{
    return {{ResultRole, "result"}, {DetailRole, "detail"}, {LabelRole, "label"}};
}

void CalculatorHistoryModel::clearClicked()
{
    setLogArray(std::make_shared<HistoryLog>());
}

QString CalculatorHistoryModel::resultAt(int row) const
{
    return row >= 0 && row < count() ? m_log->at(row).result : QString();
}

void CalculatorHistoryModel::useResult(int row)
{
    if (!m_calculator || row < 0 || row >= count())
        return;
    const QString result = resultAt(row);
    if (!std::isfinite(NumberFormat::numberFromText(result)))
        return; // "NaN" and the infinities are no text for the line
    m_calculator->pasteText(QString(result).replace(QLocale().decimalPoint(), QStringLiteral(".")));
}
