#include "ExpReturnTableController.h"

#include "ExpReturnModel.h"
#include "framework/RateTable.h"

ExpReturnTableController::ExpReturnTableController(QObject* parent)
    : TableController(ExpReturnModel::stateCapacity, parent), m_probArr(emptyColumn()),
      m_stockAArr(emptyColumn()), m_stockBArr(emptyColumn())
{}

QString ExpReturnTableController::probabilityText(int row) const
{
    return RateTable::cellText(m_probArr, row);
}

QString ExpReturnTableController::stockAText(int row) const
{
    return RateTable::cellText(m_stockAArr, row);
}

QString ExpReturnTableController::stockBText(int row) const
{
    return RateTable::cellText(m_stockBArr, row);
}

void ExpReturnTableController::probabilityChanged(int tag, const QString& text)
{
    RateTable::changeRate(this, m_probArr, QStringLiteral("probability"), tag, text);
}

void ExpReturnTableController::stockAChanged(int tag, const QString& text)
{
    RateTable::changeRate(this, m_stockAArr, QStringLiteral("stock-a"), tag, text);
}

void ExpReturnTableController::stockBChanged(int tag, const QString& text)
{
    RateTable::changeRate(this, m_stockBArr, QStringLiteral("stock-b"), tag, text);
}
