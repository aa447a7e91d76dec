#include "TableController.h"

#include "RateTable.h"
#include "platform/NotificationCenter.h"

#include <QLoggingCategory>
#include <algorithm>

Q_LOGGING_CATEGORY(lcTable, "tallyvane.table", QtWarningMsg)

TableController::TableController(int capacity, QObject* parent)
    : QObject(parent), m_capacity(capacity)
{
    NotificationCenter::defaultCenter().addObserver(
        this, QStringLiteral("PeriodChangedNotification"),
        [this](const Notification& n) { periodChangedNotificationReceived(n.userInfo); });
}

int TableController::numberOfRows() const
{
    // The forms keep the period within 1 to 99, but any screen's period
    // change reaches every table, and a stray one may carry more.
    return std::clamp(m_period, 0, m_capacity);
}

void TableController::periodChangedNotificationReceived(const QVariantMap& userInfo)
{
    m_period = userInfo.value(QStringLiteral("period")).toInt();
    qCDebug(lcTable) << metaObject()->className() << "reloading," << m_period << "periods";
    emit reloaded();
}

QStringList TableController::shownTexts(const QList<double>& column) const
{
    return RateTable::columnTexts(column, numberOfRows());
}

QStringList TableController::shownRowNumbers() const
{
    return RateTable::rowNumberTexts(numberOfRows());
}
