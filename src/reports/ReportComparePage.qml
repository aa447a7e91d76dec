pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Two or three saved reports of one calculator side by side: a row an
// input or result, a column a report, then each result's difference from
// the first report. A row whose values differ is tinted and marked "≠".
// Export saves the table as CSV or PDF.
Page {
    id: page

    // This page takes the whole window: the tab bar hides while it is shown.
    readonly property bool hidesTabs: true
    // The rows of the saved list to compare (newest first).
    property var reportRows: []
    readonly property alias controller: comparison
    readonly property int reportCount: comparison.reportTitles.length
    // The label column, then a column a report and a difference column a
    // report after the first, sharing the width (scrolling sideways when
    // the window is too narrow for them).
    readonly property real labelWidth: Math.max(120, Math.min(220, width * 0.3))
    readonly property real cellWidth: Math.max(90, (width - 2 * AppTheme.margin - labelWidth) / Math.max(1, 2 * reportCount - 1))

    title: qsTr("Compare")
    Accessible.name: title

    Component.onCompleted: comparison.compare(page.reportRows)

    ReportComparisonController {
        id: comparison
    }

    header: TitleBar {
        title: comparison.title === "" ? page.title : qsTr("Compare: %1").arg(comparison.title)
        backText: qsTr("Reports")
        onBackClicked: page.StackView.view.pop()

        TitleBarButton {
            objectName: "compareExportButton"
            text: qsTr("Export")
            enabled: comparison.problem === ""
            Accessible.name: qsTr("Export the comparison")
            onClicked: comparison.exportClicked()
        }
    }

    Label {
        objectName: "compareProblem"
        anchors.fill: parent
        anchors.margins: AppTheme.margin
        visible: comparison.problem !== ""
        text: comparison.problem
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: AppTheme.secondaryText
    }

    ScrollView {
        id: scroll

        anchors.fill: parent
        visible: comparison.problem === ""
        contentWidth: Math.max(availableWidth, table.implicitWidth + 2 * AppTheme.margin)

        ColumnLayout {
            id: table

            x: AppTheme.margin
            width: scroll.contentWidth - 2 * AppTheme.margin
            spacing: 0

            // The reports' titles, and a column for each difference.
            RowLayout {
                objectName: "compareHeader"
                spacing: 0

                Item {
                    Layout.preferredWidth: page.labelWidth
                }
                Repeater {
                    model: comparison.reportTitles

                    Label {
                        required property string modelData

                        Layout.preferredWidth: page.cellWidth
                        text: modelData
                        font.bold: true
                        horizontalAlignment: Text.AlignRight
                        elide: Text.ElideRight
                        padding: 6
                    }
                }
                Repeater {
                    model: comparison.differenceTitles

                    Label {
                        required property string modelData

                        Layout.preferredWidth: page.cellWidth
                        text: modelData
                        font.bold: true
                        color: AppTheme.secondaryText
                        horizontalAlignment: Text.AlignRight
                        elide: Text.ElideRight
                        padding: 6
                    }
                }
            }
            Repeater {
                model: comparison.rows

                ColumnLayout {
                    id: line

                    required property var modelData
                    required property int index
                    // The first result comes under a heading of its own.
                    readonly property bool firstResult: modelData.result && index > 0 && !comparison.rows[index - 1].result

                    Layout.fillWidth: true
                    spacing: 0

                    SectionHeader {
                        visible: line.firstResult
                        Layout.leftMargin: 6
                        Layout.bottomMargin: 4
                        text: qsTr("Results")
                    }
                    Rectangle {
                        objectName: "compareRow" + line.index
                        Layout.fillWidth: true
                        implicitHeight: cells.implicitHeight
                        color: line.modelData.differs ? AppTheme.button : "transparent"
                        Accessible.name: line.modelData.label + (line.modelData.differs ? qsTr(", differs") : "")

                        RowLayout {
                            id: cells

                            width: parent.width
                            spacing: 0

                            Label {
                                Layout.preferredWidth: page.labelWidth
                                text: (line.modelData.differs ? "≠ " : "") + line.modelData.label
                                font.bold: line.modelData.result
                                wrapMode: Text.Wrap
                                padding: 6
                            }
                            Repeater {
                                model: line.modelData.values

                                Label {
                                    required property string modelData

                                    Layout.preferredWidth: page.cellWidth
                                    text: modelData
                                    horizontalAlignment: Text.AlignRight
                                    wrapMode: Text.Wrap
                                    padding: 6
                                }
                            }
                            Repeater {
                                model: line.modelData.result ? line.modelData.differences : comparison.differenceTitles

                                Label {
                                    required property string modelData

                                    Layout.preferredWidth: page.cellWidth
                                    text: line.modelData.result ? modelData : ""
                                    color: AppTheme.accent
                                    horizontalAlignment: Text.AlignRight
                                    wrapMode: Text.Wrap
                                    padding: 6
                                }
                            }
                        }
                    }
                }
            }
            Repeater {
                model: comparison.notes

                Label {
                    required property string modelData

                    Layout.fillWidth: true
                    Layout.topMargin: 8
                    text: modelData
                    wrapMode: Text.Wrap
                    color: AppTheme.secondaryText
                }
            }
        }
    }
}
