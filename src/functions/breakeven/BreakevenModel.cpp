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
    quantity = (fixedCost + profit) / (price - variableCost);
    QString reason;
    if (price == 0 && variableCost == 0)
        reason = QStringLiteral("Enter the price per unit.");
    else if (price - variableCost == 0)
        reason = QStringLiteral("Price equals variable cost: no breakeven quantity.");
    explainSolve("quantity", reason);
    return quantity;
}

double BreakevenModel::calculatePrice()
{
    price = (fixedCost + profit) / quantity + variableCost;
    explainSolve("price", quantity == 0 ? QStringLiteral("Enter the quantity.") : QString());
    return price;
}

double BreakevenModel::calculateFixedCost()
{
    fixedCost = quantity * (price - variableCost) - profit;
    explainSolve("fixedCost", {});
    return fixedCost;
}

double BreakevenModel::calculateVariableCost()
{
    variableCost = price - (fixedCost + profit) / quantity;
    explainSolve("variableCost", quantity == 0 ? QStringLiteral("Enter the quantity.") : QString());
    return variableCost;
}

double BreakevenModel::calculateProfit()
{
    profit = quantity * (price - variableCost) - fixedCost;
    explainSolve("profit", {});
    return profit;
}

void BreakevenModel::explainSolve(const char* solved, const QString& reason)
{
    explainEntries({"fixedCost", "variableCost", "price", "profit", "quantity"});
    setNote(QString::fromLatin1(solved), {});
    explain(solved, {reason, tooLarge()});
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
