import QtQuick
import QtQuick.Controls
import Tallyvane

// One key of the keypad grid. A click never takes the keyboard focus, so
// typing keeps working while the mouse is used too; Tab walks the keys
// (ringed while focused) and Space presses the focused one. Its tooltip
// names the keyboard's key for it.
AbstractButton {
    id: key

    required property int index
    required property string title
    required property string kind
    required property bool bordered
    required property string secondaryTitle
    required property string shortcut

    readonly property color baseColor: {
        switch (kind) {
        case "digit":
            return AppTheme.digitKey;
        case "operator":
            return AppTheme.keyOperator;
        case "financial":
            return "#3C5A78";
        case "toggle":
            return "#2E3F52";
        case "edit":
            return AppTheme.editKey;
        default:
            return "#5B7088";
        }
    }
    readonly property bool darkKey: kind === "financial" || kind === "toggle" || kind === "function"

    focusPolicy: Qt.TabFocus
    text: title
    Accessible.name: title
    Accessible.description: shortcut
    Accessible.role: Accessible.Button
    // What tests and screen readers read: the key and its keyboard key.
    readonly property string hint: shortcut.length > 0 ? qsTr("%1: %2").arg(title).arg(shortcut) : title

    HintTip {
        visible: key.hovered || key.visualFocus
        delay: key.visualFocus ? 0 : 800
        text: key.hint
    }

    background: Rectangle {
        color: key.down ? Qt.darker(key.baseColor, 1.25) : (key.hovered ? Qt.lighter(key.baseColor, 1.06) : key.baseColor)
        border.width: key.bordered ? 3 : 0.5
        border.color: key.bordered ? "#F2A93B" : "#33000000"

        // The focus ring: a dark and a light line, so one of them stands out
        // on any key and either colour scheme.
        Rectangle {
            anchors.fill: parent
            visible: key.visualFocus
            color: "transparent"
            border.width: 3
            border.color: AppTheme.focusRing
            Rectangle {
                anchors.fill: parent
                anchors.margins: 3
                color: "transparent"
                border.width: 2
                border.color: AppTheme.focusRingInner
            }
        }
    }
    readonly property bool hasSecond: secondaryTitle.length > 0 && secondaryTitle !== title
    readonly property real secondSize: Math.max(8, height * 0.16)

    // The second function sits in the top corner and the title fills the
    // room below it, so the two never overlap, however small the key.
    contentItem: Item {
        // The second function, small in the corner, while it is not shown.
        Text {
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.rightMargin: 3
            anchors.topMargin: 2
            visible: key.hasSecond
            text: key.secondaryTitle
            color: key.darkKey ? AppTheme.keyOperator : AppTheme.lightKeySecondText
            font.pixelSize: key.secondSize
        }
        Text {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            // Below the second function's line, when there is one.
            anchors.topMargin: key.hasSecond ? key.secondSize * 1.25 + 2 : 0
            anchors.bottom: parent.bottom
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            text: key.title
            color: key.darkKey ? "white" : AppTheme.lightKeyText
            font.pixelSize: Math.max(10, Math.min(height * 0.75, key.height * 0.36, key.width * (key.title.length > 3 ? 0.2 : 0.3)))
            font.bold: key.kind !== "digit"
        }
    }
}
