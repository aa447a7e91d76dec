#include "ExpReturnController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& expReturnDescription()
{
    static const CalculatorDescription description{
        .name = "expected-return",
        .screen = "ExpReturnController",
        .view = "functions/expreturn/ExpReturnView.qml",
        .entry = {CatalogueEntry::List::Stock, "Expected Return", "", "#3498DB"},
        .fields =
            {
                count("period", "periodField", "Number of states (1 to 99)"),
            },
        .results =
            {

            },
        .solveButtons = {},
        .create = [] { return std::unique_ptr<QVFunctionController>(new ExpReturnController); },
    };
    return description;
}
