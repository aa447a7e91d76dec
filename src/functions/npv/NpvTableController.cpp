#include "NpvTableController.h"

#include "NpvModel.h"
#include "framework/NumberFormat.h"
#include "framework/RateTable.h"
#include "platform/NotificationCenter.h"

#include <QLocale>
#include <QLoggingCategory>
#include <algorithm>

Q_LOGGING_CATEGORY(lcNpv, "tallyvane.npv", QtWarningMsg)

NpvTableController::NpvTableController(QObject* parent)
    : QObject(parent), m_cashArr(NpvModel::cashFlowCapacity, 0.0)
{
    NotificationCenter::defaultCenter().addObserver(
        this, QStringLiteral("PeriodChangedNotification"),
        [this](const Notification& n) { periodChangedNotificationReceived(n.userInfo); });
}

int NpvTableController::numberOfRows() const
{
    return std::clamp<int>(m_period, 0, int(m_cashArr.size()));
}

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

QStringList NpvTableController::fieldTexts() const
{
    QStringList texts;
    for (int row = 0; row < numberOfRows(); ++row)
        texts << fieldText(row);
    return texts;
}

void NpvTableController::fieldChanged(int tag, const QString& text)
{
    if (tag < 0 || tag >= m_cashArr.size())
        return;
    const double value = NumberFormat::plainDecimalValue(text);
    m_cashArr[tag] = value;
    NotificationCenter::defaultCenter().post(
        QStringLiteral("CashChangedNotification"), this,
        {{QStringLiteral("tag"), tag}, {QStringLiteral("value"), value}});
}

void NpvTableController::periodChangedNotificationReceived(const QVariantMap& userInfo)
{
    m_period = userInfo.value(QStringLiteral("period")).toInt();
    qCDebug(lcNpv) << "Reloading..";
    reloadData();
}

void NpvTableController::reloadData()
{
    emit reloaded();
}
