#include "DepreciationController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& depreciationDescription()
{
    static const CalculatorDescription description{
        .name = "depreciation",
        .screen = "DepreciationController",
        .view = "functions/depreciation/DepreciationView.qml",
        .entry = {CatalogueEntry::List::Loans, "Depreciation", {}, "#8E7CC3"},
        // The life takes fractions (SL and DDB use them as given); the
        // method sets the model in its action.
        .fields =
            {
                number("cost", "costField", "Cost"),
                number("salvage", "salvageField", "Salvage value at the end of its life"),
                withoutSign(number("life", "lifeField", "Life (whole years)")),
                count("firstYearMonths", "firstYearMonthsField",
                      "Months in the first year (1 to 12)"),
                spelledOut({"Straight line (SL)", "Sum of the years' digits (SYD)",
                            "Declining balance (DDB)", "Fixed-declining balance (DB)"},
                           choice("method", "methodButton", "Method", DepreciationModel::methods(),
                                  "methodClicked")),
                withoutSign(percent("factor", "factorField",
                                    "Declining-balance factor for DDB (%; 200 is double)")),
            },
        .results =
            {
                result("firstYearDepreciation", "firstYearDepreciationLabel", "First year"),
                result("totalDepreciation", "totalDepreciationLabel", "Total"),
            },
        .solveButtons = {},
        .example = {"cost=30000", "salvage=7500", "life=6", "firstYearMonths=9"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new DepreciationController); },
    };
    return description;
}
