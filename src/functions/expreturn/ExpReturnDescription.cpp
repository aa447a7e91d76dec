#include "ExpReturnController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& expReturnDescription()
{
    static const CalculatorDescription description{
        .name = "expected-return",
        .screen = "ExpReturnController",
        .view = "functions/expreturn/ExpReturnView.qml",
        .entry = {CatalogueEntry::List::Stock, "Expected Return", {}, "#3498DB"},
        // The period is a whole number of states, read by the controller's
        // own rule (periodChanged); its field keeps the "±" of number fields.
        .fields =
            {
                withoutSign(number("period", "periodField", "Number of states (1 to 99)")),
                table("probability", ExpReturnModel::stateCapacity,
                      FieldDescription::Kind::Percent),
                table("stock-a", ExpReturnModel::stateCapacity, FieldDescription::Kind::Percent),
                table("stock-b", ExpReturnModel::stateCapacity, FieldDescription::Kind::Percent),
            },
        .results =
            {
                result("expectedReturnA", "expReturnAResultLabel", "Expected return A", "%"),
                result("standardDeviationA", "standardDeviationAResultLabel",
                       "Standard deviation A", "%"),
                result("expectedReturnB", "expReturnBResultLabel", "Expected return B", "%"),
                result("standardDeviationB", "standardDeviationBResultLabel",
                       "Standard deviation B", "%"),
            },
        .solveButtons = {},
        .example = {"period=3", "probability=30,40,30", "stock-a=20,10,-5", "stock-b=10,5,0"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new ExpReturnController); },
    };
    return description;
}
