#include "PeriodReturnController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& periodReturnDescription()
{
    static const CalculatorDescription description{
        .name = "period-return",
        .screen = "PeriodReturnController",
        .view = "functions/periodreturn/PeriodReturnView.qml",
        .entry = {CatalogueEntry::List::Stock, "Holding Period Return", "", "#34495E"},
        .fields =
            {
                number("initialValue", "initialValueField", "Initial value"),
                number("endingValue", "endingValueField", "Ending value"),
                number("income", "incomeField", "Income received"),
            },
        .results =
            {
                result("hpr", "hprResultLabel", "Holding period return", "%"),
            },
        .solveButtons = {},
        .create = [] { return std::unique_ptr<QVFunctionController>(new PeriodReturnController); },
    };
    return description;
}
