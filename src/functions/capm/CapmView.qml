import QtQuick
import Tallyvane

// Capital asset pricing model: four fields, each with its own solve button
// that replaces the field with the value solved from the other three.
FunctionScreen {
    id: screen

    controller: CapmController {}

    SectionHeader {
        text: qsTr("Enter three values, solve the fourth")
    }
    SolveField {
        controller: screen.controller
        name: "stockReturn"
        label: qsTr("Expected return of the stock (Rs, %)")
    }
    SolveField {
        controller: screen.controller
        name: "marketReturn"
        label: qsTr("Expected return of the market (Rm, %)")
    }
    SolveField {
        controller: screen.controller
        name: "riskFreeRate"
        label: qsTr("Risk-free rate (Rf, %)")
    }
    SolveField {
        controller: screen.controller
        name: "beta"
        label: qsTr("Beta")
    }
}
