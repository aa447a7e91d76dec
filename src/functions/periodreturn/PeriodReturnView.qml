import QtQuick
import Tallyvane

// Holding period return: start value, end value and income; the return over
// the period in percent.
FunctionScreen {
    id: screen

    controller: PeriodReturnController {}

    SectionHeader {
        text: qsTr("Holding")
    }
    NumericField {
        controller: screen.controller
        outlet: "initialValueField"
        label: qsTr("Initial value")
    }
    NumericField {
        controller: screen.controller
        outlet: "endingValueField"
        label: qsTr("Ending value")
    }
    NumericField {
        controller: screen.controller
        outlet: "incomeField"
        label: qsTr("Income received")
    }
    SectionHeader {
        text: qsTr("Result")
    }
    ResultRow {
        controller: screen.controller
        outlet: "hprResultLabel"
        label: qsTr("Holding period return")
    }
}
