#include "RateConversionController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& rateConversionDescription()
{
    static const CalculatorDescription description{
        .name = "rate-conversion",
        .screen = "RateConversionController",
        .view = {}, // a plain form of solve fields
        .entry = {CatalogueEntry::List::Loans, "Interest Rate Conversion", {}, "#28ABE3"},
        // The two rates have their solve buttons ("<key>Button").
        .fields =
            {
                under("Enter one rate, solve the other",
                      percent("nominalRate", "nominalRateField", "Nominal annual rate (%)")),
                percent("effectiveRate", "effectiveRateField", "Effective annual rate (%)"),
                count("compoundingPerYear", "compoundingPerYearField",
                      "Compoundings a year (12 for monthly)"),
            },
        .results =
            {
                under("Continuous compounding",
                      result("continuousRate", "continuousRateResultLabel",
                             "Effective rate at the nominal rate", "%")),
            },
        .solveButtons = {"effectiveRate", "nominalRate"},
        .example = {"nominalRate=6", "compoundingPerYear=12", "--solve", "effectiveRate"},
        .create =
            [] { return std::unique_ptr<QVFunctionController>(new RateConversionController); },
    };
    return description;
}
