pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Net present value and internal rate of return: the period and the rate,
// the finance and reinvestment rates of the modified IRR, the results, the cash-flow table (one row per period; Return walks
// down its rows) and, after the table, the chart of NPV against the rate,
// which so never moves the rows while they are being typed into.
FunctionScreen {
    id: screen

    controller: NpvController {
        id: npv
    }

    // One row of the cash-flow table: its label and its field. An edit goes
    // to the table; "±" flips the sign and counts with the next edit. A text
    // that is no number is marked and counts as 0.
    component NpvCellView: RowLayout {
        id: cell

        required property NpvTableController table
        required property int row
        readonly property TextField field: cashCell.field

        // Return in the field: the next row's field should take over.
        signal returnPressed
        // "±" flipped the field's sign, which counts only with an edit.
        signal signChanged
        // The field's text went to the table.
        signal edited

        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin
        spacing: 6

        Label {
            id: leftLabel

            objectName: "leftLabel" + cell.row
            Layout.preferredWidth: 110
            Layout.alignment: Qt.AlignTop
            Layout.topMargin: 10
            text: cell.table.leftLabelTexts[cell.row] ?? ""
            font.pixelSize: 15
        }
        CellField {
            id: cashCell

            fieldName: "cashField" + cell.row
            label: leftLabel.text
            Layout.fillWidth: true
            text: cell.table.fieldTexts[cell.row] ?? ""
            placeholderText: "0"
            onEdited: text => {
                cell.table.fieldChanged(cell.row, text);
                cell.edited();
            }
            onAccepted: cell.returnPressed()
        }
        SignButton {
            objectName: "cashField" + cell.row + "Sign"
            Layout.alignment: Qt.AlignTop
            field: cell.field
            fieldLabel: leftLabel.text
            onSignFlipped: text => {
                cell.field.text = text;
                cell.signChanged();
            }
        }
    }

    SectionHeader {
        text: qsTr("Values")
    }
    // Each edit of the period reaches the table through fieldChanged().
    NumericField {
        controller: screen.controller
        outlet: "periodField"
        placeholder: "4"
    }
    NumericField {
        controller: screen.controller
        outlet: "discountRateField"
    }
    // Blank, each follows the discount rate.
    NumericField {
        controller: screen.controller
        outlet: "financeRateField"
        placeholder: qsTr("as the discount rate")
    }
    NumericField {
        controller: screen.controller
        outlet: "reinvestRateField"
        placeholder: qsTr("as the discount rate")
    }
    SectionHeader {
        text: qsTr("Results")
    }
    ResultRow {
        controller: screen.controller
        outlet: "npvResultLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "irrResultLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "mirrResultLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "profitabilityIndexResultLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "paybackResultLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "discountedPaybackResultLabel"
    }
    SectionHeader {
        text: qsTr("Cash flows")
    }
    Repeater {
        id: cashRows

        model: npv.table.rowCount

        delegate: NpvCellView {
            required property int index

            table: npv.table
            row: index
            onSignChanged: npv.cellSignFlipped("cashField" + index)
            onEdited: npv.cellEdited("cashField" + index)
            onReturnPressed: {
                // After "±" Return applies the flipped text first.
                if (npv.view.stale) {
                    npv.table.fieldChanged(index, field.text);
                    npv.cellEdited("cashField" + index);
                }
                const next = cashRows.itemAt(index + 1);
                if (next)
                    next.nextItemInFocusChain(true).forceActiveFocus();
                else
                    field.focus = false;
            }
        }
    }
    // NPV at discount rates from 0 % to twice the larger of the rate and 10 %.
    Item {
        Layout.fillWidth: true
        Layout.preferredHeight: npv.chartShown ? 240 : 0
        visible: npv.chartShown
        Accessible.name: qsTr("Chart of the net present value against the discount rate")

        MultiLineGraphView {
            id: chart

            objectName: "npvChart"
            anchors.fill: parent
            anchors.margins: 8
            dataSource: npv.chartDataSource
            delegate: npv.chartDataSource
            animated: false
            showLegend: true
            legendViewType: 1
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
                target: npv
                function onChartChanged() {
                    if (!npv.chartShown)
                        chart.clearGraph();
                    else if (chart.lineCount === 0)
                        chart.drawGraph();
                    else
                        chart.reloadGraph();
                }
            }
        }
    }
}
