import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// One line of the schedule: a payment, a year's subtotal (bold, on a
// tinted band) or the headers. On a narrow window the date and the
// extra give way; what happened at a payment shows on a line under it.
ColumnLayout {
    id: line

    property var cells: ({})
    // Whether the payments have dates (the date column shows only then).
    property bool dated: false
    property bool header: false
    readonly property bool subtotal: cells.kind === "year"
    readonly property bool wide: width >= 520

    spacing: 0

    component AmountLabel: Label {
        Layout.fillWidth: true
        Layout.preferredWidth: 1
        horizontalAlignment: Text.AlignRight
        elide: Text.ElideLeft
    }

    Rectangle {
        Layout.fillWidth: true
        implicitHeight: 28
        color: line.subtotal ? AppTheme.button : "transparent"

        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 4
            // Clear of the list's scroll bar.
            anchors.rightMargin: 12
            spacing: 6

            Label {
                Layout.preferredWidth: 60
                text: line.cells.number ?? ""
                color: line.header || line.subtotal ? AppTheme.text : AppTheme.secondaryText
                font.bold: line.header || line.subtotal
            }
            Label {
                visible: line.wide && line.dated
                Layout.preferredWidth: 88
                text: line.cells.date ?? ""
                font.bold: line.header
            }
            AmountLabel {
                text: line.cells.payment ?? ""
                font.bold: line.header || line.subtotal
            }
            AmountLabel {
                text: line.cells.interest ?? ""
                font.bold: line.header || line.subtotal
            }
            AmountLabel {
                text: line.cells.principal ?? ""
                font.bold: line.header || line.subtotal
            }
            AmountLabel {
                visible: line.wide
                text: line.cells.extra ?? ""
                font.bold: line.header || line.subtotal
            }
            AmountLabel {
                text: line.cells.balance ?? ""
                font.bold: true
            }
        }
    }
    Label {
        visible: text.length > 0
        Layout.fillWidth: true
        leftPadding: 70
        text: line.cells.event ?? ""
        color: AppTheme.accent
        font.pixelSize: 12
        wrapMode: Text.Wrap
    }
}
