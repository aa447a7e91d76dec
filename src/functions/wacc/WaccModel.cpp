#include "WaccModel.h"

void WaccModel::configureNames()
{
    setNames({QStringLiteral("WaccReportCreatedNotification"),
              QStringLiteral("WaccReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Wacc Calculator"),
              QStringLiteral("wacc_description"), QStringLiteral("wacc"), QStringLiteral("Wacc")});
}

void WaccModel::calculateResult()
{
    const double equityTerm = equity * costOfEquity / 100 / (equity + debt);
    const double debtTerm =
        debt * (costOfDebt / 100) * (1 - corporateTaxRate / 100) / (debt + equity);
    weightedAverageCostOfCapital = (equityTerm + debtTerm) * 100;

    clearNotes();
    explainEntries({"costOfEquity", "equity", "costOfDebt", "debt", "corporateTaxRate"});
    QString noWeights;
    if (equity == 0 && debt == 0)
        noWeights = QStringLiteral("Enter the market value of equity or of debt.");
    else if (equity + debt == 0)
        noWeights = QStringLiteral("Equity and debt add up to 0: no weighted average.");
    explain("weightedAverageCostOfCapital", {noWeights, tooLarge()});
}

void WaccModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Cost of Equity: %1%\n").arg(stringFromDouble(costOfEquity));
    body += QStringLiteral("Equity: %1\n").arg(stringFromDouble(equity));
    body += QStringLiteral("Cost of Debt: %1%\n").arg(stringFromDouble(costOfDebt));
    body += QStringLiteral("Debt: %1\n").arg(stringFromDouble(debt));
    body += QStringLiteral("Corporate Tax Rate: %1%\n").arg(stringFromDouble(corporateTaxRate));
    body += QStringLiteral("Weighted Average Cost of Capital: %1%\n")
                .arg(stringFromDouble(weightedAverageCostOfCapital));
    writeReport(userInfo, QStringLiteral("Weighted Average Cost of Capital"),
                QStringLiteral("#354458"), body);
}
