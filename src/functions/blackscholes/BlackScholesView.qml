import QtQuick
import Tallyvane

// Black-Scholes: five inputs; the price and the five greeks of the call and
// of the put follow every edit.
FunctionScreen {
    id: screen

    controller: BlackScholesController {}

    SectionHeader {
        text: qsTr("Option")
    }
    NumericField {
        controller: screen.controller
        outlet: "assetPriceField"
        label: qsTr("Asset price (S)")
    }
    NumericField {
        controller: screen.controller
        outlet: "exercisePriceField"
        label: qsTr("Exercise price (K)")
    }
    NumericField {
        controller: screen.controller
        outlet: "timeToExpirationField"
        label: qsTr("Time to expiration (T, years)")
    }
    NumericField {
        controller: screen.controller
        outlet: "standardDeviationField"
        label: qsTr("Standard deviation (volatility, % a year)")
    }
    NumericField {
        controller: screen.controller
        outlet: "riskFreeRateField"
        label: qsTr("Risk-free rate (% a year, continuous)")
    }
    SectionHeader {
        text: qsTr("Call")
    }
    ResultRow {
        controller: screen.controller
        outlet: "callPriceLabel"
        label: qsTr("Price")
    }
    ResultRow {
        controller: screen.controller
        outlet: "callDeltaLabel"
        label: qsTr("Delta")
    }
    ResultRow {
        controller: screen.controller
        outlet: "callGammaLabel"
        label: qsTr("Gamma")
    }
    ResultRow {
        controller: screen.controller
        outlet: "callThetaLabel"
        label: qsTr("Theta (per year)")
    }
    ResultRow {
        controller: screen.controller
        outlet: "callVegaLabel"
        label: qsTr("Vega (per 1.00 of volatility)")
    }
    ResultRow {
        controller: screen.controller
        outlet: "callRhoLabel"
        label: qsTr("Rho (per 1.00 of rate)")
    }
    SectionHeader {
        text: qsTr("Put")
    }
    ResultRow {
        controller: screen.controller
        outlet: "putPriceLabel"
        label: qsTr("Price")
    }
    ResultRow {
        controller: screen.controller
        outlet: "putDeltaLabel"
        label: qsTr("Delta")
    }
    ResultRow {
        controller: screen.controller
        outlet: "putGammaLabel"
        label: qsTr("Gamma")
    }
    ResultRow {
        controller: screen.controller
        outlet: "putThetaLabel"
        label: qsTr("Theta (per year)")
    }
    ResultRow {
        controller: screen.controller
        outlet: "putVegaLabel"
        label: qsTr("Vega (per 1.00 of volatility)")
    }
    ResultRow {
        controller: screen.controller
        outlet: "putRhoLabel"
        label: qsTr("Rho (per 1.00 of rate)")
    }
}
