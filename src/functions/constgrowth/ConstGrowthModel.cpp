#include "ConstGrowthModel.h"

const QString ConstGrowthModel::currentDividend = QStringLiteral("Current (D0)");
const QString ConstGrowthModel::nextDividend = QStringLiteral("Next (D1)");

void ConstGrowthModel::configureNames()
{
    setNames({QStringLiteral("ConstGrowthReportCreatedNotification"),
              QStringLiteral("ConstGrowthReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Constant Growth"),
              QStringLiteral("cgrowth_description"), QStringLiteral("const-growth"),
              QStringLiteral("Const-Gr")});
}

void ConstGrowthModel::calculateResult()
{
    double nextYearDividend = 0;
    if (dividendType == currentDividend)
        nextYearDividend = dividend * (growthRate / 100 + 1);
    else if (dividendType == nextDividend)
        nextYearDividend = dividend;
    else
        return;
    price = nextYearDividend / (returnRate / 100 - growthRate / 100);

    clearNotes();
    explainEntries({"dividend", "returnRate", "growthRate"});
    explain("price", {dividend == 0 ? QStringLiteral("Enter the dividend per share.") : QString(),
                      returnRate / 100 == growthRate / 100
                          ? QStringLiteral("The required return equals the growth rate: no price.")
                          : QString(),
                      tooLarge()});
}

void ConstGrowthModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Dividend Type: %1\n").arg(dividendType);
    body += QStringLiteral("Dividend: %1\n").arg(stringFromDouble(dividend));
    body += QStringLiteral("Required Rate of Return: %1%\n").arg(stringFromDouble(returnRate));
    body += QStringLiteral("Growth Rate: %1%\n").arg(stringFromDouble(growthRate));
    body += QStringLiteral("Price of Stock: %1\n").arg(stringFromDouble(price));
    writeReport(userInfo, QStringLiteral("Constant Growth"), QStringLiteral("#354458"), body);
}
