pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Nonconstant growth: the current dividend and the number of periods, the
// price, and below it the rate table, one row per period with its required
// return and dividend growth. The last row is the long-run pair.
FunctionScreen {
    id: screen

    controller: NoncGrowthController {
        id: growth
    }

    // One row of the rate table: the period's number and its two fields.
    // Each edit goes to the table; a text that is no number is marked and
    // counts as 0.
    component RateCellView: RowLayout {
        id: cell

        required property GrowthTableController table
        required property int row

        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin
        spacing: 6

        Label {
            id: yearLabel

            objectName: "yearLabel" + cell.row
            Layout.preferredWidth: 28
            text: cell.table.yearLabelTexts[cell.row] ?? ""
            Layout.alignment: Qt.AlignTop
            Layout.topMargin: 10
            font.pixelSize: 15
        }
        CellField {
            id: returnRateField

            fieldName: "returnRateField" + cell.row
            label: qsTr("Period %1 required return").arg(yearLabel.text)
            Layout.fillWidth: true
            text: cell.table.returnRateTexts[cell.row] ?? ""
            placeholderText: "0"
            onEdited: text => cell.table.returnRateChanged(cell.row, text)
            onAccepted: returnRateField.field.nextItemInFocusChain().forceActiveFocus()
        }
        CellField {
            id: growthRateField

            fieldName: "growthRateField" + cell.row
            label: qsTr("Period %1 growth rate").arg(yearLabel.text)
            Layout.fillWidth: true
            text: cell.table.growthRateTexts[cell.row] ?? ""
            placeholderText: "0"
            onEdited: text => cell.table.growthRateChanged(cell.row, text)
            onAccepted: growthRateField.field.nextItemInFocusChain().forceActiveFocus()
        }
    }

    SectionHeader {
        text: qsTr("Dividend")
    }
    // Each edit reaches the controller through fieldChanged(), which tells
    // a period edit from a dividend edit.
    NumericField {
        controller: screen.controller
        outlet: "dividendField"
    }
    // The form's own return field; the price takes its rates from the
    // table, so this one only notes a rate for the user.
    NumericField {
        controller: screen.controller
        outlet: "returnRateField"
        label: qsTr("Required return (%), a note: the price uses the table's rates")
    }
    NumericField {
        controller: screen.controller
        outlet: "periodField"
        placeholder: "4"
    }
    SectionHeader {
        text: qsTr("Result")
    }
    ResultRow {
        controller: screen.controller
        outlet: "priceResultLabel"
    }
    SectionHeader {
        text: qsTr("Period: required return, growth (%)")
    }
    Repeater {
        model: growth.table.rowCount

        delegate: RateCellView {
            required property int index

            table: growth.table
            row: index
        }
    }
}
