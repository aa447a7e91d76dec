#include "MarginModel.h"

#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr std::array<const char*, 5> results = {"cost", "price", "margin", "markup", "profit"};

} // namespace

void MarginModel::configureNames()
{
    setNames({QStringLiteral("MarginReportCreatedNotification"),
              QStringLiteral("MarginReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Margin and Markup"),
              QStringLiteral("margin_description"), QStringLiteral("margin"),
              QStringLiteral("Margin and Markup")});
}

void MarginModel::calculateResult()
{
    clearNotes();
    explainEntries({"cost", "price", "margin", "markup"});
    const bool costGiven = !blankInputs.contains(QStringLiteral("cost"));
    const bool priceGiven = !blankInputs.contains(QStringLiteral("price"));
    const bool marginGiven = !blankInputs.contains(QStringLiteral("margin"));
    const bool markupGiven = !blankInputs.contains(QStringLiteral("markup"));
    const int given = int(costGiven) + int(priceGiven) + int(marginGiven) + int(markupGiven);
    QString problem;
    if (given < 2)
        problem = QStringLiteral("Enter two of the cost, price, margin and markup.");
    else if (given > 2)
        problem = QStringLiteral("Enter only two of the cost, price, margin and markup; leave "
                                 "the others blank.");
    else if (!costGiven && !priceGiven)
        problem = QStringLiteral("A margin and a markup give no amounts: enter the cost or the "
                                 "price instead of one of them.");
    if (!problem.isEmpty()) {
        for (const char* key : results) {
            setProperty(key, noNumber);
            setNote(QLatin1String(key), problem);
        }
        return;
    }
    workOutCostAndPrice(costGiven, priceGiven, marginGiven);
    profit = price - cost;
    // A given rate stays as typed; the other follows from the amounts.
    if (!marginGiven)
        margin = profit / price * 100;
    if (!markupGiven)
        markup = profit / cost * 100;
    const QString inherited = std::isnan(cost)    ? note(QStringLiteral("cost"))
                              : std::isnan(price) ? note(QStringLiteral("price"))
                                                  : QString();
    explain("profit", {inherited, tooLarge()});
    explain("margin",
            {inherited, price == 0 ? QStringLiteral("The price is 0: no margin.") : QString(),
             tooLarge()});
    explain("markup",
            {inherited, cost == 0 ? QStringLiteral("The cost is 0: no markup.") : QString(),
             tooLarge()});
}

void MarginModel::workOutCostAndPrice(bool costGiven, bool priceGiven, bool marginGiven)
{
    if (costGiven && priceGiven)
        return;
    if (costGiven) {
        // price = cost ÷ (1 − margin) or cost × (1 + markup)
        price = marginGiven ? cost / (1 - margin / 100) : cost * (1 + markup / 100);
        explain("price", {marginGiven && margin == 100
                              ? QStringLiteral("A margin of 100 % leaves no room for a cost.")
                              : QString(),
                          tooLarge()});
    } else {
        // cost = price × (1 − margin) or price ÷ (1 + markup)
        cost = marginGiven ? price * (1 - margin / 100) : price / (1 + markup / 100);
        explain("cost", {!marginGiven && markup == -100
                             ? QStringLiteral("A markup of -100 % leaves no room for a price.")
                             : QString(),
                         tooLarge()});
    }
}

void MarginModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Cost: %1\n").arg(stringFromDouble(cost));
    body += QStringLiteral("Price: %1\n").arg(stringFromDouble(price));
    body += QStringLiteral("Profit: %1\n").arg(stringFromDouble(profit));
    body += QStringLiteral("Margin: %1%\n").arg(stringFromDouble(margin));
    body += QStringLiteral("Markup: %1%\n").arg(stringFromDouble(markup));
    writeReport(userInfo, QStringLiteral("Margin and Markup"), QStringLiteral("#E9C46A"), body);
}
