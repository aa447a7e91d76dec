#include "CapmController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& capmDescription()
{
    static const CalculatorDescription description{
        .name = "capm",
        .screen = "CapmController",
        .view = {}, // a plain form of solve fields
        .entry = {CatalogueEntry::List::Stock, "Capital Asset Pricing Model", {}, "#9B59B6"},
        // Each field has its solve button ("<key>Button").
        .fields =
            {
                under("Enter three values, solve the fourth",
                      percent("stockReturn", "stockReturnField",
                              "Expected return of the stock (Rs, %)")),
                percent("marketReturn", "marketReturnField",
                        "Expected return of the market (Rm, %)"),
                percent("riskFreeRate", "riskFreeRateField", "Risk-free rate (Rf, %)"),
                number("beta", "betaField", "Beta"),
            },
        .results = {},
        .solveButtons = {"stockReturn", "marketReturn", "riskFreeRate", "beta"},
        .example = {"riskFreeRate=4", "marketReturn=9", "beta=1.3", "--solve", "stockReturn"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new CapmController); },
    };
    return description;
}
