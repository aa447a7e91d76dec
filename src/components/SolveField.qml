import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// A number field with the button that solves it: outlet "<name>Field",
// button "<name>Button", solve action `name` of the controller.
RowLayout {
    id: solveRow

    required property QVFunctionController controller
    required property string name
    // Its name on the screen: by default the description's.
    property string label: solveRow.controller.labelOf(solveRow.name + "Field")
    // See NumericField.
    property bool countsAsZero: true
    property bool signable: true

    Layout.fillWidth: true
    Layout.rightMargin: AppTheme.margin
    spacing: 0

    NumericField {
        controller: solveRow.controller
        outlet: solveRow.name + "Field"
        label: solveRow.label
        countsAsZero: solveRow.countsAsZero
        signable: solveRow.signable
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
