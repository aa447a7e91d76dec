#include "BondController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& bondDescription()
{
    static const CalculatorDescription description{
        .name = "bond",
        .screen = "BondController",
        .view = {}, // a plain form
        // Also among the bonds on real dates, in their list's colour.
        .entry = {CatalogueEntry::List::Functions,
                  "Bond Calculator",
                  "bond",
                  "#8E44AD",
                  {CatalogueEntry::List::Bonds}},
        .fields =
            {
                under("Bond", number("faceValue", "faceValueField", "Face value")),
                percent("couponRate", "couponRateField", "Coupon rate (% a year)"),
                percent("yieldToMaturity", "yieldToMaturityField", "Yield to maturity (% a year)"),
                withoutSign(number("years", "yearsField", "Years to maturity")),
                // The sheet offers the words in the order the model tries them.
                choice("frequency", "frequencyButton", "Coupons a year",
                       {"Monthly", "Quarterly", "Semiannually", "Annually"}, "frequencyClicked"),
            },
        .results =
            {
                under("Results", result("bondValue", "bondValueLabel", "Bond value")),
                result("maculayDuration", "maculayDurationLabel", "Macaulay duration (years)"),
                result("modifiedDuration", "modifiedDurationLabel", "Modified duration"),
                result("convexity", "convexityLabel", "Convexity (years²)"),
            },
        .solveButtons = {},
        .example = {"faceValue=1000", "couponRate=10", "yieldToMaturity=8", "years=10"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new BondController); },
    };
    return description;
}
