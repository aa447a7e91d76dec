pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// One line of the schedule: a payment, a year's subtotal (bold, on a
// tinted band) or the headers. On a narrow window the date and the
// extra give way (and the principal on the narrowest); what happened at a
// payment shows on a line under it.
ColumnLayout {
    id: line

    property var cells: ({})
    // Whether the payments have dates (the date column shows only then).
    property bool dated: false
    property bool header: false
    readonly property bool subtotal: cells.kind === "year"
    readonly property bool wide: width >= 520
    // On the narrowest windows (phones held upright at 320) the principal
    // gives way too: it is the payment less the interest.
    readonly property bool narrow: width < 360
    readonly property int amountColumns: wide ? 5 : (narrow ? 3 : 4)
    readonly property real numberWidth: wide ? 60 : 48
    readonly property real dateWidth: wide && dated ? 88 : 0
    // The amount columns share what is left evenly (margins of 4 and 12,
    // and the spacing after each column before them).
    readonly property real amountWidth: Math.max(1, (width - 16 - numberWidth - dateWidth - 6 * (amountColumns + (dateWidth > 0 ? 1 : 0))) / amountColumns)
    // Room for ten bold characters ("1234567.89").
    readonly property int amountPixelSize: Math.max(8, Math.min(14, Math.floor(amountWidth / 6.2)))

    spacing: 0

    // An amount never loses a digit: on a narrow window its text gets
    // smaller instead.
    component AmountLabel: Label {
        Layout.preferredWidth: line.amountWidth
        Layout.maximumWidth: line.amountWidth
        Layout.fillHeight: true
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        fontSizeMode: Text.HorizontalFit
        // One size for every amount of a line, room for ten characters
        // ("1234567.89"); a longer amount gets smaller still. In pixels, so
        // the fit can go below the default 12 points.
        font.pixelSize: line.amountPixelSize
        minimumPixelSize: 8
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
                Layout.preferredWidth: line.numberWidth
                Layout.fillHeight: true
                verticalAlignment: Text.AlignVCenter
                fontSizeMode: Text.HorizontalFit
                font.pixelSize: line.amountPixelSize
                minimumPixelSize: 8
                text: line.cells.number ?? ""
                color: line.header || line.subtotal ? AppTheme.text : AppTheme.secondaryText
                font.bold: line.header || line.subtotal
            }
            Label {
                visible: line.dateWidth > 0
                Layout.preferredWidth: line.dateWidth
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
                visible: !line.narrow
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
