import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// A choice button (mode, frequency) titled with the current choice; it
// opens the controller's action sheet.
RowLayout {
    id: row

    required property QVFunctionController controller
    required property string outlet
    // Its name on the screen: by default the description's.
    property string label: row.controller.labelOf(row.outlet)

    Layout.fillWidth: true
    Layout.leftMargin: AppTheme.margin
    Layout.rightMargin: AppTheme.margin

    Label {
        Layout.fillWidth: true
        text: row.label
        font.pixelSize: 15
    }
    Button {
        objectName: row.outlet
        text: row.controller.spelledWord(row.outlet, row.controller.view.texts[row.outlet] ?? "") + "  \u25BE"
        Accessible.name: row.label + " " + row.controller.spelledWord(row.outlet, row.controller.view.texts[row.outlet] ?? "")
        onClicked: row.controller.openChoice(row.outlet)
    }
}
