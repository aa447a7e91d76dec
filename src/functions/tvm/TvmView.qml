pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Time value of money: five amounts, mode and frequency, a solve button for
// each quantity and the chart of the last one solved.
FunctionScreen {
    id: screen

    controller: TvmController {
        id: tvm
    }

    SectionHeader {
        text: qsTr("Values")
    }
    NumericField {
        controller: screen.controller
        outlet: "pvField"
        label: qsTr("Present value (PV)")
    }
    NumericField {
        controller: screen.controller
        outlet: "fvField"
        label: qsTr("Future value (FV)")
    }
    NumericField {
        controller: screen.controller
        outlet: "interestField"
        label: qsTr("Annual interest rate (I/Y, %)")
    }
    NumericField {
        controller: screen.controller
        outlet: "periodField"
        label: qsTr("Number of periods (N)")
    }
    NumericField {
        controller: screen.controller
        outlet: "pmtField"
        label: qsTr("Payment per period (PMT)")
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "modeButton"
        label: qsTr("Payments at")
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "frequencyButton"
        label: qsTr("Payments a year")
    }
    SectionHeader {
        text: qsTr("Solve for")
    }
    RowLayout {
        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin
        spacing: 6

        Repeater {
            model: screen.controller.solveButtons()

            delegate: Button {
                required property string modelData

                objectName: "solve" + modelData.replace("/", "")
                Layout.fillWidth: true
                text: modelData
                highlighted: true
                Accessible.name: qsTr("Solve for %1").arg(modelData)
                onClicked: screen.controller.solve(modelData)
            }
        }
    }
    TvmChart {
        controller: tvm
    }
}
