import QtQuick
import QtQuick.Layouts
import Tallyvane

// The chart of the last solved quantity, period by period. Ctrl+wheel or a
// pinch zooms, dragging scrolls when zoomed; touch a point for its value.
Item {
    id: chartArea

    required property TvmController controller

    Layout.fillWidth: true
    Layout.preferredHeight: controller.chartShown ? 320 : 0
    visible: controller.chartShown
    Accessible.name: qsTr("Chart of %1").arg(chart.markerText)

    MultiLineGraphView {
        id: chart

        objectName: "tvmChart"
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
        onWidthChanged: chartArea.controller.setChartSize(Qt.size(width, height))
        onHeightChanged: chartArea.controller.setChartSize(Qt.size(width, height))

        Connections {
            target: chartArea.controller
            function onChartChanged() {
                if (chartArea.controller.chartShown)
                    chart.drawGraph();
                else
                    chart.clearGraph();
            }
        }
    }
}
