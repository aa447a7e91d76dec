pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Statistics and regression: the number of rows, the model and the values
// to predict from; the rows themselves, an x and an optional y each,
// numbered from 1, which can be pasted from the clipboard (Paste, or
// Ctrl+Shift+V); then the results, a scatter chart of the rows with the
// fitted curve, and the CSV of the rows used.
// The rows scroll in a list of their own, which makes only the rows in
// sight, so even 10,000 of them stay quick. A cell that cannot be read is
// marked with its line; the results then stay blank and say which row.
FunctionScreen {
    id: screen

    controller: StatisticsController {
        id: stats
    }

    Shortcut {
        sequence: "Ctrl+Shift+V"
        onActivated: stats.pasteRows()
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
    ChoiceRow {
        controller: screen.controller
        outlet: "modelButton"
    }
    NumericField {
        controller: screen.controller
        outlet: "predictXField"
        countsAsZero: false
        // Empty is no prediction, not a prediction at 0.
        placeholder: qsTr("none")
    }
    NumericField {
        controller: screen.controller
        outlet: "predictYField"
        countsAsZero: false
        // Empty is no prediction, not a prediction at 0.
        placeholder: qsTr("none")
    }
    SectionHeader {
        text: qsTr("Rows: x, y")
    }
    // Paste replaces the rows with those on the clipboard; the line beside
    // it says what the last paste took and skipped.
    RowLayout {
        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin
        spacing: 12

        Button {
            objectName: "pasteButton"
            text: qsTr("Paste")
            Accessible.name: text
            Accessible.description: qsTr("Replaces the rows with one or two columns of numbers from the clipboard (Ctrl+Shift+V)")
            onClicked: stats.pasteRows()
        }
        Label {
            objectName: "pasteMessage"
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            text: stats.pasteMessage.length > 0 ? stats.pasteMessage : qsTr("One or two columns from a spreadsheet or a CSV file")
            color: AppTheme.secondaryText
            font.pixelSize: 13
            wrapMode: Text.Wrap
        }
    }
    ListView {
        id: rowList

        objectName: "rowList"
        Layout.fillWidth: true
        Layout.leftMargin: AppTheme.margin
        Layout.rightMargin: AppTheme.margin
        Layout.topMargin: 8
        Layout.bottomMargin: AppTheme.margin
        // As tall as its rows, up to about eight in sight (a marked row
        // takes a line more); the others scroll. The height starts from the
        // count, so that the first rows are made at all.
        Layout.preferredHeight: Math.min(Math.max(contentHeight, Math.min(count, 8) * 46), 8 * 46)
        clip: true
        spacing: 6
        model: stats.rows
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {
            objectName: "rowScrollBar"
        }

        delegate: RowLayout {
            id: dataRow

            required property int index
            required property string xCell
            required property string yCell
            required property string xProblem
            required property string yProblem

            width: ListView.view.width - 12
            spacing: 6

            Label {
                Layout.preferredWidth: 44
                Layout.alignment: Qt.AlignTop
                Layout.topMargin: 10
                text: (dataRow.index + 1).toString()
                color: AppTheme.secondaryText
                font.pixelSize: 15
            }
            CellField {
                fieldName: "xField" + dataRow.index
                label: qsTr("x of row %1").arg(dataRow.index + 1)
                Layout.fillWidth: true
                countsAsZero: false
                fontSize: 16
                text: dataRow.xCell
                problem: dataRow.xProblem
                placeholderText: "x"
                onEdited: text => stats.xChanged(dataRow.index, text)
            }
            CellField {
                fieldName: "yField" + dataRow.index
                label: qsTr("y of row %1").arg(dataRow.index + 1)
                Layout.fillWidth: true
                countsAsZero: false
                fontSize: 16
                text: dataRow.yCell
                problem: dataRow.yProblem
                placeholderText: "y"
                onEdited: text => stats.yChanged(dataRow.index, text)
            }
        }
    }
    SectionHeader {
        text: qsTr("One variable")
    }
    ResultRow {
        controller: screen.controller
        outlet: "nLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "meanXLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "sampleSdXLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "populationSdXLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "meanYLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "sampleSdYLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "populationSdYLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "sumXLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "sumX2Label"
    }
    ResultRow {
        controller: screen.controller
        outlet: "sumYLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "sumY2Label"
    }
    ResultRow {
        controller: screen.controller
        outlet: "sumXYLabel"
    }
    SectionHeader {
        text: qsTr("Regression")
    }
    ResultRow {
        controller: screen.controller
        outlet: "aLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "bLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "rLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "r2Label"
    }
    ResultRow {
        controller: screen.controller
        outlet: "predictedYLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "predictedXLabel"
    }
    // The rows as points and the fitted curve over their x.
    Item {
        Layout.fillWidth: true
        Layout.preferredHeight: stats.chartShown ? 280 : 0
        visible: stats.chartShown
        Accessible.name: qsTr("Chart of y against x with the fitted curve")

        ScatterChart {
            objectName: "scatterChart"
            anchors.fill: parent
            anchors.margins: 8
            source: stats
            revision: stats.chartRevision
            pointColor: AppTheme.accent
            curveColor: AppTheme.keyOperator
            gridLineColor: AppTheme.chartGrid
            textColor: AppTheme.text
            textFontSize: 12
        }
    }
    Button {
        objectName: "saveCsvButton"
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: 8
        Layout.bottomMargin: AppTheme.margin
        visible: stats.rowCount > 0
        text: qsTr("Save as CSV")
        onClicked: stats.saveScheduleCsv()
    }
}
