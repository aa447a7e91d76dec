#include "BlackScholesController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& blackScholesDescription()
{
    static const CalculatorDescription description{
        .name = "black-scholes",
        .screen = "BlackScholesController",
        .view = {}, // a plain form
        .entry = {CatalogueEntry::List::Stock, "Black-Scholes", {}, "#E74C3C"},
        .fields =
            {
                under("Option", number("assetPrice", "assetPriceField", "Asset price (S)")),
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
                under("Call", result("callPrice", "callPriceLabel", "Price")),
                result("callDelta", "callDeltaLabel", "Delta"),
                result("callGamma", "callGammaLabel", "Gamma"),
                result("callTheta", "callThetaLabel", "Theta (per year)"),
                result("callVega", "callVegaLabel", "Vega (per 1.00 of volatility)"),
                result("callRho", "callRhoLabel", "Rho (per 1.00 of rate)"),
                under("Put", result("putPrice", "putPriceLabel", "Price")),
                result("putDelta", "putDeltaLabel", "Delta"),
                result("putGamma", "putGammaLabel", "Gamma"),
                result("putTheta", "putThetaLabel", "Theta (per year)"),
                result("putVega", "putVegaLabel", "Vega (per 1.00 of volatility)"),
                result("putRho", "putRhoLabel", "Rho (per 1.00 of rate)"),
            },
        .solveButtons = {},
        .example = {"assetPrice=42", "exercisePrice=40", "timeToExpiration=0.5",
                    "standardDeviation=20", "riskFreeRate=10"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new BlackScholesController); },
    };
    return description;
}
