#include "GrowthController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

namespace {
// A blank field is the one worked out, so none counts as 0.
const QString workedOut = QStringLiteral("blank: worked out");
} // namespace

const CalculatorDescription& growthDescription()
{
    static const CalculatorDescription description{
        .name = "growth",
        .screen = "GrowthController",
        .view = {}, // a plain form
        .entry = {CatalogueEntry::List::Business, "Growth Rate (CAGR)", {}, "#2A9D8F"},
        .fields =
            {
                under("Enter three, leave blank the one to work out",
                      whenBlank(workedOut, number("start", "startField", "Start value"))),
                whenBlank(workedOut, number("end", "endField", "End value")),
                whenBlank(workedOut, withoutSign(number("years", "yearsField", "Years"))),
                whenBlank(workedOut, percent("cagr", "cagrField", "Growth rate a year (%)")),
            },
        .results =
            {
                result("start", "startResultLabel", "Start value"),
                result("end", "endResultLabel", "End value"),
                result("years", "yearsResultLabel", "Years"),
                result("cagr", "cagrResultLabel", "Compound annual growth rate", "%"),
                result("percentChange", "percentChangeResultLabel", "Percent change", "%"),
                result("factor", "factorResultLabel", "Growth factor (end ÷ start)"),
            },
        .solveButtons = {},
        .example = {"start=1000", "end=2000", "years=10"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new GrowthController); },
    };
    return description;
}
