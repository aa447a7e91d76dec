import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Capital asset pricing model: four fields, each with its own solve button
// that replaces the field with the value solved from the other three.
FunctionScreen {
    id: screen

    // A field with the button that solves it: outlet "<name>Field", button
    // "<name>Button", solve action `name`.
    component SolveField: RowLayout {
        id: solveRow

        required property QVFunctionController controller
        required property string name
        property string label

        Layout.fillWidth: true
        Layout.rightMargin: AppTheme.margin
        spacing: 0

        NumericField {
            controller: solveRow.controller
            outlet: solveRow.name + "Field"
            label: solveRow.label
            Layout.rightMargin: 6
        }
        Button {
            objectName: solveRow.name + "Button"
            Layout.alignment: Qt.AlignBottom
            text: qsTr("Solve")
            highlighted: true
            focusPolicy: Qt.TabFocus
            Accessible.name: qsTr("Solve for %1").arg(solveRow.label)
            onClicked: solveRow.controller.solve(solveRow.name)
        }
    }

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
