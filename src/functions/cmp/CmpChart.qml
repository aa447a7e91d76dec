import QtQuick
import QtQuick.Layouts
import Tallyvane

// The balance at the start and at the end of every year, redrawn with each
// new result. Ctrl+wheel or a pinch zooms, dragging scrolls when zoomed;
// touch a point for its value.
Item {
    id: chartArea

    required property CmpController controller

    function refresh() {
        if (!controller.chartShown)
            chart.clearGraph();
        else if (chart.lineCount > 0)
            chart.reloadGraph();
        else
            chart.drawGraph();
    }

    Layout.fillWidth: true
    Layout.preferredHeight: controller.chartShown ? 320 : 0
    visible: controller.chartShown
    Accessible.name: qsTr("Balance by year")
    Component.onCompleted: refresh()

    MultiLineGraphView {
        id: chart

        objectName: "cmpChart"
        anchors.fill: parent
        anchors.margins: 8
        dataSource: chartArea.controller.chartDataSource
        delegate: chartArea.controller.chartDataSource
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
            target: chartArea.controller
            function onChartChanged() {
                chartArea.refresh();
            }
        }
    }
}
