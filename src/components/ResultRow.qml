import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// One result: its name and the value the controller put into the outlet,
// and under them the controller's note on it (why it is no number), when
// there is one. The value can be selected and copied: drag over it and
// Ctrl+C, or its context menu (right click, or press and hold) with "Copy".
ColumnLayout {
    id: row

    required property QVFunctionController controller
    required property string outlet
    // Its name on the screen: by default the description's.
    property string label: row.controller.labelOf(row.outlet)
    readonly property string note: row.controller.view.notes[row.outlet] ?? ""

    Layout.fillWidth: true
    Layout.leftMargin: AppTheme.margin
    Layout.rightMargin: AppTheme.margin
    spacing: 2

    RowLayout {
        Layout.fillWidth: true

        Label {
            Layout.fillWidth: true
            text: row.label
            font.pixelSize: 15
            // A long name wraps on a narrow window rather than run under
            // the value.
            wrapMode: Text.Wrap
        }
        TextEdit {
            id: value

            function copyAll() {
                selectAll();
                copy();
                deselect();
            }

            objectName: row.outlet
            text: row.controller.view.texts[row.outlet] ?? ""
            readOnly: true
            selectByMouse: true
            selectByKeyboard: true
            activeFocusOnPress: true
            font.pixelSize: 17
            font.bold: true
            // Greyed while a flipped sign is not yet counted in.
            color: row.controller.view.stale ? AppTheme.secondaryText : AppTheme.accent
            selectionColor: AppTheme.highlight
            selectedTextColor: "#FFFFFF"
            Accessible.role: Accessible.StaticText
            Accessible.name: row.label + " " + text

            TapHandler {
                acceptedButtons: Qt.RightButton
                onTapped: menu.popup()
            }
            TapHandler {
                acceptedDevices: PointerDevice.TouchScreen
                onLongPressed: menu.popup()
            }
            Menu {
                id: menu

                MenuItem {
                    objectName: row.outlet + "Copy"
                    text: qsTr("Copy")
                    enabled: value.text.length > 0
                    onTriggered: value.copyAll()
                }
            }
        }
    }
    Label {
        objectName: row.outlet + "Note"
        Layout.fillWidth: true
        visible: row.note.length > 0
        text: row.note
        wrapMode: Text.Wrap
        font.pixelSize: 12
        color: AppTheme.secondaryText
    }
}
