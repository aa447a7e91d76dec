pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Depreciation: cost, salvage value, life, the first year's months, the
// method and the declining-balance factor; the first year's and the total
// depreciation, and the year-by-year schedule, which can be saved as CSV.
FunctionScreen {
    id: screen

    controller: DepreciationController {
        id: depreciation
    }

    SectionHeader {
        text: qsTr("Asset")
    }
    NumericField {
        controller: screen.controller
        outlet: "costField"
        label: qsTr("Cost")
    }
    NumericField {
        controller: screen.controller
        outlet: "salvageField"
        label: qsTr("Salvage value at the end of its life")
    }
    NumericField {
        controller: screen.controller
        outlet: "lifeField"
        label: qsTr("Life (whole years)")
        signable: false
    }
    NumericField {
        controller: screen.controller
        outlet: "firstYearMonthsField"
        label: qsTr("Months in the first year (1 to 12)")
        signable: false
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "methodButton"
        label: qsTr("Method (SL, SYD, DDB, DB)")
    }
    NumericField {
        controller: screen.controller
        outlet: "factorField"
        label: qsTr("Declining-balance factor for DDB (%; 200 is double)")
        signable: false
    }
    SectionHeader {
        text: qsTr("Results")
    }
    ResultRow {
        controller: screen.controller
        outlet: "firstYearDepreciationLabel"
        label: qsTr("First year")
    }
    ResultRow {
        controller: screen.controller
        outlet: "totalDepreciationLabel"
        label: qsTr("Total")
    }
    SectionHeader {
        text: qsTr("Year: depreciation, accumulated, book value")
    }
    Repeater {
        model: depreciation.scheduleRows

        delegate: RowLayout {
            id: yearRow

            required property var modelData

            Layout.fillWidth: true
            Layout.leftMargin: AppTheme.margin
            Layout.rightMargin: AppTheme.margin

            Label {
                Layout.preferredWidth: 36
                text: yearRow.modelData.year
                color: AppTheme.secondaryText
            }
            Label {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: yearRow.modelData.depreciation
                horizontalAlignment: Text.AlignRight
            }
            Label {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: yearRow.modelData.accumulated
                horizontalAlignment: Text.AlignRight
            }
            Label {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: yearRow.modelData.bookValue
                horizontalAlignment: Text.AlignRight
                font.bold: true
            }
        }
    }
    Button {
        objectName: "saveCsvButton"
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: 8
        visible: depreciation.scheduleRows.length > 0
        text: qsTr("Save as CSV")
        onClicked: depreciation.saveScheduleCsv()
    }
}
