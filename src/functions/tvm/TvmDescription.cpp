#include "TvmController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& tvmDescription()
{
    static const CalculatorDescription description{
        .name = "tvm",
        .screen = "TvmController",
        .view = "functions/tvm/TvmView.qml",
        .entry = {CatalogueEntry::List::Functions, "Time Value of Money Calculator", "tvm", {}},
        .fields =
            {
                number("presentValue", "pvField", "Present value (PV)"),
                number("futureValue", "fvField", "Future value (FV)"),
                percent("interestRate", "interestField", "Annual interest rate (I/Y, %)"),
                number("period", "periodField", "Number of periods (N)"),
                number("payment", "pmtField", "Payment per period (PMT)"),
                choice("paymentMode", "modeButton", "Payments at", {"BEG", "END"}, "modeClicked"),
                choice("paymentFrequency", "frequencyButton", "Payments a year",
                       {"Monthly", "Quarterly", "Semiannually", "Annually"}, "frequencyClicked"),
            },
        // Each solve shows its value in its own field.
        .results = {},
        .solveButtons = {"PV", "FV", "PMT", "I/Y", "N"},
        .example = {"presentValue=1000", "payment=100", "interestRate=5", "period=10", "--solve",
                    "FV"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new TvmController); },
    };
    return description;
}
