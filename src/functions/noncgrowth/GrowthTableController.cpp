#include "GrowthTableController.h"

#include "NoncGrowthModel.h"
#include "framework/NumberFormat.h"
#include "platform/NotificationCenter.h"

#include <QLocale>
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

QString GrowthTableController::cellText(const QList<double>& column, int row)
{
    if (row < 0 || row >= column.size())
        return QString();
    const double value = column.at(row);
    if (value == 0)
        return QString();
    return QString::asprintf("%g", value).replace(QLatin1Char('.'), QLocale().decimalPoint());
}

QString GrowthTableController::returnRateText(int row) const
{
    return cellText(m_returnRateArr, row);
}

QString GrowthTableController::growthRateText(int row) const
{
    return cellText(m_growthArr, row);
}

QStringList GrowthTableController::columnTexts(const QList<double>& column) const
{
    QStringList texts;
    for (int row = 0; row < numberOfRows(); ++row)
        texts << cellText(column, row);
    return texts;
}

QStringList GrowthTableController::yearLabelTexts() const
{
    QStringList labels;
    for (int row = 0; row < numberOfRows(); ++row)
        labels << yearLabelText(row);
    return labels;
}

QStringList GrowthTableController::returnRateTexts() const
{
    return columnTexts(m_returnRateArr);
}

QStringList GrowthTableController::growthRateTexts() const
{
    return columnTexts(m_growthArr);
}

void GrowthTableController::changeRate(QList<double>& column, const QString& type, int tag,
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

void GrowthTableController::returnRateChanged(int tag, const QString& text)
{
    qCDebug(lcGrowthTable, "%d - %g", tag, NumberFormat::plainDecimalValue(text));
    changeRate(m_returnRateArr, QStringLiteral("return-rate"), tag, text);
    if (tag >= 0 && tag < m_returnRateArr.size())
        qCDebug(lcGrowthTable, "arr val:%g", m_returnRateArr.at(tag));
}

void GrowthTableController::growthRateChanged(int tag, const QString& text)
{
    changeRate(m_growthArr, QStringLiteral("growth-rate"), tag, text);
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
