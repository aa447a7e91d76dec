#include "StatisticsController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& statisticsDescription()
{
    static const CalculatorDescription description{
        .name = "statistics",
        .screen = "StatisticsController",
        .view = "functions/statistics/StatisticsView.qml",
        .entry = {CatalogueEntry::List::Business, "Statistics and Regression", {}, "#C2185B"},
        // The controller reads every input itself: a count out of range is
        // ignored, and a prediction field left empty asks for no prediction
        // (it is not 0).
        .fields =
            {
                count("rows", "rowCountField", "Number of rows (1 to 10,000)"),
                choice("model", "modelButton", "Regression model", StatisticsModel::models(),
                       "modelClicked"),
                number("predictX", "predictXField", "Predict y at x"),
                number("predictY", "predictYField", "Predict x at y"),
                table("x", StatisticsModel::maximumRows),
                table("y", StatisticsModel::maximumRows),
            },
        .results =
            {
                result("n", "nLabel", "Number of rows used (n)"),
                result("meanX", "meanXLabel", "Mean of x"),
                result("sampleSdX", "sampleSdXLabel", "Sample standard deviation of x"),
                result("populationSdX", "populationSdXLabel", "Population standard deviation of x"),
                result("meanY", "meanYLabel", "Mean of y"),
                result("sampleSdY", "sampleSdYLabel", "Sample standard deviation of y"),
                result("populationSdY", "populationSdYLabel", "Population standard deviation of y"),
                result("sumX", "sumXLabel", "Σx"),
                result("sumX2", "sumX2Label", "Σx²"),
                result("sumY", "sumYLabel", "Σy"),
                result("sumY2", "sumY2Label", "Σy²"),
                result("sumXY", "sumXYLabel", "Σxy"),
                result("a", "aLabel", "a"),
                result("b", "bLabel", "b"),
                result("r", "rLabel", "Correlation r"),
                result("r2", "r2Label", "r²"),
                result("predictedY", "predictedYLabel", "Predicted y"),
                result("predictedX", "predictedXLabel", "Predicted x"),
            },
        .solveButtons = {},
        .example = {"x=1,2,3,4", "y=2,4.1,5.9,8.2", "model=Linear", "predictX=5", "predictY=10"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new StatisticsController); },
    };
    return description;
}
