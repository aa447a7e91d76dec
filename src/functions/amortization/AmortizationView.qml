pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Amortization schedule: the loan and its terms, the payment and totals,
// the P1–P2 range, and the whole schedule in a list of its own that
// scrolls smoothly however long the loan is; Save as CSV writes it out.
FunctionScreen {
    id: screen

    // The outlets typed here directly (not through a NumericField).
    readonly property string dateOutlet: "firstPaymentDateField"
    readonly property string roundingOutlet: "roundToCentsField"

    controller: AmortizationController {
        id: loan
    }

    SectionHeader {
        text: qsTr("Loan")
    }
    NumericField {
        controller: screen.controller
        outlet: "loanAmountField"
        signable: false
    }
    NumericField {
        controller: screen.controller
        outlet: "annualRateField"
    }
    NumericField {
        controller: screen.controller
        outlet: "yearsField"
        signable: false
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "paymentsPerYearButton"
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "compoundingPerYearButton"
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "paymentModeButton"
    }
    NumericField {
        controller: screen.controller
        outlet: "extraPaymentField"
        signable: false
    }
    ColumnLayout {
        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin
        spacing: 4

        Label {
            text: loan.labelOf(screen.dateOutlet)
            font.pixelSize: 13
            color: AppTheme.secondaryText
        }
        // A date that cannot be read is marked; the schedule then has no
        // dates, and the payoff date says why.
        CellField {
            fieldName: "firstPaymentDateField"
            label: qsTr("First payment date")
            Layout.fillWidth: true
            dates: true
            countsAsZero: false
            text: loan.view.texts[screen.dateOutlet] ?? ""
            placeholderText: "2027-01-01"
            onEdited: text => loan.editField(screen.dateOutlet, text)
        }
    }
    RowLayout {
        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin

        Label {
            Layout.fillWidth: true
            text: loan.labelOf(screen.roundingOutlet)
            font.pixelSize: 15
        }
        Switch {
            objectName: "roundToCentsSwitch"
            checked: (loan.view.texts[screen.roundingOutlet] ?? "1") !== "0"
            Accessible.name: loan.labelOf(screen.roundingOutlet)
            onToggled: loan.editField(screen.roundingOutlet, checked ? "1" : "0")
        }
    }
    SectionHeader {
        text: qsTr("Results")
    }
    ResultRow {
        controller: screen.controller
        outlet: "paymentLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "numberOfPaymentsLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "totalInterestLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "totalPaidLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "lastPaymentLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "payoffDateLabel"
    }
    SectionHeader {
        text: qsTr("Payments P1 to P2")
    }
    NumericField {
        controller: screen.controller
        outlet: "rangeStartField"
        signable: false
    }
    NumericField {
        controller: screen.controller
        outlet: "rangeEndField"
        signable: false
    }
    ResultRow {
        controller: screen.controller
        outlet: "rangePrincipalLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "rangeInterestLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "rangeBalanceLabel"
    }
    // The balance still owed and the interest paid so far, year by year.
    Item {
        Layout.fillWidth: true
        Layout.preferredHeight: loan.chartShown ? 300 : 0
        visible: loan.chartShown
        Accessible.name: qsTr("Chart of the balance and the interest paid by year")

        MultiLineGraphView {
            id: chart

            objectName: "amortizationChart"
            anchors.fill: parent
            anchors.margins: 8
            dataSource: loan.chartDataSource
            delegate: loan.chartDataSource
            animated: false
            showLegend: true
            legendViewType: 0
            gridLineColor: AppTheme.chartGrid
            textColor: AppTheme.text
            gridLineWidth: 0.3
            textFontSize: 12
            markerColor: "orange"
            markerTextColor: "white"
            markerWidth: 0.4
            showMarker: true
            showCustomMarkerView: true

            Connections {
                target: loan
                function onChartChanged() {
                    if (!loan.chartShown)
                        chart.clearGraph();
                    else if (chart.lineCount === 0)
                        chart.drawGraph();
                    else
                        chart.reloadGraph();
                }
            }
        }
    }
    SectionHeader {
        text: qsTr("Schedule: payment, interest, principal, balance")
    }
    ListView {
        id: rows

        objectName: "scheduleList"
        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin
        Layout.preferredHeight: Math.min(count, 12) * 28
        clip: true
        model: loan.scheduleRowCount
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {}

        delegate: RowLayout {
            id: scheduleRow

            required property int index
            readonly property var row: loan.scheduleRow(index)

            width: ListView.view.width
            height: 28

            Label {
                Layout.preferredWidth: 44
                text: scheduleRow.row.period ?? ""
                color: AppTheme.secondaryText
            }
            Label {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: scheduleRow.row.payment ?? ""
                horizontalAlignment: Text.AlignRight
            }
            Label {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: scheduleRow.row.interest ?? ""
                horizontalAlignment: Text.AlignRight
            }
            Label {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: scheduleRow.row.principal ?? ""
                horizontalAlignment: Text.AlignRight
            }
            Label {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: scheduleRow.row.balance ?? ""
                horizontalAlignment: Text.AlignRight
                font.bold: true
            }
        }
    }
    Button {
        objectName: "saveCsvButton"
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: 8
        visible: loan.scheduleRowCount > 0
        text: qsTr("Save as CSV")
        onClicked: loan.saveScheduleCsv()
    }
}
