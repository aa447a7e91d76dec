#include "MarginController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

namespace {
// The two blank fields are the ones worked out, so none counts as 0.
const QString workedOut = QStringLiteral("blank: worked out");
} // namespace

const CalculatorDescription& marginDescription()
{
    static const CalculatorDescription description{
        .name = "margin",
        .screen = "MarginController",
        .view = {}, // a plain form
        .entry = {CatalogueEntry::List::Business, "Margin and Markup", {}, "#E9C46A"},
        .fields =
            {
                under("Enter two, leave the others blank",
                      whenBlank(workedOut, number("cost", "costField", "Cost"))),
                whenBlank(workedOut, number("price", "priceField", "Selling price")),
                whenBlank(workedOut, percent("margin", "marginField", "Margin (% of the price)")),
                whenBlank(workedOut, percent("markup", "markupField", "Markup (% of the cost)")),
            },
        .results =
            {
                result("cost", "costResultLabel", "Cost"),
                result("price", "priceResultLabel", "Selling price"),
                result("profit", "profitResultLabel", "Profit"),
                result("margin", "marginResultLabel", "Margin", "%"),
                result("markup", "markupResultLabel", "Markup", "%"),
            },
        .solveButtons = {},
        .example = {"cost=60", "price=100"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new MarginController); },
    };
    return description;
}
