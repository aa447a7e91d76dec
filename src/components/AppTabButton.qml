import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A bottom tab: a glyph over a short label, tinted when current.
TabButton {
    id: tab

    property string glyph

    implicitHeight: 56
    // Ctrl+1 to Ctrl+4 switch tabs (see Main.qml); Tab stays in the screen.
    objectName: "tab_" + text
    focusPolicy: Qt.NoFocus
    Accessible.name: text

    contentItem: ColumnLayout {
        spacing: 2

        Label {
            Layout.alignment: Qt.AlignHCenter
            text: tab.glyph
            font.pixelSize: 20
            color: tab.checked ? AppTheme.accent : AppTheme.secondaryText
        }
        Label {
            Layout.alignment: Qt.AlignHCenter
            text: tab.text
            font.pixelSize: 12
            font.bold: tab.checked
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
