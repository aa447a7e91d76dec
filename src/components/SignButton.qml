import QtQuick
import QtQuick.Controls
import Tallyvane

// The "±" (Change Sign) beside a number field: offers the field's text with
// its sign flipped (signFlipped) and hands the focus back to the field, so
// nothing is recomputed. It is not a Tab stop: Tab goes from field to field,
// and the keyboard flips the sign from inside the field with F9 or Ctrl+−
// (before, Tab stopped on every "±", and digits typed after it were lost).
// A click still works and leaves the focus, and the keyboard, in the field.
Button {
    id: button

    required property TextField field
    required property string fieldLabel
    // The keys, as the tooltips tell them.
    readonly property string keys: qsTr("F9 or Ctrl+\u2212")

    signal signFlipped(string text)

    function flip() {
        signFlipped(Formats.changedSign(field.text));
        field.forceActiveFocus();
    }

    text: "\u00B1"
    focusPolicy: Qt.NoFocus
    implicitWidth: 44
    font.pixelSize: 18
    Accessible.name: qsTr("Change Sign of %1").arg(fieldLabel)
    onClicked: flip()

    HintTip {
        visible: button.hovered
        delay: 800
        text: qsTr("Change Sign (%1)").arg(button.keys)
    }

    // Only the focused field's "±" listens, so the keys are never ambiguous.
    Shortcut {
        sequences: ["F9", "Ctrl+-"]
        enabled: button.visible && button.field.activeFocus
        onActivated: button.flip()
    }
}
