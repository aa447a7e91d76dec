import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// One result: its name and the value the controller put into the outlet.
RowLayout {
    id: row

    required property QVFunctionController controller
    required property string outlet
    property string label

    Layout.fillWidth: true
    Layout.leftMargin: AppTheme.margin
    Layout.rightMargin: AppTheme.margin

    Label {
        Layout.fillWidth: true
        text: row.label
        font.pixelSize: 15
    }
    Label {
        objectName: row.outlet
        text: row.controller.view.texts[row.outlet] ?? ""
        font.pixelSize: 17
        font.bold: true
        color: AppTheme.accent
        Accessible.name: row.label + " " + text
    }
}
