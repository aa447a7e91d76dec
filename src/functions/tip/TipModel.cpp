#include "TipModel.h"

TipModel::TipModel(QObject* parent) : QVFunctionModel(parent)
{
    calculateResult();
}

void TipModel::configureNames()
{
    setNames({QStringLiteral("TipReportCreatedNotification"),
              QStringLiteral("TipReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("TIP Calculator"),
              QStringLiteral("tip_description"), QStringLiteral("tip"), QStringLiteral("Tip")});
}

void TipModel::calculateResult()
{
    const double preTax = bill / (salesTaxPercent / 100 + 1);
    tip = (tipPercent / 100) * preTax;
    totalAmount = bill + tip;
    tipPerPerson = tip / double(numberOfPeople);
    totalPerPerson = totalAmount / double(numberOfPeople);

    clearNotes();
    explainEntries({"bill", "tipPercent", "salesTaxPercent"});
    // Only a tax of exactly -100 % leaves a bill of 0 before tax to divide.
    const QString noPreTax =
        salesTaxPercent == -100 ? QStringLiteral("A sales tax of -100 % leaves no bill before tax.")
                                : QString();
    const QString noPeople =
        numberOfPeople == 0 ? QStringLiteral("Enter the number of people.") : QString();
    explain("tip", {noPreTax, tooLarge()});
    explain("totalAmount", {noPreTax, tooLarge()});
    explain("tipPerPerson", {noPeople, noPreTax, tooLarge()});
    explain("totalPerPerson", {noPeople, noPreTax, tooLarge()});
}

void TipModel::createReport(const QVariantMap& userInfo)
{
    // The sales-tax rate has no line: the report format leaves it out.
    QString body;
    body += QStringLiteral("Bill: %1\n").arg(stringFromDouble(bill));
    body += QStringLiteral("Tip Percent: %1\n").arg(stringFromDouble(tipPercent));
    body += QStringLiteral("Number of People: %1\n").arg(numberOfPeople);
    body += QStringLiteral("Tip: %1\n").arg(stringFromDouble(tip));
    body += QStringLiteral("Total Amount: %1\n").arg(stringFromDouble(totalAmount));
    body += QStringLiteral("Tip Per Person: %1\n").arg(stringFromDouble(tipPerPerson));
    body += QStringLiteral("Total Per Person: %1\n").arg(stringFromDouble(totalPerPerson));
    writeReport(userInfo, QStringLiteral("Tip"), QStringLiteral("#BFF073"), body);
}
