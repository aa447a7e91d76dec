import QtQuick
import Tallyvane

// Weighted average cost of capital: cost and value of equity and of debt,
// the tax rate, and the after-tax result following every edit.
FunctionScreen {
    id: screen

    controller: WaccController {}

    SectionHeader {
        text: qsTr("Equity")
    }
    NumericField {
        controller: screen.controller
        outlet: "costOfEquityField"
        label: qsTr("Cost of equity (%)")
    }
    NumericField {
        controller: screen.controller
        outlet: "equityField"
        label: qsTr("Market value of equity")
    }
    SectionHeader {
        text: qsTr("Debt")
    }
    NumericField {
        controller: screen.controller
        outlet: "costOfDebtField"
        label: qsTr("Cost of debt before tax (%)")
    }
    NumericField {
        controller: screen.controller
        outlet: "debtField"
        label: qsTr("Market value of debt")
    }
    NumericField {
        controller: screen.controller
        outlet: "corporateTaxRateField"
        label: qsTr("Corporate tax rate (%)")
    }
    SectionHeader {
        text: qsTr("Result")
    }
    ResultRow {
        controller: screen.controller
        outlet: "waccResultLabel"
        label: qsTr("Weighted average cost of capital")
    }
}
