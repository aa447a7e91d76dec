pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Amortization schedule: the loan and its terms (the payment worked out from
// the term, or the term from a payment), what changes on the way (an event
// list of extra payments and rate changes, interest-only payments, a
// balloon), the results with the APR, the P1–P2 range, and the schedule: a
// table with column headers and each year's subtotal, as tall as the window
// and only its rows in sight made, however long the loan is; Save as CSV
// writes it out.
FunctionScreen {
    id: screen

    // The outlets typed here directly (not through a NumericField).
    readonly property string dateOutlet: "firstPaymentDateField"
    readonly property string roundingOutlet: "roundToCentsField"
    // The schedule's payments have dates (a first payment date was given).
    readonly property bool dated: loan.scheduleHasDates
    // Set by the add buttons: the row they add takes the keyboard.
    property bool focusNewEvent: false

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
    // Which of the two the schedule works out: the payment from the term,
    // or the term from a payment.
    RowLayout {
        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin

        Label {
            Layout.fillWidth: true
            text: qsTr("Work out")
            font.pixelSize: 15
        }
        Button {
            objectName: "solvePaymentButton"
            text: qsTr("Payment")
            checkable: true
            checked: !loan.solvingTerm
            Accessible.name: qsTr("Work out the payment from the term")
            onClicked: loan.solve("payment")
        }
        Button {
            objectName: "solveTermButton"
            text: qsTr("Term")
            checkable: true
            checked: loan.solvingTerm
            Accessible.name: qsTr("Work out the term from the payment")
            onClicked: loan.solve("term")
        }
    }
    NumericField {
        visible: !loan.solvingTerm
        controller: screen.controller
        outlet: "yearsField"
        signable: false
    }
    NumericField {
        visible: loan.solvingTerm
        controller: screen.controller
        outlet: "paymentField"
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
            placeholderText: "YYYY-MM-DD"
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
        text: qsTr("Changes on the way")
    }
    NumericField {
        controller: screen.controller
        outlet: "interestOnlyField"
        signable: false
    }
    NumericField {
        controller: screen.controller
        outlet: "balloonAtField"
        signable: false
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "afterExtraButton"
    }
    // One row an event: the payment number or date it falls on, its kind,
    // and the amount or the new rate. A text that cannot be read is marked
    // and the results say which event it is.
    Repeater {
        id: eventRows

        model: loan.events
        // A row just added takes the keyboard, so its payment can be typed
        // at once.
        onItemAdded: (index, item) => {
            if (screen.focusNewEvent)
                item.focusFirstCell();
            screen.focusNewEvent = false;
        }

        // On a narrow window the kind takes a line of its own under the
        // payment and the amount.
        delegate: GridLayout {
            id: eventRow

            required property int index
            required property string at
            required property string kind
            required property string value
            required property string atProblem
            required property string valueProblem

            readonly property bool narrow: width < 400

            function focusFirstCell() {
                atCell.field.forceActiveFocus();
            }

            Layout.fillWidth: true
            Layout.leftMargin: AppTheme.margin
            Layout.rightMargin: AppTheme.margin
            columnSpacing: 6
            rowSpacing: 4

            CellField {
                id: atCell

                fieldName: "eventAtField" + eventRow.index
                label: qsTr("Payment number or date of event %1").arg(eventRow.index + 1)
                Layout.row: 0
                Layout.column: 0
                Layout.preferredWidth: 110
                Layout.fillWidth: eventRow.narrow
                countsAsZero: false
                fontSize: 15
                text: eventRow.at
                problem: eventRow.atProblem
                placeholderText: qsTr("13 or date")
                onEdited: text => loan.eventAtEdited(eventRow.index, text)
            }
            ComboBox {
                objectName: "eventKindBox" + eventRow.index
                Layout.row: eventRow.narrow ? 1 : 0
                Layout.column: eventRow.narrow ? 0 : 1
                Layout.columnSpan: eventRow.narrow ? 3 : 1
                Layout.alignment: Qt.AlignTop
                Layout.preferredWidth: 140
                Layout.fillWidth: true
                model: loan.eventKinds()
                currentIndex: Math.max(0, model.indexOf(eventRow.kind))
                Accessible.name: qsTr("Kind of event %1").arg(eventRow.index + 1)
                onActivated: i => loan.eventKindChosen(eventRow.index, textAt(i))
            }
            CellField {
                fieldName: "eventValueField" + eventRow.index
                label: eventRow.kind === "Rate change" ? qsTr("New annual rate (%) of event %1").arg(eventRow.index + 1) : qsTr("Amount of event %1").arg(eventRow.index + 1)
                Layout.row: 0
                Layout.column: eventRow.narrow ? 1 : 2
                Layout.preferredWidth: 100
                countsAsZero: false
                fontSize: 15
                text: eventRow.value
                problem: eventRow.valueProblem
                placeholderText: eventRow.kind === "Rate change" ? qsTr("rate %") : qsTr("amount")
                onEdited: text => loan.eventValueEdited(eventRow.index, text)
            }
            ToolButton {
                objectName: "removeEventButton" + eventRow.index
                Layout.row: 0
                Layout.column: eventRow.narrow ? 2 : 3
                Layout.alignment: Qt.AlignTop
                text: "\u2715"
                Accessible.name: qsTr("Remove event %1").arg(eventRow.index + 1)
                onClicked: loan.removeEvent(eventRow.index)
            }
        }
    }
    Flow {
        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin
        spacing: 8

        Button {
            objectName: "addExtraPaymentButton"
            text: qsTr("+ Extra payment")
            onClicked: {
                screen.focusNewEvent = true;
                loan.addEvent("Extra payment");
            }
        }
        Button {
            objectName: "addRateChangeButton"
            text: qsTr("+ Rate change")
            onClicked: {
                screen.focusNewEvent = true;
                loan.addEvent("Rate change");
            }
        }
    }
    NumericField {
        controller: screen.controller
        outlet: "feesField"
        signable: false
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
    ResultRow {
        controller: screen.controller
        outlet: "interestSavedLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "aprLabel"
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
        text: qsTr("Schedule")
    }
    // The column headers, right above the rows (the list and its headers fit
    // in the window together).
    ScheduleLine {
        objectName: "scheduleHeader"
        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin
        header: true
        dated: screen.dated
        cells: ({
                number: qsTr("No."),
                date: qsTr("Date"),
                payment: qsTr("Payment"),
                interest: qsTr("Interest"),
                principal: qsTr("Principal"),
                extra: qsTr("Extra"),
                balance: qsTr("Balance")
            })
    }
    // As tall as its rows, up to what the window shows under its title and
    // with the button below; only the rows in
    // sight are made, so a loan of a million payments scrolls as easily.
    ListView {
        id: rows

        objectName: "scheduleList"
        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin
        Layout.preferredHeight: Math.min(contentHeight, Math.max(200, screen.height - 240))
        clip: true
        model: loan.scheduleRowCount
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {}
        delegate: ScheduleLine {
            required property int index

            width: ListView.view.width
            dated: screen.dated
            cells: loan.scheduleRow(index)
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
