#include "PeriodReturnController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& periodReturnDescription()
{
    static const CalculatorDescription description{
        .name = "period-return",
        .screen = "PeriodReturnController",
        .view = {}, // a plain form
        .entry = {CatalogueEntry::List::Stock, "Holding Period Return", {}, "#34495E"},
        .fields =
            {
                under("Holding", number("initialValue", "initialValueField", "Initial value")),
                number("endingValue", "endingValueField", "Ending value"),
                number("income", "incomeField", "Income received"),
            },
        .results =
            {
                under("Result", result("hpr", "hprResultLabel", "Holding period return", "%")),
            },
        .solveButtons = {},
        .example = {"initialValue=48.5", "endingValue=52.75", "income=1.2"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new PeriodReturnController); },
    };
    return description;
}
