#include "TipController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& tipDescription()
{
    static const CalculatorDescription description{
        .name = "tip",
        .screen = "TipController",
        .view = "functions/tip/TipView.qml",
        .entry = {CatalogueEntry::List::Functions, "Tip Calculator", "tip", ""},
        .fields =
            {
                number("bill", "billField", "Bill, sales tax included"),
                percent("tipPercent", "tipPercentField", "Tip (%)"),
                count("numberOfPeople", "numberOfPeopleField", "Number of people"),
                percent("salesTaxPercent", "salesTaxField", "Sales tax in the bill (%)"),
            },
        .results =
            {
                result("tip", "tipResultLabel", "Tip"),
                result("totalAmount", "totalAmountResultLabel", "Total to pay"),
                result("tipPerPerson", "tipPerPersonResultLabel", "Tip per person"),
                result("totalPerPerson", "totalPerPersonResultLabel", "Total per person"),
            },
        .solveButtons = {},
        .create = [] { return std::unique_ptr<QVFunctionController>(new TipController); },
    };
    return description;
}
