import QtQuick
import QtQuick.Controls

// A text button for the title bar.
ToolButton {
    font.capitalization: Font.MixedCase
    font.pixelSize: 15
    palette.buttonText: "white"
    Accessible.name: text
    background: Rectangle {
        radius: 6
        color: parent.down ? "#33FFFFFF" : (parent.visualFocus ? "#22FFFFFF" : "transparent")
    }
    contentItem: Label {
        text: parent.text
        font: parent.font
        color: parent.enabled ? "white" : "#99FFFFFF"
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
