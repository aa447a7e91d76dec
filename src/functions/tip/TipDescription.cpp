#include "TipController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& tipDescription()
{
    static const CalculatorDescription description{
        .name = "tip",
        .screen = "TipController",
        .view = {}, // a plain form
        .entry = {CatalogueEntry::List::Functions, "Tip Calculator", "tip", {}},
        // Plain text fields, without "±".
        .fields =
            {
                under("Bill", withoutSign(number("bill", "billField", "Bill, sales tax included"))),
                withoutSign(percent("tipPercent", "tipPercentField", "Tip (%)")),
                count("numberOfPeople", "numberOfPeopleField", "Number of people"),
                withoutSign(
                    percent("salesTaxPercent", "salesTaxField", "Sales tax in the bill (%)")),
            },
        .results =
            {
                under("Results", result("tip", "tipResultLabel", "Tip")),
                result("totalAmount", "totalAmountResultLabel", "Total to pay"),
                result("tipPerPerson", "tipPerPersonResultLabel", "Tip per person"),
                result("totalPerPerson", "totalPerPersonResultLabel", "Total per person"),
            },
        .solveButtons = {},
        .example = {"bill=86.4", "tipPercent=18", "numberOfPeople=3", "salesTaxPercent=8"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new TipController); },
    };
    return description;
}
