#include "NpvTableController.h"

#include "NpvModel.h"
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
    if (row < 0 || row >= m_cashArr.size())
        return QString();
    const double value = m_cashArr.at(row);
    if (value == 0)
        return QString();
    return QString::asprintf("%g", value).replace(QLatin1Char('.'), QLocale().decimalPoint());
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
    const double value = plainDecimalValue(text);
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

double NpvTableController::plainDecimalValue(const QString& text)
{
    const QString point = QLocale().decimalPoint();
    const qsizetype size = text.size();
    const auto digitsFrom = [&](qsizetype& i) {
        QString digits;
        while (i < size && text.at(i) >= u'0' && text.at(i) <= u'9')
            digits += text.at(i++);
        return digits;
    };

    qsizetype i = 0;
    while (i < size && text.at(i).isSpace())
        ++i;
    QString sign;
    if (i < size && (text.at(i) == u'-' || text.at(i) == u'+'))
        sign = text.at(i++);
    const QString whole = digitsFrom(i);
    QString fraction;
    if (i < size && text.at(i) == u'.') {
        ++i;
        fraction = digitsFrom(i);
    } else if (!point.isEmpty() && text.mid(i, point.size()) == point) {
        i += point.size();
        fraction = digitsFrom(i);
    }
    if (whole.isEmpty() && fraction.isEmpty())
        return 0;

    QString number = sign + (whole.isEmpty() ? QStringLiteral("0") : whole);
    if (!fraction.isEmpty())
        number += QLatin1Char('.') + fraction;
    // An exponent counts only when digits follow it.
    if (i < size && (text.at(i) == u'e' || text.at(i) == u'E')) {
        qsizetype j = i + 1;
        QString exponentSign;
        if (j < size && (text.at(j) == u'-' || text.at(j) == u'+'))
            exponentSign = text.at(j++);
        const QString exponent = digitsFrom(j);
        if (!exponent.isEmpty())
            number += QLatin1Char('e') + exponentSign + exponent;
    }
    // Too large a number reads as an infinity, too small a one as 0.
    return QLocale::c().toDouble(number);
}
