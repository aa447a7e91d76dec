#include "ExpReturnTableController.h"

#include "ExpReturnModel.h"
#include "framework/NumberFormat.h"
#include "framework/RateTable.h"
#include "platform/NotificationCenter.h"

#include <QLoggingCategory>
#include <algorithm>

Q_LOGGING_CATEGORY(lcExpReturn, "tallyvane.expreturn", QtWarningMsg)

ExpReturnTableController::ExpReturnTableController(QObject* parent)
    : QObject(parent), m_probArr(ExpReturnModel::stateCapacity, 0.0),
      m_stockAArr(ExpReturnModel::stateCapacity, 0.0),
      m_stockBArr(ExpReturnModel::stateCapacity, 0.0)
{
    NotificationCenter::defaultCenter().addObserver(
        this, QStringLiteral("PeriodChangedNotification"),
        [this](const Notification& n) { periodChangedNotificationReceived(n.userInfo); });
}

int ExpReturnTableController::numberOfRows() const
{
    // The period is at most 99 here, but a stray notification may carry more.
    return std::clamp<int>(int(m_period), 0, int(m_probArr.size()));
}

QString ExpReturnTableController::stateLabelText(int row) const
{
    return QString::number(row + 1);
}

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

QStringList ExpReturnTableController::stateLabelTexts() const
{
    return RateTable::rowNumberTexts(numberOfRows());
}

QStringList ExpReturnTableController::probabilityTexts() const
{
    return RateTable::columnTexts(m_probArr, numberOfRows());
}

QStringList ExpReturnTableController::stockATexts() const
{
    return RateTable::columnTexts(m_stockAArr, numberOfRows());
}

QStringList ExpReturnTableController::stockBTexts() const
{
    return RateTable::columnTexts(m_stockBArr, numberOfRows());
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

void ExpReturnTableController::periodChangedNotificationReceived(const QVariantMap& userInfo)
{
    // Any screen's period change reaches this table, not only its own form's.
    m_period = userInfo.value(QStringLiteral("period")).toInt();
    qCDebug(lcExpReturn) << "Reloading..";
    reloadData();
}

void ExpReturnTableController::reloadData()
{
    emit reloaded();
}
