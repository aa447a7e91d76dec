#include "BondController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& bondDescription()
{
    static const CalculatorDescription description{
        .name = "bond",
        .screen = "BondController",
        .view = "functions/bond/BondView.qml",
        .entry = {CatalogueEntry::List::Functions, "Bond Calculator", "bond", ""},
        .fields =
            {
                number("faceValue", "faceValueField", "Face value"),
                percent("couponRate", "couponRateField", "Coupon rate (% a year)"),
                percent("yieldToMaturity", "yieldToMaturityField", "Yield to maturity (% a year)"),
                number("years", "yearsField", "Years to maturity"),
                choice("frequency", "frequencyButton", "Coupons a year",
                       {"Annually", "Semiannually", "Quarterly", "Monthly"}, "frequencyClicked"),
            },
        .results =
            {
                result("bondValue", "bondValueLabel", "Bond value"),
                result("maculayDuration", "maculayDurationLabel", "Macaulay duration (years)"),
                result("modifiedDuration", "modifiedDurationLabel", "Modified duration"),
                result("convexity", "convexityLabel", "Convexity (years²)"),
            },
        .solveButtons = {},
        .create = [] { return std::unique_ptr<QVFunctionController>(new BondController); },
    };
    return description;
}
