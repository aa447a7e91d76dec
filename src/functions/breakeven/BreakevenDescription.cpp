#include "BreakevenController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& breakevenDescription()
{
    static const CalculatorDescription description{
        .name = "breakeven",
        .screen = "BreakevenController",
        .view = "functions/breakeven/BreakevenView.qml",
        .entry = {CatalogueEntry::List::Loans, "Breakeven", "", "#C0392B"},
        .fields =
            {

            },
        .results =
            {

            },
        .solveButtons = {"quantity", "price", "fixedCost", "variableCost", "profit"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new BreakevenController); },
    };
    return description;
}
