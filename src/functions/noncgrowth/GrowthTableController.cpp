#include "GrowthTableController.h"

#include "NoncGrowthModel.h"
#include "framework/NumberFormat.h"
#include "framework/RateTable.h"
#include "platform/NotificationCenter.h"

#include <QLoggingCategory>
#include <algorithm>

Q_LOGGING_CATEGORY(lcGrowthTable, "tallyvane.noncgrowth.table", QtWarningMsg)

GrowthTableController::GrowthTableController(QObject* parent)
    : QObject(parent), m_growthArr(NoncGrowthModel::rateCapacity, 0.0),
      m_returnRateArr(NoncGrowthModel::rateCapacity, 0.0)
{
    NotificationCenter::defaultCenter().addObserver(
        this, QStringLiteral("PeriodChangedNotification"),
        [this](const Notification& n) { periodChangedNotificationReceived(n.userInfo); });
}

int GrowthTableController::numberOfRows() const
{
    // The period is at most 99 here, but a stray notification may carry more.
    return std::clamp<int>(int(m_period), 0, int(m_growthArr.size()));
}

QString GrowthTableController::yearLabelText(int row) const
{
    return QString::number(row + 1);
}

QString GrowthTableController::returnRateText(int row) const
{
    return RateTable::cellText(m_returnRateArr, row);
}

QString GrowthTableController::growthRateText(int row) const
{
    return RateTable::cellText(m_growthArr, row);
}

QStringList GrowthTableController::yearLabelTexts() const
{
    return RateTable::rowNumberTexts(numberOfRows());
}

QStringList GrowthTableController::returnRateTexts() const
{
    return RateTable::columnTexts(m_returnRateArr, numberOfRows());
}

QStringList GrowthTableController::growthRateTexts() const
{
    return RateTable::columnTexts(m_growthArr, numberOfRows());
}

void GrowthTableController::returnRateChanged(int tag, const QString& text)
{
    qCDebug(lcGrowthTable, "%d - %g", tag, NumberFormat::plainDecimalValue(text));
    RateTable::changeRate(this, m_returnRateArr, QStringLiteral("return-rate"), tag, text);
    if (tag >= 0 && tag < m_returnRateArr.size())
        qCDebug(lcGrowthTable, "arr val:%g", m_returnRateArr.at(tag));
}

void GrowthTableController::growthRateChanged(int tag, const QString& text)
{
    RateTable::changeRate(this, m_growthArr, QStringLiteral("growth-rate"), tag, text);
}

void GrowthTableController::periodChangedNotificationReceived(const QVariantMap& userInfo)
{
    // Any screen's period change reaches this table, not only its own form's.
    m_period = userInfo.value(QStringLiteral("period")).toInt();
    qCDebug(lcGrowthTable) << "Reloading..";
    reloadData();
}

void GrowthTableController::reloadData()
{
    emit reloaded();
}
