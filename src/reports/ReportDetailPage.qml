import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// One saved report's text, with "Export" to e-mail it again; a report that
// kept its calculator's inputs opens again in that calculator, or is
// duplicated for a what-if.
Page {
    id: page

    // This page takes the whole window: the tab bar hides while it is shown.
    readonly property bool hidesTabs: true

    property alias reportFilePath: controller.reportFilePath
    readonly property alias controller: controller

    title: qsTr("Report")

    ReportDetailController {
        id: controller
    }

    header: TitleBar {
        title: page.title
        backText: qsTr("Reports")
        onBackClicked: page.StackView.view.pop()

        TitleBarButton {
            objectName: "exportButton"
            text: qsTr("Export")
            Accessible.name: qsTr("Export report")
            onClicked: controller.actionClicked()
        }
    }

    footer: ToolBar {
        visible: controller.calculatorScreen !== ""
        background: Rectangle {
            color: AppTheme.button
        }

        Flow {
            anchors.fill: parent
            anchors.margins: 6
            spacing: 8

            Button {
                objectName: "openInCalculatorButton"
                text: qsTr("Open in Calculator")
                onClicked: controller.openInCalculator()
            }
            Button {
                objectName: "duplicateButton"
                text: qsTr("Duplicate")
                onClicked: controller.duplicate()
            }
        }
    }

    ScrollView {
        anchors.fill: parent
        contentWidth: availableWidth

        TextArea {
            objectName: "reportText"
            readOnly: true
            selectByMouse: true
            wrapMode: TextEdit.Wrap
            text: controller.text
            // A file that is there but was not read says why.
            placeholderText: controller.problem
            font.family: "monospace"
            font.pixelSize: 14
            leftPadding: AppTheme.margin
            rightPadding: AppTheme.margin
            topPadding: AppTheme.margin
            background: null
            Accessible.name: qsTr("Report text")
        }
    }
}
