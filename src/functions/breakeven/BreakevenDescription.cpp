#include "BreakevenController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& breakevenDescription()
{
    static const CalculatorDescription description{
        .name = "breakeven",
        .screen = "BreakevenController",
        .view = {}, // a plain form of solve fields
        .entry = {CatalogueEntry::List::Loans, "Breakeven", {}, "#C0392B"},
        // Each field has its solve button ("<key>Button").
        .fields =
            {
                under("Enter four values, solve the fifth",
                      number("fixedCost", "fixedCostField", "Fixed costs")),
                number("variableCost", "variableCostField", "Variable cost per unit"),
                number("price", "priceField", "Price per unit"),
                number("profit", "profitField", "Profit (0 to break even)"),
                number("quantity", "quantityField", "Quantity (units)"),
            },
        .results = {},
        // The usual question first.
        .solveButtons = {"quantity", "price", "fixedCost", "variableCost", "profit"},
        .example = {"fixedCost=10000", "variableCost=15", "price=40", "profit=0", "--solve",
                    "quantity"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new BreakevenController); },
    };
    return description;
}
