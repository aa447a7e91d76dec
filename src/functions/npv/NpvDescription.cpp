#include "NpvController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& npvDescription()
{
    static const CalculatorDescription description{
        .name = "npv",
        .screen = "NpvController",
        .view = "functions/npv/NpvView.qml",
        .entry = {CatalogueEntry::List::Functions, "Net Present Value Calculator", "npv", {}},
        .fields =
            {
                number("period", "periodField", "Number of cash flows, CF0 included (1 to 99)"),
                percent("discountRate", "discountRateField", "Discount rate per period (%)"),
                table("cashArray", NpvModel::cashFlowCapacity),
            },
        .results =
            {
                result("npv", "npvResultLabel", "Net present value"),
                result("irr", "irrResultLabel", "Internal rate of return", "%"),
            },
        .solveButtons = {},
        .example = {"period=5", "discountRate=8", "cashArray=-5000,1500,2000,2500,1000"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new NpvController); },
    };
    return description;
}
