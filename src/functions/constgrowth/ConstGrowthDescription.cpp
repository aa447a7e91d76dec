#include "ConstGrowthController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& constGrowthDescription()
{
    static const CalculatorDescription description{
        .name = "const-growth",
        .screen = "ConstGrowthController",
        .view = {}, // a plain form
        .entry = {CatalogueEntry::List::Stock, "Constant Growth", {}, "#2ECC71"},
        .fields =
            {
                under("Dividend", choice("dividendType", "dividendTypeButton", "Dividend type",
                                         ConstGrowthModel::dividendTypes(), "dividendTypeClicked")),
                number("dividend", "dividendField", "Dividend per share"),
                under("Rates",
                      percent("returnRate", "returnRateField", "Required rate of return (%)")),
                percent("growthRate", "growthRateField", "Dividend growth rate (%)"),
            },
        .results =
            {
                under("Result", result("price", "priceResultLabel", "Price of stock")),
            },
        .solveButtons = {},
        .example = {"dividendType=Current (D0)", "dividend=2.5", "returnRate=8", "growthRate=3"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new ConstGrowthController); },
    };
    return description;
}
