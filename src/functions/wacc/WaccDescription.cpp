#include "WaccController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& waccDescription()
{
    static const CalculatorDescription description{
        .name = "wacc",
        .screen = "WaccController",
        .view = {}, // a plain form
        .entry = {CatalogueEntry::List::Stock, "Weighted Average Cost of Capital", {}, "#1ABC9C"},
        .fields =
            {
                under("Equity", percent("costOfEquity", "costOfEquityField", "Cost of equity (%)")),
                number("equity", "equityField", "Market value of equity"),
                under("Debt",
                      percent("costOfDebt", "costOfDebtField", "Cost of debt before tax (%)")),
                number("debt", "debtField", "Market value of debt"),
                percent("corporateTaxRate", "corporateTaxRateField", "Corporate tax rate (%)"),
            },
        .results =
            {
                under("Result", result("weightedAverageCostOfCapital", "waccResultLabel",
                                       "Weighted average cost of capital", "%")),
            },
        .solveButtons = {},
        .example = {"costOfEquity=12", "equity=600", "costOfDebt=8", "debt=400",
                    "corporateTaxRate=30"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new WaccController); },
    };
    return description;
}
