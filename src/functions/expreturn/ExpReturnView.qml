pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Expected return: the number of states, the four results, and below them
// the state table, one row per state with its probability and the returns
// of stocks A and B.
FunctionScreen {
    id: screen

    controller: ExpReturnController {
        id: expReturn
    }

    // One row of the state table: its number and its three fields. Each
    // edit goes to the table; a text that is no number is marked and counts
    // as 0.
    component ExpCellView: RowLayout {
        id: cell

        required property ExpReturnTableController table
        required property int row

        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin
        spacing: 6

        Label {
            id: stateLabel

            objectName: "stateLabel" + cell.row
            Layout.preferredWidth: 28
            text: cell.table.stateLabelTexts[cell.row] ?? ""
            Layout.alignment: Qt.AlignTop
            Layout.topMargin: 10
            font.pixelSize: 15
        }
        CellField {
            id: probabilityField

            fieldName: "probabilityField" + cell.row
            label: qsTr("State %1 probability").arg(stateLabel.text)
            Layout.fillWidth: true
            text: cell.table.probabilityTexts[cell.row] ?? ""
            placeholderText: "0"
            onEdited: text => cell.table.probabilityChanged(cell.row, text)
            onAccepted: probabilityField.field.nextItemInFocusChain().forceActiveFocus()
        }
        CellField {
            id: stockAField

            fieldName: "stockAField" + cell.row
            label: qsTr("State %1 stock A return").arg(stateLabel.text)
            Layout.fillWidth: true
            text: cell.table.stockATexts[cell.row] ?? ""
            placeholderText: "0"
            onEdited: text => cell.table.stockAChanged(cell.row, text)
            onAccepted: stockAField.field.nextItemInFocusChain().forceActiveFocus()
        }
        CellField {
            id: stockBField

            fieldName: "stockBField" + cell.row
            label: qsTr("State %1 stock B return").arg(stateLabel.text)
            Layout.fillWidth: true
            text: cell.table.stockBTexts[cell.row] ?? ""
            placeholderText: "0"
            onEdited: text => cell.table.stockBChanged(cell.row, text)
            onAccepted: stockBField.field.nextItemInFocusChain().forceActiveFocus()
        }
    }

    SectionHeader {
        text: qsTr("States")
    }
    // Each edit of the period reaches the table through fieldChanged().
    NumericField {
        controller: screen.controller
        outlet: "periodField"
        placeholder: "4"
    }
    SectionHeader {
        text: qsTr("Results")
    }
    ResultRow {
        controller: screen.controller
        outlet: "expReturnAResultLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "standardDeviationAResultLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "expReturnBResultLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "standardDeviationBResultLabel"
    }
    SectionHeader {
        text: qsTr("State: probability, stock A, stock B (%)")
    }
    Repeater {
        model: expReturn.table.rowCount

        delegate: ExpCellView {
            required property int index

            table: expReturn.table
            row: index
        }
    }
}
