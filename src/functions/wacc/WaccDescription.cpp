#include "WaccController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& waccDescription()
{
    static const CalculatorDescription description{
        .name = "wacc",
        .screen = "WaccController",
        .view = "functions/wacc/WaccView.qml",
        .entry = {CatalogueEntry::List::Stock, "Weighted Average Cost of Capital", "", "#1ABC9C"},
        .fields =
            {
                percent("costOfEquity", "costOfEquityField", "Cost of equity (%)"),
                number("equity", "equityField", "Market value of equity"),
                percent("costOfDebt", "costOfDebtField", "Cost of debt before tax (%)"),
                number("debt", "debtField", "Market value of debt"),
                percent("corporateTaxRate", "corporateTaxRateField", "Corporate tax rate (%)"),
            },
        .results =
            {
                result("weightedAverageCostOfCapital", "waccResultLabel",
                       "Weighted average cost of capital", "%"),
            },
        .solveButtons = {},
        .create = [] { return std::unique_ptr<QVFunctionController>(new WaccController); },
    };
    return description;
}
