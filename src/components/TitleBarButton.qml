import QtQuick
import QtQuick.Controls

// A text button for the title bar.
ToolButton {
    id: button

    font.capitalization: Font.MixedCase
    font.pixelSize: 15
    Accessible.name: text

    background: Rectangle {
        radius: 6
        color: button.down ? "#33FFFFFF" : (button.visualFocus ? "#22FFFFFF" : "transparent")

        FocusRing {
            shown: button.visualFocus
            light: true
            radius: 6
        }
    }
    contentItem: Label {
        text: button.text
        font: button.font
        color: button.enabled ? "white" : "#99FFFFFF"
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
