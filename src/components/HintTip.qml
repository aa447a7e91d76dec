import QtQuick
import QtQuick.Controls

// A tooltip that never takes keys: the shared one closes on Escape, so a
// hovered control would swallow the Escape meant for the screen (CE on the
// keypad, Back elsewhere).
ToolTip {
    closePolicy: Popup.NoAutoClose
}
