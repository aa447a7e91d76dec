#include "DatedCashFlowsController.h"
#include "framework/CalculatorDescription.h"
#include "numerics/DayCount.h"

using namespace Describe;

const CalculatorDescription& datedCashFlowsDescription()
{
    static const CalculatorDescription description{
        .name = "dated-cash-flows",
        .screen = "DatedCashFlowsController",
        .view = "functions/datedcashflows/DatedCashFlowsView.qml",
        .entry = {CatalogueEntry::List::Loans, "Dated Cash Flows", {}, "#E85B4F"},
        // The number of rows and the rate are read by the controller (a
        // count out of range is ignored; a rate that cannot be read blanks
        // XNPV).
        .fields =
            {
                count("rows", "rowCountField", "Number of cash flows (2 to 10,000)"),
                percent("rate", "rateField", "Discount rate a year for XNPV (%)"),
                choice("basis", "basisButton", "Day count basis", DayCount::basisWords(),
                       "basisClicked"),
                table("dates", DatedCashFlowsModel::maximumRows, FieldDescription::Kind::Date),
                table("amounts", DatedCashFlowsModel::maximumRows),
            },
        .results =
            {
                result("xnpv", "xnpvLabel", "Net present value (XNPV)"),
                result("xirr", "xirrLabel", "Internal rate of return (XIRR)", "%"),
            },
        .solveButtons = {},
        .example = {"rows=5", "rate=9",
                    "dates=2008-01-01,2008-03-01,2008-10-30,2009-02-15,2009-04-01",
                    "amounts=-10000,2750,4250,3250,2750"},
        .create =
            [] { return std::unique_ptr<QVFunctionController>(new DatedCashFlowsController); },
    };
    return description;
}
