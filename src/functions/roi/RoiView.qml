import QtQuick
import Tallyvane

// Return on investment: three inputs, three results.
FunctionScreen {
    id: screen

    controller: RoiController {}

    SectionHeader {
        text: qsTr("Investment")
    }
    NumericField {
        controller: screen.controller
        outlet: "investmentField"
        label: qsTr("Amount invested")
    }
    NumericField {
        controller: screen.controller
        outlet: "futureValueField"
        label: qsTr("Amount returned (income)")
    }
    NumericField {
        controller: screen.controller
        outlet: "yearsField"
        label: qsTr("Years held")
    }
    SectionHeader {
        text: qsTr("Results")
    }
    ResultRow {
        controller: screen.controller
        outlet: "gainResultLabel"
        label: qsTr("Gain or loss")
    }
    ResultRow {
        controller: screen.controller
        outlet: "roiResultLabel"
        label: qsTr("Return on investment")
    }
    ResultRow {
        controller: screen.controller
        outlet: "annualizedRoiResultLabel"
        label: qsTr("Per year (simple average)")
    }
}
