#include "ConstGrowthController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& constGrowthDescription()
{
    static const CalculatorDescription description{
        .name = "const-growth",
        .screen = "ConstGrowthController",
        .view = "functions/constgrowth/ConstGrowthView.qml",
        .entry = {CatalogueEntry::List::Stock, "Constant Growth", "", "#2ECC71"},
        .fields =
            {
                choice("dividendType", "dividendTypeButton", "Dividend type",
                       {"Current (D0)", "Next (D1)"}, "dividendTypeClicked"),
                number("dividend", "dividendField", "Dividend per share"),
                percent("returnRate", "returnRateField", "Required rate of return (%)"),
                percent("growthRate", "growthRateField", "Dividend growth rate (%)"),
            },
        .results =
            {
                result("price", "priceResultLabel", "Price of stock"),
            },
        .solveButtons = {},
        .create = [] { return std::unique_ptr<QVFunctionController>(new ConstGrowthController); },
    };
    return description;
}
