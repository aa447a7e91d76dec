#include "CapmController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& capmDescription()
{
    static const CalculatorDescription description{
        .name = "capm",
        .screen = "CapmController",
        .view = "functions/capm/CapmView.qml",
        .entry = {CatalogueEntry::List::Stock, "Capital Asset Pricing Model", "", "#9B59B6"},
        .fields =
            {
                percent("stockReturn", "stockReturnField", ""),
                percent("marketReturn", "marketReturnField", ""),
                percent("riskFreeRate", "riskFreeRateField", ""),
                number("beta", "betaField", ""),
            },
        .results =
            {

            },
        .solveButtons = {"stockReturn", "marketReturn", "riskFreeRate", "beta"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new CapmController); },
    };
    return description;
}
