pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// A month calendar for a date field: it opens at the field's date (today
// when the field holds none), steps a month at a time and hands the picked
// day back as YYYY-MM-DD. By keyboard: the arrows move the day, Page Up and
// Page Down the month, Return or Space picks the day, Escape closes.
Popup {
    id: popup

    property int year: 2000
    property int month: 1 // 1 to 12
    property int day: 1
    readonly property alias grid: grid

    signal picked(string text)

    // Opens at the date `text` names, or at today.
    function openAt(text) {
        popup.show(Formats.calendarDate(text));
        popup.open();
    }
    function show(date) {
        popup.year = date.year;
        popup.month = date.month;
        popup.day = date.day;
    }
    function moveDays(days) {
        popup.show(Formats.calendarDay(popup.year, popup.month, popup.day, days));
    }
    function moveMonths(months) {
        popup.show(Formats.calendarMonth(popup.year, popup.month, popup.day, months));
    }
    function pick(year, month, day) {
        popup.picked(Formats.isoDate(year, month, day));
        popup.close();
    }

    modal: true
    focus: true
    padding: 8
    margins: 8

    ColumnLayout {
        anchors.fill: parent
        spacing: 4
        focus: true
        Keys.onPressed: event => {
            const moves = {
                [Qt.Key_Left]: -1,
                [Qt.Key_Right]: 1,
                [Qt.Key_Up]: -7,
                [Qt.Key_Down]: 7
            };
            if (moves[event.key] !== undefined)
                popup.moveDays(moves[event.key]);
            else if (event.key === Qt.Key_PageUp)
                popup.moveMonths(-1);
            else if (event.key === Qt.Key_PageDown)
                popup.moveMonths(1);
            else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Space)
                popup.pick(popup.year, popup.month, popup.day);
            else
                return;
            event.accepted = true;
        }

        RowLayout {
            Layout.fillWidth: true

            ToolButton {
                objectName: "previousMonth"
                text: "\u2039"
                focusPolicy: Qt.NoFocus
                Accessible.name: qsTr("Previous month")
                onClicked: popup.moveMonths(-1)
            }
            Label {
                objectName: "calendarTitle"
                Layout.fillWidth: true
                horizontalAlignment: Text.AlignHCenter
                text: grid.title
                font.bold: true
            }
            ToolButton {
                objectName: "nextMonth"
                text: "\u203a"
                focusPolicy: Qt.NoFocus
                Accessible.name: qsTr("Next month")
                onClicked: popup.moveMonths(1)
            }
        }
        DayOfWeekRow {
            Layout.fillWidth: true
        }
        MonthGrid {
            id: grid

            objectName: "monthGrid"
            Layout.fillWidth: true
            Layout.preferredWidth: 280
            year: popup.year
            month: popup.month - 1
            delegate: AbstractButton {
                id: cell

                required property int day
                required property int month
                required property int year
                readonly property bool chosen: cell.day === popup.day && cell.month === popup.month - 1 && cell.year === popup.year

                objectName: cell.month === grid.month ? "day_" + cell.day : ""
                focusPolicy: Qt.NoFocus
                implicitHeight: 32
                opacity: cell.month === grid.month ? 1 : 0.45
                Accessible.name: Formats.isoDate(cell.year, cell.month + 1, cell.day)
                onClicked: popup.pick(cell.year, cell.month + 1, cell.day)
                contentItem: Label {
                    text: cell.day
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    color: cell.chosen ? cell.palette.highlightedText : cell.palette.text
                }
                background: Rectangle {
                    radius: 4
                    color: cell.chosen ? cell.palette.highlight : "transparent"
                }
            }
        }
    }
}
