pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import Tallyvane

// The button at the end of a date field and the month calendar it opens
// under the field. The button is a tab stop (Space opens the calendar), and
// Alt+Down in the field opens it too, so the keyboard reaches what the
// mouse does. A picked day comes back through picked(text).
ToolButton {
    id: button

    required property TextField field
    // The field's name, for a screen reader.
    property string label
    // The month calendar, made when it is first opened: a table of date
    // cells would otherwise make a whole month of day buttons per cell.
    property DatePopup calendar: null

    signal picked(string text)

    function open() {
        if (!calendar)
            calendar = calendarComponent.createObject(button.field, {
                "parent": button.field
            });
        calendar.openAt(button.field.text);
    }

    anchors.right: parent.right
    anchors.verticalCenter: parent.verticalCenter
    width: 30
    height: parent.height - 4
    focusPolicy: Qt.TabFocus
    text: "\u25a6"
    font.pixelSize: 16
    Accessible.name: qsTr("Choose %1 from a calendar").arg(button.label)
    onClicked: button.open()

    Shortcut {
        sequence: "Alt+Down"
        enabled: button.visible && button.field.activeFocus
        onActivated: button.open()
    }
    Component {
        id: calendarComponent

        DatePopup {
            y: button.field.height
            onPicked: text => button.picked(text)
        }
    }
}
