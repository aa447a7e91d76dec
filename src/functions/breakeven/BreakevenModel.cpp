#include "BreakevenModel.h"

void BreakevenModel::configureNames()
{
    setNames({QStringLiteral("BreakevenReportCreatedNotification"),
              QStringLiteral("BreakevenReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Breakeven"),
              QStringLiteral("breakeven_description"), QStringLiteral("breakeven"),
              QStringLiteral("Breakeven")});
}

double BreakevenModel::calculateQuantity()
{
    return quantity = (fixedCost + profit) / (price - variableCost);
}

double BreakevenModel::calculatePrice()
{
    return price = (fixedCost + profit) / quantity + variableCost;
}

double BreakevenModel::calculateFixedCost()
{
    return fixedCost = quantity * (price - variableCost) - profit;
}

double BreakevenModel::calculateVariableCost()
{
    return variableCost = price - (fixedCost + profit) / quantity;
}

double BreakevenModel::calculateProfit()
{
    return profit = quantity * (price - variableCost) - fixedCost;
}

void BreakevenModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Fixed Costs: %1\n").arg(stringFromDouble(fixedCost));
    body += QStringLiteral("Variable Cost Per Unit: %1\n").arg(stringFromDouble(variableCost));
    body += QStringLiteral("Price Per Unit: %1\n").arg(stringFromDouble(price));
    body += QStringLiteral("Profit: %1\n").arg(stringFromDouble(profit));
    body += QStringLiteral("Quantity: %1\n").arg(stringFromDouble(quantity));
    writeReport(userInfo, QStringLiteral("Breakeven"), QStringLiteral("#C0392B"), body);
}
