#include "CmpController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& cmpDescription()
{
    static const CalculatorDescription description{
        .name = "cmp",
        .screen = "CmpController",
        .view = "functions/cmp/CmpView.qml",
        .entry = {CatalogueEntry::List::Functions, "Compound Interest Calculator", "cmp", {}},
        .fields =
            {
                number("principalAmount", "principalAmountField", "Principal"),
                percent("annualRate", "annualRateField", "Annual rate (%)"),
                withoutSign(number("period", "periodField", "Years")),
                number("payment", "paymentField", "Monthly deposit"),
                choice("mode", "modeButton", "Deposits at", {"BEG", "END"}, "modeClicked"),
                choice("compounding", "frequencyButton", "Compounding",
                       {"Monthly", "Quarterly", "Semiannually", "Annually"}, "frequencyClicked"),
            },
        .results =
            {
                result("balance", "balanceResultLabel", "Balance"),
                result("interestAmount", "interestAmounResultLabel", "Interest earned"),
                result("totalPrincipal", "totalPrincipalResultLabel", "Total principal"),
                result("apy", "apyResultLabel", "Annual percentage yield", "%"),
            },
        .solveButtons = {},
        .example = {"principalAmount=10000", "annualRate=5", "period=10", "payment=200"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new CmpController); },
    };
    return description;
}
