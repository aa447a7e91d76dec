#include "ExpReturnTableController.h"

#include "ExpReturnModel.h"
#include "framework/NumberFormat.h"
#include "platform/NotificationCenter.h"

#include <QLocale>
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

QString ExpReturnTableController::cellText(const QList<double>& column, int row)
{
    if (row < 0 || row >= column.size())
        return QString();
    const double value = column.at(row);
    if (value == 0)
        return QString();
    return QString::asprintf("%g", value).replace(QLatin1Char('.'), QLocale().decimalPoint());
}

QString ExpReturnTableController::probabilityText(int row) const
{
    return cellText(m_probArr, row);
}

QString ExpReturnTableController::stockAText(int row) const
{
    return cellText(m_stockAArr, row);
}

QString ExpReturnTableController::stockBText(int row) const
{
    return cellText(m_stockBArr, row);
}

QStringList ExpReturnTableController::columnTexts(const QList<double>& column) const
{
    QStringList texts;
    for (int row = 0; row < numberOfRows(); ++row)
        texts << cellText(column, row);
    return texts;
}

QStringList ExpReturnTableController::stateLabelTexts() const
{
    QStringList labels;
    for (int row = 0; row < numberOfRows(); ++row)
        labels << stateLabelText(row);
    return labels;
}

QStringList ExpReturnTableController::probabilityTexts() const
{
    return columnTexts(m_probArr);
}

QStringList ExpReturnTableController::stockATexts() const
{
    return columnTexts(m_stockAArr);
}

QStringList ExpReturnTableController::stockBTexts() const
{
    return columnTexts(m_stockBArr);
}

void ExpReturnTableController::changeValue(QList<double>& column, const QString& type, int tag,
                                           const QString& text)
{
    if (tag < 0 || tag >= column.size())
        return;
    const double value = NumberFormat::plainDecimalValue(text);
    column[tag] = value;
    NotificationCenter::defaultCenter().post(QStringLiteral("RateChangedNotification"), this,
                                             {{QStringLiteral("type"), type},
                                              {QStringLiteral("tag"), tag},
                                              {QStringLiteral("value"), value}});
}

void ExpReturnTableController::probabilityChanged(int tag, const QString& text)
{
    changeValue(m_probArr, QStringLiteral("probability"), tag, text);
}

void ExpReturnTableController::stockAChanged(int tag, const QString& text)
{
    changeValue(m_stockAArr, QStringLiteral("stock-a"), tag, text);
}

void ExpReturnTableController::stockBChanged(int tag, const QString& text)
{
    changeValue(m_stockBArr, QStringLiteral("stock-b"), tag, text);
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
