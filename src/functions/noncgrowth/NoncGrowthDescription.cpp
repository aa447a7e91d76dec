#include "NoncGrowthController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& noncGrowthDescription()
{
    static const CalculatorDescription description{
        .name = "nonconst-growth",
        .screen = "NoncGrowthController",
        .view = "functions/noncgrowth/NoncGrowthView.qml",
        .entry = {CatalogueEntry::List::Stock, "Nonconstant Growth", "", "#F39C12"},
        .fields =
            {
                number("dividend", "dividendField", "Current dividend (D0)"),
                count("period", "periodField",
                      "Number of periods, the last one growing for ever (1 to 99)"),
            },
        .results =
            {
                result("price", "priceResultLabel", "Price of the stock"),
            },
        .solveButtons = {},
        .create = [] { return std::unique_ptr<QVFunctionController>(new NoncGrowthController); },
    };
    return description;
}
