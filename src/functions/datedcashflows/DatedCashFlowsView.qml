pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Dated cash flows: the number of rows, the rate and the day-count basis,
// XNPV and XIRR, and the rows themselves, a date (YYYY-MM-DD) and an amount
// each, numbered from 0.
// The rows scroll in a list of their own, which makes only the rows in
// sight, so even 10,000 of them stay quick. A cell that cannot be read is
// marked with its line; the results then stay blank and say which row.
FunctionScreen {
    id: screen

    controller: DatedCashFlowsController {
        id: flows
    }

    SectionHeader {
        text: qsTr("Values")
    }
    NumericField {
        controller: screen.controller
        outlet: "rowCountField"
        signable: false
        countsAsZero: false
    }
    NumericField {
        controller: screen.controller
        outlet: "rateField"
        countsAsZero: false
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "basisButton"
    }
    SectionHeader {
        text: qsTr("Results")
    }
    ResultRow {
        controller: screen.controller
        outlet: "xnpvLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "xirrLabel"
    }
    SectionHeader {
        text: qsTr("Cash flows: date, amount")
    }
    ListView {
        id: flowList

        objectName: "flowList"
        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin
        Layout.bottomMargin: AppTheme.margin
        // As tall as its rows, up to about eight in sight (a marked row
        // takes a line more); the others scroll. The height starts from the
        // count, so that the first rows are made at all.
        Layout.preferredHeight: Math.min(Math.max(contentHeight, Math.min(count, 8) * 46), 8 * 46)
        clip: true
        spacing: 6
        model: flows.rows
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {
            objectName: "flowScrollBar"
        }

        delegate: RowLayout {
            id: flowRow

            required property int index
            required property string date
            required property string amount
            required property string dateProblem
            required property string amountProblem

            width: ListView.view.width - 12
            spacing: 6

            Label {
                Layout.preferredWidth: 44
                Layout.alignment: Qt.AlignTop
                Layout.topMargin: 10
                text: flowRow.index.toString()
                color: AppTheme.secondaryText
                font.pixelSize: 15
            }
            CellField {
                fieldName: "dateField" + flowRow.index
                label: qsTr("Date of cash flow %1").arg(flowRow.index)
                Layout.preferredWidth: 140
                Layout.fillWidth: false
                dates: true
                countsAsZero: false
                fontSize: 16
                text: flowRow.date
                problem: flowRow.dateProblem
                placeholderText: "YYYY-MM-DD"
                onEdited: text => flows.dateChanged(flowRow.index, text)
            }
            CellField {
                fieldName: "amountField" + flowRow.index
                label: qsTr("Amount of cash flow %1").arg(flowRow.index)
                Layout.fillWidth: true
                countsAsZero: false
                fontSize: 16
                text: flowRow.amount
                problem: flowRow.amountProblem
                placeholderText: "0"
                onEdited: text => flows.amountChanged(flowRow.index, text)
            }
        }
    }
}
