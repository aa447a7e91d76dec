import QtQuick
import QtQuick.Controls
import Tallyvane

// The "±" (Change Sign) beside a number field: offers the field's text with
// its sign flipped (signFlipped) and hands the focus back to the field, so
// nothing is recomputed. Tab reaches it; a tap leaves the focus, and the
// keyboard, in the field.
Button {
    id: button

    required property TextField field
    required property string fieldLabel

    signal signFlipped(string text)

    text: "\u00B1"
    focusPolicy: Qt.TabFocus
    implicitWidth: 44
    font.pixelSize: 18
    Accessible.name: qsTr("Change Sign of %1").arg(fieldLabel)
    ToolTip.visible: hovered
    ToolTip.text: qsTr("Change Sign")
    onClicked: {
        signFlipped(Formats.changedSign(field.text));
        field.forceActiveFocus();
    }
}
