#include "NoncGrowthModel.h"

#include "numerics/FinanceMath.h"
#include "platform/NotificationCenter.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcNoncGrowth, "tallyvane.noncgrowth", QtWarningMsg)

NoncGrowthModel::NoncGrowthModel(QObject* parent)
    : QVFunctionModel(parent), rates(rateCapacity, GrowthRates{})
{
    // Rates come from the table, whoever posts them.
    NotificationCenter::defaultCenter().addObserver(
        this, QStringLiteral("RateChangedNotification"),
        [this](const Notification& n) { rateChangedNotificationReceived(n.userInfo); });
}

void NoncGrowthModel::configureNames()
{
    setNames({QStringLiteral("NonconstGrowthReportCreatedNotification"),
              QStringLiteral("NonconstGrowthReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Nonconstant Growth"),
              QStringLiteral("NonconstantGrowth"), QStringLiteral("nonconst-growth"),
              QStringLiteral("Nonc-Gr")});
}

QList<double> NoncGrowthModel::returnRates() const
{
    QList<double> column;
    for (const GrowthRates& row : rates)
        column << row.returnRate;
    return column;
}

QList<double> NoncGrowthModel::growthRates() const
{
    QList<double> column;
    for (const GrowthRates& row : rates)
        column << row.growthRate;
    return column;
}

void NoncGrowthModel::calculateResult()
{
    // Period k's dividend is D0 grown by the rates of periods 1..k. Periods
    // before the last are discounted at the required returns of the periods
    // up to theirs; the last one (k = N exactly) adds the constant-growth
    // value D_N / (r - g), discounted over the earlier periods only. With a
    // fractional N no k equals N: every period is an ordinary dividend, up
    // to the first whole number not below N.
    const double n = period;
    double d = dividend;
    double sum = 0;
    double k = 1;
    double disc = 1;
    qsizetype i = 0;
    // What divides by zero: the perpetuity's r - g, or a period's 1 + r.
    bool perpetuityWithoutSpread = false;
    qsizetype lostPeriod = 0; // the first period with a required return of -100 %
    if (n + 1 > 1) {
        do {
            const double g = rates.at(i).growthRate / 100;
            const double r = rates.at(i).returnRate / 100;
            d = d * (1 + g);
            if (n == k) {
                sum += d / (r - g) / disc;
                perpetuityWithoutSpread = r - g == 0;
            } else {
                sum += d / (disc * (1 + r));
                disc = disc * (1 + r);
                if (1 + r == 0 && lostPeriod == 0)
                    lostPeriod = i + 1;
            }
            k = double(i + 2);
            ++i;
        } while (n + 1 > k && i < rates.size());
    }
    price = sum;

    clearNotes();
    explainEntries({"dividend"});
    explain("price",
            {dividend == 0 ? QStringLiteral("Enter the current dividend.") : QString(),
             lostPeriod > 0 ? QStringLiteral("Period %1 has a required return of -100 %: no price.")
                                  .arg(lostPeriod)
                            : QString(),
             perpetuityWithoutSpread
                 ? QStringLiteral(
                       "In the last period the required return equals the growth rate: no price.")
                 : QString(),
             tooLarge()});
    NotificationCenter::defaultCenter().post(QStringLiteral("ResultCalculatedNotification"), this);
}

void NoncGrowthModel::rateChangedNotificationReceived(const QVariantMap& userInfo)
{
    // Other tables post the same name with types of their own: those change
    // nothing here, but the price is worked out again all the same.
    const QString type = userInfo.value(QStringLiteral("type")).toString();
    const int tag = userInfo.value(QStringLiteral("tag")).toInt();
    const double value = userInfo.value(QStringLiteral("value")).toDouble();
    if (tag >= 0 && tag < rates.size()) {
        if (type == QLatin1String("return-rate"))
            rates[tag].returnRate = value;
        else if (type == QLatin1String("growth-rate"))
            rates[tag].growthRate = value;
    }
    calculateResult();
}

void NoncGrowthModel::createReport(const QVariantMap& userInfo)
{
    QString body = QStringLiteral("Dividend: %1\n").arg(stringFromDouble(dividend));
    body += QStringLiteral("Period: %1\n").arg(FinanceMath::saturatedInteger(period));
    // One line per period begun: a period of 2.5 lists three.
    for (int written = 0; period > written && written < rates.size(); ++written) {
        const GrowthRates& row = rates.at(written);
        body += QStringLiteral("Period %1 - Required Return: %2%, Growth Rate: %3%\n")
                    .arg(written + 1)
                    .arg(stringFromDouble(row.returnRate), stringFromDouble(row.growthRate));
    }
    body += QStringLiteral("\nPrice of Stock: %1\n").arg(stringFromDouble(price));
    // This calculator's reports carry the constant-growth heading.
    writeReport(userInfo, QStringLiteral("Constant Growth"), QStringLiteral("#354458"), body);
    qCDebug(lcNoncGrowth).noquote() << report().contents;
}
