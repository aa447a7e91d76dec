#include "GrowthTableController.h"

#include "NoncGrowthModel.h"
#include "framework/RateTable.h"
#include "numerics/NumberFormat.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcGrowthTable, "tallyvane.noncgrowth.table", QtWarningMsg)

GrowthTableController::GrowthTableController(QObject* parent)
    : TableController(NoncGrowthModel::rateCapacity, parent), m_growthArr(emptyColumn()),
      m_returnRateArr(emptyColumn())
{}

QString GrowthTableController::returnRateText(int row) const
{
    return RateTable::cellText(m_returnRateArr, row);
}

QString GrowthTableController::growthRateText(int row) const
{
    return RateTable::cellText(m_growthArr, row);
}

void GrowthTableController::returnRateChanged(int tag, const QString& text)
{
    qCDebug(lcGrowthTable, "%d - %g", tag, NumberFormat::numberFromText(text));
    RateTable::changeRate(this, m_returnRateArr, QStringLiteral("return-rate"), tag, text);
    if (tag >= 0 && tag < m_returnRateArr.size())
        qCDebug(lcGrowthTable, "arr val:%g", m_returnRateArr.at(tag));
}

void GrowthTableController::growthRateChanged(int tag, const QString& text)
{
    RateTable::changeRate(this, m_growthArr, QStringLiteral("growth-rate"), tag, text);
}
