#include "DayCountController.h"
#include "framework/CalculatorDescription.h"
#include "numerics/DayCount.h"

using namespace Describe;

const CalculatorDescription& dayCountDescription()
{
    static const CalculatorDescription description{
        .name = "day-count",
        .screen = "DayCountController",
        .view = {}, // a plain form
        .entry = {CatalogueEntry::List::Bonds, "Days between dates", {}, "#2E86AB"},
        .fields =
            {
                under("Dates", date("start", "startField", "Start date")),
                date("end", "endField", "End date"),
                choice("basis", "basisButton", "Day count basis", DayCount::basisWords(),
                       "basisClicked"),
                under("A date plus or minus days",
                      number("addDays", "addDaysField", "Days to add to the start date")),
            },
        .results =
            {
                under("Between the dates", result("days", "daysLabel", "Days")),
                result("yearFraction", "yearFractionLabel", "Year fraction"),
                under("The start date plus the days", result("date", "dateLabel", "Date")),
                result("weekday", "weekdayLabel", "Weekday"),
            },
        .solveButtons = {},
        .example = {"start=2024-02-29", "end=2025-02-28", "basis=30/360", "addDays=100"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new DayCountController); },
    };
    return description;
}
