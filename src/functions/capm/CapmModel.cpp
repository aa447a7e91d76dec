#include "CapmModel.h"

void CapmModel::configureNames()
{
    setNames({QStringLiteral("CapmReportCreatedNotification"),
              QStringLiteral("CapmReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Capm Calculator"),
              QStringLiteral("capm_description"), QStringLiteral("capm"), QStringLiteral("Capm")});
}

double CapmModel::calculateStockReturn()
{
    const double rm = marketReturn / 100;
    const double rf = riskFreeRate / 100;
    stockReturn = (rf + beta * (rm - rf)) * 100;
    explainSolve("stockReturn", {});
    return stockReturn;
}

double CapmModel::calculateMarketReturn()
{
    const double rs = stockReturn / 100;
    const double rf = riskFreeRate / 100;
    marketReturn = ((rs - rf) + beta * rf) / beta * 100;
    explainSolve(
        "marketReturn",
        beta == 0
            ? QStringLiteral("With beta 0 the market return has no effect, so it cannot be solved.")
            : QString());
    return marketReturn;
}

double CapmModel::calculateRiskFreeRate()
{
    const double rs = stockReturn / 100;
    const double rm = marketReturn / 100;
    riskFreeRate = (rs - beta * rm) / (1 - beta) * 100;
    explainSolve("riskFreeRate",
                 1 - beta == 0 ? QStringLiteral("With beta 1 the risk-free rate has no effect, so "
                                                "it cannot be solved.")
                               : QString());
    return riskFreeRate;
}

double CapmModel::calculateBeta()
{
    const double rs = stockReturn / 100;
    const double rm = marketReturn / 100;
    const double rf = riskFreeRate / 100;
    beta = (rs - rf) / (rm - rf);
    explainSolve("beta", rm - rf == 0 ? QStringLiteral(
                                            "The market return equals the risk-free rate: no beta.")
                                      : QString());
    return beta;
}

void CapmModel::explainSolve(const char* solved, const QString& reason)
{
    explainEntries({"stockReturn", "marketReturn", "riskFreeRate", "beta"});
    setNote(QString::fromLatin1(solved), {});
    explain(solved, {reason, tooLarge()});
}

void CapmModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Exp. Return (Stock): %1%\n").arg(stringFromDouble(stockReturn));
    body += QStringLiteral("Exp. Return (Market): %1%\n").arg(stringFromDouble(marketReturn));
    body += QStringLiteral("Risk Free Rate: %1%\n").arg(stringFromDouble(riskFreeRate));
    body += QStringLiteral("Beta: %1\n").arg(stringFromDouble(beta));
    writeReport(userInfo, QStringLiteral("Capital Asset Pricing Model"), QStringLiteral("#354458"),
                body);
}
