import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// A labelled number (or date, with a calendar) field bound to one outlet of
// a calculator view. Every edit goes to the controller as the screen's
// change action. "±" (the
// Change Sign accessory, on fields that have it; F9 or Ctrl+− in the field)
// flips the sign without
// recomputing (the results go stale until the next edit, or Return);
// "Done" on a touch keyboard closes it. A text that is no number (or an
// ambiguous one, "1.234" where "." groups thousands) is marked, with a line
// saying why and, where it does, that it counts as 0.
ColumnLayout {
    id: row

    required property QVFunctionController controller
    required property string outlet
    // Its name on the screen: by default the description's.
    property string label: row.controller.labelOf(row.outlet)
    property string placeholder: "0"
    // Counts and plain text fields (the tip calculator's) have no "±": by
    // default as the description says.
    property bool signable: row.controller.signableOf(row.outlet)
    readonly property alias field: field
    // The calculators that count a text they cannot read as 0 say so in
    // the mark; Tallyvane's own ones leave their results blank instead.
    property bool countsAsZero: true
    // A date field (YYYY-MM-DD) instead of a number field: marked when the
    // text is no date.
    property bool dates: false
    readonly property string problem: dates ? Formats.dateProblem(field.text) : Formats.numberProblem(field.text)
    readonly property bool unreadable: problem.length > 0
    // Why a solved value in this field is no number, when it is not.
    readonly property string note: row.controller.view.notes[row.outlet] ?? ""

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
            inputMethodHints: row.dates ? Qt.ImhDate : Qt.ImhFormattedNumbersOnly
            selectByMouse: true
            font.pixelSize: 17
            Accessible.name: row.label
            Accessible.description: row.unreadable ? hint.text : ""

            rightPadding: row.dates ? calendarButton.width + 4 : padding
            onTextEdited: row.controller.editField(row.outlet, text)
            // After "±" Return applies the flipped text first.
            onAccepted: {
                if (row.controller.view.stale)
                    row.controller.editField(row.outlet, text);
                nextItemInFocusChain().forceActiveFocus();
            }
            background: Rectangle {
                implicitHeight: 40
                color: field.palette.base
                radius: 2
                border.width: field.activeFocus || row.unreadable ? 2 : 1
                border.color: row.unreadable ? AppTheme.danger : (field.activeFocus ? field.palette.highlight : field.palette.mid)
            }

            HintTip {
                visible: field.hovered && row.signable
                delay: 800
                text: qsTr("%1 changes the sign").arg(sign.keys)
            }
            CalendarButton {
                id: calendarButton

                objectName: row.outlet + "Calendar"
                visible: row.dates
                field: field
                label: row.label
                onPicked: text => {
                    field.text = text;
                    row.controller.editField(row.outlet, text);
                    field.forceActiveFocus();
                }
            }
        }
        SignButton {
            id: sign

            objectName: row.outlet + "Sign"
            visible: row.signable
            field: field
            fieldLabel: row.label
            onSignFlipped: text => row.controller.signFlipped(row.outlet, text)
        }
        Button {
            text: qsTr("Done")
            visible: field.activeFocus && (Qt.platform.os === "android" || Qt.platform.os === "ios")
            focusPolicy: Qt.NoFocus
            onClicked: field.focus = false
        }
    }
    Label {
        id: hint

        objectName: row.outlet + "Hint"
        Layout.fillWidth: true
        visible: row.unreadable
        wrapMode: Text.Wrap
        text: Formats.markLine(row.problem, row.countsAsZero)
        color: AppTheme.danger
        font.pixelSize: 12
    }
    Label {
        objectName: row.outlet + "Note"
        Layout.fillWidth: true
        visible: row.note.length > 0
        text: row.note
        wrapMode: Text.Wrap
        color: AppTheme.secondaryText
        font.pixelSize: 12
    }
}
