import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// A labelled number field bound to one outlet of a calculator view. Every
// edit goes to the controller as the screen's change action. "±" (the
// Change Sign accessory) flips the sign without recomputing; "Done" on a
// touch keyboard closes it.
ColumnLayout {
    id: row

    required property QVFunctionController controller
    required property string outlet
    property string label
    property string placeholder: "0"
    readonly property alias field: field

    Layout.fillWidth: true
    Layout.leftMargin: AppTheme.margin
    Layout.rightMargin: AppTheme.margin
    spacing: 4

    Label {
        text: row.label
        font.pixelSize: 13
        color: AppTheme.secondaryText
    }

    RowLayout {
        Layout.fillWidth: true
        spacing: 6

        TextField {
            id: field

            objectName: row.outlet
            Layout.fillWidth: true
            text: row.controller.view.texts[row.outlet] ?? ""
            placeholderText: row.placeholder
            inputMethodHints: Qt.ImhFormattedNumbersOnly
            selectByMouse: true
            font.pixelSize: 17
            Accessible.name: row.label
            onTextEdited: row.controller.editField(row.outlet, text)
            onAccepted: nextItemInFocusChain().forceActiveFocus()
        }
        SignButton {
            objectName: row.outlet + "Sign"
            field: field
            fieldLabel: row.label
            onSignFlipped: text => row.controller.view.setText(row.outlet, text)
        }
        Button {
            text: qsTr("Done")
            visible: field.activeFocus && (Qt.platform.os === "android" || Qt.platform.os === "ios")
            focusPolicy: Qt.NoFocus
            onClicked: field.focus = false
        }
    }
}
