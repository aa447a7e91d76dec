#include "RoiModel.h"

RoiModel::RoiModel(QObject* parent) : QVFunctionModel(parent)
{
    calculateResult();
}

void RoiModel::configureNames()
{
    setNames({QStringLiteral("RoiReportCreatedNotification"),
              QStringLiteral("RoiReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("ROI Calculator"),
              QStringLiteral("roi_description"), QStringLiteral("roi"), QStringLiteral("Roi")});
}

void RoiModel::calculateResult()
{
    gain = futureValue - investmentAmount;
    roi = (gain * 100) / investmentAmount;
    annualizedRoi = roi / years;

    clearNotes();
    explainEntries({"investmentAmount", "futureValue", "years"});
    const QString noInvestment =
        investmentAmount == 0 ? QStringLiteral("Enter the amount invested.") : QString();
    explain("gain", {tooLarge()});
    explain("roi", {noInvestment, tooLarge()});
    explain("annualizedRoi",
            {noInvestment, years == 0 ? QStringLiteral("Enter the years held.") : QString(),
             tooLarge()});
}

void RoiModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Investment: %1\n").arg(stringFromDouble(investmentAmount));
    body += QStringLiteral("Income: %1\n").arg(stringFromDouble(futureValue));
    body += QStringLiteral("Years: %1\n").arg(stringFromDouble(years));
    body += QStringLiteral("Gain or Loss: %1\n").arg(stringFromDouble(gain));
    body += QStringLiteral("Roi: %1%\n").arg(stringFromDouble(roi));
    body += QStringLiteral("Annualized Roi: %1%\n").arg(stringFromDouble(annualizedRoi));
    writeReport(userInfo, QStringLiteral("Return on Investment"), QStringLiteral("#1FDA9A"), body);
}
