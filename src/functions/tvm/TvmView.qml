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
    }
    NumericField {
        controller: screen.controller
        outlet: "fvField"
    }
    NumericField {
        controller: screen.controller
        outlet: "interestField"
    }
    NumericField {
        controller: screen.controller
        outlet: "periodField"
    }
    NumericField {
        controller: screen.controller
        outlet: "pmtField"
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "modeButton"
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "frequencyButton"
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
