import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// A typed cell of a table under a form: a number or, with `dates`, a date
// (YYYY-MM-DD), typed or picked from a month calendar (the button at the
// field's end, or Alt+Down in the field). A text it cannot read is marked,
// with the line saying why under it (and, where the calculator counts it as
// 0, that it does).
ColumnLayout {
    id: cell

    // The name tests and the screen's own code find the field by.
    property string fieldName
    // What a screen reader calls the field.
    property string label
    property alias text: field.text
    property alias placeholderText: field.placeholderText
    property int fontSize: 17
    property bool dates: false
    property bool countsAsZero: true
    // Why the text cannot be read; by default the reading rule's own line.
    property string problem: cell.dates ? Formats.dateProblem(field.text) : Formats.numberProblem(field.text)
    readonly property bool unreadable: problem.length > 0
    readonly property alias field: field
    // The calendar of a date cell, once it has been opened; else null.
    readonly property DatePopup calendar: calendarButton.calendar

    // An edit by the user, and Return in the field.
    signal edited(string text)
    signal accepted

    // Cells side by side share the row evenly, whatever they hold.
    Layout.preferredWidth: 100
    Layout.alignment: Qt.AlignTop
    spacing: 2

    TextField {
        id: field

        objectName: cell.fieldName
        Layout.fillWidth: true
        inputMethodHints: cell.dates ? Qt.ImhDate : Qt.ImhFormattedNumbersOnly
        selectByMouse: true
        font.pixelSize: cell.fontSize
        Accessible.name: cell.label
        Accessible.description: cell.unreadable ? hint.text : ""
        rightPadding: cell.dates ? calendarButton.width + 4 : padding
        onTextEdited: cell.edited(text)
        onAccepted: cell.accepted()
        background: Rectangle {
            implicitHeight: 40
            color: field.palette.base
            radius: 2
            border.width: field.activeFocus || cell.unreadable ? 2 : 1
            border.color: cell.unreadable ? AppTheme.danger : (field.activeFocus ? field.palette.highlight : field.palette.mid)
        }

        CalendarButton {
            id: calendarButton

            objectName: cell.fieldName + "Calendar"
            visible: cell.dates
            field: field
            label: cell.label
            onPicked: text => {
                field.text = text;
                cell.edited(text);
                field.forceActiveFocus();
            }
        }
    }
    Label {
        id: hint

        objectName: cell.fieldName + "Hint"
        // As wide as the field, however long the line: it wraps.
        Layout.fillWidth: true
        visible: cell.unreadable
        text: Formats.markLine(cell.problem, cell.countsAsZero)
        wrapMode: Text.Wrap
        color: AppTheme.danger
        font.pixelSize: 12
    }
}
