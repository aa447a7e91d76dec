#include "NpvTableController.h"

#include "NpvModel.h"
#include "framework/RateTable.h"
#include "numerics/NumberFormat.h"
#include "platform/NotificationCenter.h"

NpvTableController::NpvTableController(QObject* parent)
    : TableController(NpvModel::cashFlowCapacity, parent), m_cashArr(emptyColumn())
{}

QString NpvTableController::leftLabelText(int row) const
{
    return QStringLiteral("Cash Flow %1").arg(row);
}

QString NpvTableController::fieldText(int row) const
{
    return RateTable::cellText(m_cashArr, row);
}

QStringList NpvTableController::leftLabelTexts() const
{
    QStringList labels;
    for (int row = 0; row < numberOfRows(); ++row)
        labels << leftLabelText(row);
    return labels;
}

void NpvTableController::fieldChanged(int tag, const QString& text)
{
    if (tag < 0 || tag >= m_cashArr.size())
        return;
    const double value = NumberFormat::numberFromText(text);
    m_cashArr[tag] = value;
    NotificationCenter::defaultCenter().post(
        QStringLiteral("CashChangedNotification"), this,
        {{QStringLiteral("tag"), tag}, {QStringLiteral("value"), value}});
}
