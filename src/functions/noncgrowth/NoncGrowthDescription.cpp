#include "NoncGrowthController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& noncGrowthDescription()
{
    static const CalculatorDescription description{
        .name = "nonconst-growth",
        .screen = "NoncGrowthController",
        .view = "functions/noncgrowth/NoncGrowthView.qml",
        .entry = {CatalogueEntry::List::Stock, "Nonconstant Growth", {}, "#F39C12"},
        // The period takes fractions (2.5 values three dividends and no
        // perpetuity) and is read by the controller's own rule
        // (periodChanged). The form's own return field is no input: the
        // price takes its rates from the table alone.
        .fields =
            {
                number("dividend", "dividendField", "Current dividend (D0)"),
                withoutSign(number("period", "periodField",
                                   "Number of periods, the last one growing for ever (1 to 99)")),
                table("return-rate", NoncGrowthModel::rateCapacity,
                      FieldDescription::Kind::Percent),
                table("growth-rate", NoncGrowthModel::rateCapacity,
                      FieldDescription::Kind::Percent),
            },
        .results =
            {
                result("price", "priceResultLabel", "Price of the stock"),
            },
        .solveButtons = {},
        .example = {"dividend=2", "period=3", "return-rate=10,10,10", "growth-rate=20,15,5"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new NoncGrowthController); },
    };
    return description;
}
