#include "RoiController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& roiDescription()
{
    static const CalculatorDescription description{
        .name = "roi",
        .screen = "RoiController",
        .view = {}, // a plain form
        .entry = {CatalogueEntry::List::Functions, "Return on Investment Calculator", "roi", {}},
        .fields =
            {
                under("Investment",
                      number("investmentAmount", "investmentField", "Amount invested")),
                number("futureValue", "futureValueField", "Amount returned (income)"),
                withoutSign(number("years", "yearsField", "Years held")),
            },
        .results =
            {
                under("Results", result("gain", "gainResultLabel", "Gain or loss")),
                result("roi", "roiResultLabel", "Return on investment", "%"),
                result("annualizedRoi", "annualizedRoiResultLabel", "Per year (simple average)",
                       "%"),
            },
        .solveButtons = {},
        .example = {"investmentAmount=12000", "futureValue=15900", "years=4"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new RoiController); },
    };
    return description;
}
