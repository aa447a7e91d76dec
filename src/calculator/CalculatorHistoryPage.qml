pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// The keypad's logged results, oldest first. "Clear" empties this screen
// only; the calculator keeps its history until RESET.
Page {
    id: page

    // This page takes the whole window: the tab bar hides while it is shown.
    readonly property bool hidesTabs: true

    property alias calculator: history.calculator
    readonly property alias history: history

    title: qsTr("Calculator History")

    CalculatorHistoryModel {
        id: history
    }

    header: TitleBar {
        title: page.title
        backText: qsTr("Back")
        onBackClicked: page.StackView.view.pop()

        TitleBarButton {
            objectName: "clearButton"
            text: qsTr("Clear")
            font.bold: true
            onClicked: history.clearClicked()
        }
    }

    // The system clipboard, through an invisible text field.
    TextInput {
        id: clipboard

        function copyText(text) {
            clipboard.text = text;
            clipboard.selectAll();
            clipboard.copy();
            clipboard.text = "";
        }

        visible: false
        enabled: false
    }

    ListView {
        id: list

        objectName: "historyList"
        // Tab reaches the list; the arrow keys walk its rows.
        activeFocusOnTab: true
        keyNavigationEnabled: true
        anchors.fill: parent
        clip: true
        model: history
        ScrollBar.vertical: ScrollBar {}

        delegate: ItemDelegate {
            id: row

            required property int index
            required property string result
            required property string detail
            required property string label

            width: ListView.view.width
            height: 90
            Accessible.name: label + " " + result + ", " + detail

            contentItem: RowLayout {
                spacing: 12

                ColumnLayout {
                    Layout.fillWidth: true
                    spacing: 4

                    Label {
                        Layout.fillWidth: true
                        text: row.result
                        font.pixelSize: 24
                        font.bold: true
                        elide: Text.ElideLeft
                    }
                    Label {
                        Layout.fillWidth: true
                        text: row.detail
                        font.family: "monospace"
                        color: AppTheme.secondaryText
                        elide: Text.ElideRight
                    }
                }
                Label {
                    text: row.label
                    color: AppTheme.accent
                    font.pixelSize: 16
                    font.bold: true
                }
                Button {
                    objectName: "copyButton" + row.index
                    text: qsTr("Copy")
                    flat: true
                    Accessible.name: qsTr("Copy %1").arg(row.result)
                    onClicked: clipboard.copyText(history.resultAt(row.index))
                }
                Button {
                    objectName: "useButton" + row.index
                    text: qsTr("Use")
                    flat: true
                    Accessible.name: qsTr("Use %1").arg(row.result)
                    onClicked: {
                        history.useResult(row.index);
                        page.StackView.view.pop();
                    }
                }
            }

            Rectangle {
                anchors.bottom: parent.bottom
                width: parent.width
                height: 1
                color: AppTheme.separator
            }
        }

        Label {
            anchors.centerIn: parent
            visible: list.count === 0
            text: qsTr("No results yet.")
            opacity: 0.6
        }
    }
}
