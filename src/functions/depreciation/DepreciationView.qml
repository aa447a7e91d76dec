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

    readonly property string methodOutlet: "methodButton"

    controller: DepreciationController {
        id: depreciation
    }

    SectionHeader {
        text: qsTr("Asset")
    }
    NumericField {
        controller: screen.controller
        outlet: "costField"
    }
    NumericField {
        controller: screen.controller
        outlet: "salvageField"
    }
    NumericField {
        controller: screen.controller
        outlet: "lifeField"
        signable: false
    }
    NumericField {
        controller: screen.controller
        outlet: "firstYearMonthsField"
        signable: false
    }
    ChoiceRow {
        controller: screen.controller
        outlet: screen.methodOutlet
    }
    // The factor counts for the declining balance only.
    NumericField {
        controller: screen.controller
        outlet: "factorField"
        signable: false
        visible: (screen.controller.view.texts[screen.methodOutlet] ?? "") === "DDB"
    }
    SectionHeader {
        text: qsTr("Results")
    }
    ResultRow {
        controller: screen.controller
        outlet: "firstYearDepreciationLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "totalDepreciationLabel"
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
