#include "BlackScholesController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& blackScholesDescription()
{
    static const CalculatorDescription description{
        .name = "black-scholes",
        .screen = "BlackScholesController",
        .view = "functions/blackscholes/BlackScholesView.qml",
        .entry = {CatalogueEntry::List::Stock, "Black-Scholes", "", "#E74C3C"},
        .fields =
            {
                number("assetPrice", "assetPriceField", "Asset price (S)"),
                number("exercisePrice", "exercisePriceField", "Exercise price (K)"),
                number("timeToExpiration", "timeToExpirationField",
                       "Time to expiration (T, years)"),
                percent("standardDeviation", "standardDeviationField",
                        "Standard deviation (volatility, % a year)"),
                percent("riskFreeRate", "riskFreeRateField",
                        "Risk-free rate (% a year, continuous)"),
            },
        .results =
            {
                result("callPrice", "callPriceLabel", "Price"),
                result("putPrice", "putPriceLabel", "Price"),
                result("callDelta", "callDeltaLabel", "Delta"),
                result("putDelta", "putDeltaLabel", "Delta"),
                result("callGamma", "callGammaLabel", "Gamma"),
                result("putGamma", "putGammaLabel", "Gamma"),
                result("callVega", "callVegaLabel", "Vega (per 1.00 of volatility)"),
                result("putVega", "putVegaLabel", "Vega (per 1.00 of volatility)"),
                result("callTheta", "callThetaLabel", "Theta (per year)"),
                result("putTheta", "putThetaLabel", "Theta (per year)"),
                result("callRho", "callRhoLabel", "Rho (per 1.00 of rate)"),
                result("putRho", "putRhoLabel", "Rho (per 1.00 of rate)"),
            },
        .solveButtons = {},
        .create = [] { return std::unique_ptr<QVFunctionController>(new BlackScholesController); },
    };
    return description;
}
