#include "NpvController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& npvDescription()
{
    static const CalculatorDescription description{
        .name = "npv",
        .screen = "NpvController",
        .view = "functions/npv/NpvView.qml",
        // Also among the business worksheets, for its MIRR, profitability
        // index and payback.
        .entry = {CatalogueEntry::List::Functions,
                  "Net Present Value Calculator",
                  "npv",
                  "#DB3340",
                  {CatalogueEntry::List::Business}},
        .fields =
            {
                withoutSign(number("period", "periodField",
                                   "Number of cash flows, CF0 included (1 to 99)")),
                percent("discountRate", "discountRateField", "Discount rate per period (%)"),
                // Blank: the discount rate.
                percent("financeRate", "financeRateField", "Finance rate for MIRR (%)"),
                percent("reinvestRate", "reinvestRateField", "Reinvestment rate for MIRR (%)"),
                table("cashArray", NpvModel::cashFlowCapacity),
            },
        .results =
            {
                result("npv", "npvResultLabel", "Net present value"),
                result("irr", "irrResultLabel", "Internal rate of return", "%"),
                result("mirr", "mirrResultLabel", "Modified IRR (MIRR)", "%"),
                result("profitabilityIndex", "profitabilityIndexResultLabel",
                       "Profitability index"),
                result("payback", "paybackResultLabel", "Payback (periods)"),
                result("discountedPayback", "discountedPaybackResultLabel",
                       "Discounted payback (periods)"),
            },
        .solveButtons = {},
        .example = {"period=5", "discountRate=8", "cashArray=-5000,1500,2000,2500,1000"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new NpvController); },
    };
    return description;
}
