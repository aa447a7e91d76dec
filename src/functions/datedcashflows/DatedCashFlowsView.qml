pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Dated cash flows: the number of rows and the rate, XNPV and XIRR, and the
// rows themselves, a date (YYYY-MM-DD) and an amount each.
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
        label: qsTr("Number of cash flows (2 to 100)")
        signable: false
    }
    NumericField {
        controller: screen.controller
        outlet: "rateField"
        label: qsTr("Discount rate a year for XNPV (%)")
    }
    SectionHeader {
        text: qsTr("Results")
    }
    ResultRow {
        controller: screen.controller
        outlet: "xnpvLabel"
        label: qsTr("Net present value (XNPV)")
    }
    ResultRow {
        controller: screen.controller
        outlet: "xirrLabel"
        label: qsTr("Internal rate of return (XIRR)")
    }
    SectionHeader {
        text: qsTr("Cash flows: date, amount")
    }
    Repeater {
        model: flows.rowCount

        delegate: RowLayout {
            id: flowRow

            required property int index

            Layout.fillWidth: true
            Layout.leftMargin: AppTheme.margin
            Layout.rightMargin: AppTheme.margin
            spacing: 6

            TextField {
                objectName: "dateField" + flowRow.index
                Layout.preferredWidth: 140
                text: flows.dateTexts[flowRow.index] ?? ""
                placeholderText: "2027-01-31"
                selectByMouse: true
                font.pixelSize: 16
                Accessible.name: qsTr("Date of cash flow %1").arg(flowRow.index)
                onTextEdited: flows.dateChanged(flowRow.index, text)
            }
            TextField {
                objectName: "amountField" + flowRow.index
                Layout.fillWidth: true
                text: flows.amountTexts[flowRow.index] ?? ""
                placeholderText: "0"
                inputMethodHints: Qt.ImhFormattedNumbersOnly
                selectByMouse: true
                font.pixelSize: 16
                Accessible.name: qsTr("Amount of cash flow %1").arg(flowRow.index)
                onTextEdited: flows.amountChanged(flowRow.index, text)
            }
        }
    }
}
