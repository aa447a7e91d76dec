#include "PeriodReturnModel.h"

void PeriodReturnModel::configureNames()
{
    setNames({QStringLiteral("PeriodReturnReportCreatedNotification"),
              QStringLiteral("PeriodReturnReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Holding Period Return"),
              QStringLiteral("hpr_description"), QStringLiteral("period-return"),
              QStringLiteral("Hpr")});
}

void PeriodReturnModel::calculateResult()
{
    hpr = (income + (endingValue - initialValue)) / initialValue * 100;
    clearNotes();
    explainEntries({"initialValue", "endingValue", "income"});
    explain("hpr", {initialValue == 0 ? QStringLiteral("Enter the initial value.") : QString(),
                    tooLarge()});
}

void PeriodReturnModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Initial Value: %1\n").arg(stringFromDouble(initialValue));
    body += QStringLiteral("Ending Value: %1\n").arg(stringFromDouble(endingValue));
    body += QStringLiteral("Income: %1\n").arg(stringFromDouble(income));
    body += QStringLiteral("HPR: %1%\n").arg(stringFromDouble(hpr));
    writeReport(userInfo, QStringLiteral("Holding Period Return"), QStringLiteral("#354458"), body);
}
