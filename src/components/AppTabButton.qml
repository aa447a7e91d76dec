import QtQuick
import QtQuick.Controls

// A bottom tab: a glyph over a short label, tinted when current.
TabButton {
    id: tab

    property string glyph

    implicitHeight: 56
    // Ctrl+1 to Ctrl+4 switch tabs (see Main.qml); Tab stays in the screen.
    objectName: "tab_" + text
    focusPolicy: Qt.NoFocus
    Accessible.name: text

    // Plain texts in a column, the current tab told by its colour and the
    // bar above it: the four tabs are on the first frame.
    contentItem: Column {
        spacing: 2

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: tab.glyph
            font.pixelSize: 20
            color: tab.checked ? AppTheme.accent : AppTheme.secondaryText
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: tab.text
            font.pixelSize: 12
            color: tab.checked ? AppTheme.accent : AppTheme.secondaryText
        }
    }
    background: Rectangle {
        color: tab.down ? AppTheme.pressed : tab.palette.base
        Rectangle {
            anchors.top: parent.top
            width: parent.width
            height: 1
            color: AppTheme.separator
        }
        Rectangle {
            anchors.top: parent.top
            anchors.horizontalCenter: parent.horizontalCenter
            width: parent.width * 0.5
            height: 3
            radius: 1.5
            visible: tab.checked
            color: AppTheme.accent
        }
    }
}
