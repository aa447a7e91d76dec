pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tallyvane

// A calculator screen laid out from its description alone: its fields (a
// number field, a date field, a number field with its solve button, or a
// choice button) and then its results, each under the heading its
// description gives it, and, when its controller draws one, the chart.
// Calculators whose screens need more (tables, schedules) have QML files of
// their own instead.
FunctionScreen {
    id: screen

    // The calculator's name in the registry ("roi").
    required property string calculator
    // The controller, when it draws a chart under the results.
    readonly property QVChartController charts: controller as QVChartController

    controller: Calculators.create(calculator)

    // The rows are made once the screen is: rows loaded while the screen
    // itself is still being made do not grow in the form's layout when a
    // mark or a note shows under a field.
    Component.onCompleted: rows.model = Calculators.form(screen.calculator)

    Repeater {
        id: rows

        delegate: ColumnLayout {
            id: row

            required property var modelData

            Layout.fillWidth: true
            // A heading sits as far above its row as rows sit apart in the
            // form's column (FunctionScreen), as on the screens laid out by
            // hand.
            spacing: 10

            SectionHeader {
                visible: row.modelData.section !== ""
                text: row.modelData.section
            }
            // The row's control: one of three, each made by a Repeater of
            // its own (none or one). Made declaratively, as the form is made,
            // so the row's height follows the control's (a field's "Not a
            // number" line pushes the rows below it down); a Loader filled
            // from script inside a Repeater's delegate is left out of the
            // row's size in Qt 6.4, and takes no bound component.
            Repeater {
                model: row.modelData.type === "result" ? 1 : 0

                delegate: ResultRow {
                    controller: screen.controller
                    outlet: row.modelData.outlet
                    label: row.modelData.label
                }
            }
            Repeater {
                model: row.modelData.type === "choice" ? 1 : 0

                delegate: ChoiceRow {
                    controller: screen.controller
                    outlet: row.modelData.outlet
                    label: row.modelData.label
                }
            }
            Repeater {
                model: row.modelData.type === "field" ? 1 : 0

                delegate: NumericField {
                    controller: screen.controller
                    outlet: row.modelData.outlet
                    label: row.modelData.label
                    signable: row.modelData.signable
                    placeholder: row.modelData.placeholder
                    countsAsZero: row.modelData.countsAsZero
                }
            }
            Repeater {
                model: row.modelData.type === "date" ? 1 : 0

                delegate: NumericField {
                    controller: screen.controller
                    outlet: row.modelData.outlet
                    label: row.modelData.label
                    dates: true
                    signable: false
                    placeholder: "YYYY-MM-DD"
                    countsAsZero: false
                }
            }
            Repeater {
                model: row.modelData.type === "solve" ? 1 : 0

                delegate: SolveField {
                    controller: screen.controller
                    name: row.modelData.name
                    label: row.modelData.label
                    countsAsZero: row.modelData.countsAsZero
                    signable: row.modelData.signable
                }
            }
        }
    }
    // The chart under the results, drawn anew from each solve; made only
    // for a controller that draws one.
    Repeater {
        model: screen.charts !== null ? 1 : 0

        delegate: Item {
            Layout.fillWidth: true
            Layout.preferredHeight: visible ? 240 : 0
            visible: screen.charts.chartShown
            Accessible.name: screen.charts.chartTitle

            MultiLineGraphView {
                id: chart

                objectName: "chart"
                anchors.fill: parent
                anchors.margins: 8
                dataSource: screen.charts.chartDataSource
                delegate: screen.charts.chartDataSource
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
                    target: screen.charts

                    function onChartChanged() {
                        if (!screen.charts.chartShown)
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
}
