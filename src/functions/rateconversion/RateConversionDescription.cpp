#include "RateConversionController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& rateConversionDescription()
{
    static const CalculatorDescription description{
        .name = "rate-conversion",
        .screen = "RateConversionController",
        .view = "functions/rateconversion/RateConversionView.qml",
        .entry = {CatalogueEntry::List::Loans, "Interest Rate Conversion", "", "#28ABE3"},
        .fields =
            {
                percent("nominalRate", "nominalRateField", ""),
                percent("effectiveRate", "effectiveRateField", ""),
                count("compoundingPerYear", "compoundingPerYearField",
                      "Compoundings a year (12 for monthly)"),
            },
        .results =
            {
                result("continuousRate", "continuousRateResultLabel",
                       "Effective rate at the nominal rate", "%"),
            },
        .solveButtons = {"effectiveRate", "nominalRate"},
        .create =
            [] { return std::unique_ptr<QVFunctionController>(new RateConversionController); },
    };
    return description;
}
