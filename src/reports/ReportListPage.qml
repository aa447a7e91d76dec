pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// The saved reports, newest first. Edit shows a minus on every row, which
// reveals the row's Delete button; swiping a row reveals one too. Only
// those buttons delete, and an Undo bar then offers the report back for a
// few seconds. Compare puts a check box on every row: two or three checked
// reports of one calculator open side by side.
Page {
    id: page

    required property ReportTableModel reports
    property bool editing: false
    property bool comparing: false
    // The rows checked for comparing, in the order they were checked.
    property var chosen: []

    signal reportChosen(string filePath)
    signal compareRequested(var rows)

    // Checks or unchecks a row for comparing (three at most).
    function toggleChosen(row) {
        const at = chosen.indexOf(row);
        if (at >= 0)
            chosen = chosen.filter(r => r !== row);
        else if (chosen.length < 3)
            chosen = chosen.concat([row]);
    }

    // Reveals the Delete button of a row, as its minus does.
    function confirmDelete(row) {
        const item = list.itemAtIndex(row);
        if (item)
            item.confirming = true;
    }

    title: qsTr("Reports")
    Accessible.name: title

    header: TitleBar {
        title: page.title

        TitleBarButton {
            objectName: "compareButton"
            visible: !page.editing
            text: page.comparing ? qsTr("Cancel") : qsTr("Compare")
            enabled: page.comparing || list.count > 1
            Accessible.name: page.comparing ? qsTr("Stop comparing") : qsTr("Compare reports")
            onClicked: {
                page.comparing = !page.comparing;
                page.chosen = [];
            }
        }
        TitleBarButton {
            objectName: "editButton"
            visible: !page.comparing
            text: page.editing ? qsTr("Done") : qsTr("Edit")
            enabled: page.editing || list.count > 0
            onClicked: page.editing = !page.editing
        }
    }

    footer: ToolBar {
        visible: page.comparing
        background: Rectangle {
            color: AppTheme.button
        }

        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: AppTheme.margin
            anchors.rightMargin: AppTheme.margin

            Label {
                Layout.fillWidth: true
                text: qsTr("Check two or three reports of one calculator")
                wrapMode: Text.Wrap
                font.pixelSize: 13
            }
            Button {
                objectName: "compareChosenButton"
                text: qsTr("Compare (%1)").arg(page.chosen.length)
                enabled: page.chosen.length >= 2
                onClicked: page.compareRequested(page.chosen)
            }
        }
    }

    ListView {
        id: list

        objectName: "reportList"
        // Tab reaches the list; the arrow keys walk its rows.
        activeFocusOnTab: true
        anchors.fill: parent
        clip: true
        model: page.reports
        keyNavigationEnabled: true
        focus: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {}

        delegate: SwipeDelegate {
            id: row

            required property int index
            required property string title
            required property string dateString
            required property string calculatorTitle
            required property color colorTag
            required property string filePath

            objectName: "reportRow" + index
            width: ListView.view.width
            height: AppTheme.rowHeight
            padding: 0
            Accessible.name: title + ", " + calculatorTitle + ", " + dateString

            onClicked: {
                if (swipe.position !== 0) {
                    swipe.close();
                    return;
                }
                if (page.comparing)
                    page.toggleChosen(row.index);
                else if (!page.editing)
                    page.reportChosen(row.filePath);
            }
            // The minus (or the Delete key) has revealed the Delete button.
            property bool confirming: false

            Keys.onReturnPressed: clicked()
            // Delete reveals the Delete button; a second Delete confirms.
            Keys.onDeletePressed: {
                if (confirming)
                    page.reports.removeRow(row.index);
                else
                    confirming = true;
            }

            Connections {
                target: page
                function onEditingChanged() {
                    row.confirming = false;
                }
            }

            background: Rectangle {
                color: row.down ? AppTheme.pressed : (row.visualFocus || row.ListView.isCurrentItem && list.activeFocus ? AppTheme.hover : row.palette.base)

                FocusRing {
                    shown: row.visualFocus || row.ListView.isCurrentItem && list.activeFocus
                }
            }

            contentItem: RowLayout {
                spacing: 12

                Rectangle {
                    Layout.fillHeight: true
                    Layout.preferredWidth: AppTheme.swatchWidth
                    color: row.colorTag
                }
                CheckBox {
                    objectName: "compareCheck" + row.index
                    visible: page.comparing
                    checked: page.chosen.includes(row.index)
                    Accessible.name: qsTr("Compare %1").arg(row.title)
                    onClicked: page.toggleChosen(row.index)
                }
                AbstractButton {
                    objectName: "deleteButton"
                    visible: page.editing
                    implicitWidth: 32
                    implicitHeight: 32
                    focusPolicy: Qt.TabFocus
                    Accessible.name: qsTr("Delete %1").arg(row.title)
                    onClicked: row.confirming = !row.confirming
                    background: Rectangle {
                        radius: width / 2
                        color: AppTheme.danger
                    }
                    contentItem: Label {
                        text: "\u2212"
                        color: "white"
                        font.bold: true
                        font.pixelSize: 20
                        horizontalAlignment: Text.AlignHCenter
                        verticalAlignment: Text.AlignVCenter
                    }
                }
                ColumnLayout {
                    Layout.fillWidth: true
                    Layout.rightMargin: AppTheme.margin
                    spacing: 2

                    RowLayout {
                        Layout.fillWidth: true
                        Label {
                            Layout.fillWidth: true
                            text: row.title.length > 0 ? row.title : qsTr("Untitled")
                            font.pixelSize: 16
                            font.bold: true
                            elide: Text.ElideRight
                            opacity: row.title.length > 0 ? 1 : 0.5
                        }
                        Label {
                            text: row.dateString
                            font.pixelSize: 12
                            color: AppTheme.secondaryText
                        }
                    }
                    // The calculator's full name in text that reads in either
                    // scheme (its colour is the swatch at the row's start).
                    Label {
                        objectName: "calculatorTitle"
                        Layout.fillWidth: true
                        text: row.calculatorTitle
                        color: AppTheme.secondaryText
                        font.pixelSize: 14
                        elide: Text.ElideRight
                    }
                }
                Button {
                    objectName: "confirmDeleteButton"
                    Layout.rightMargin: AppTheme.margin
                    visible: row.confirming
                    text: qsTr("Delete")
                    focusPolicy: Qt.TabFocus
                    Accessible.name: qsTr("Delete %1").arg(row.title)
                    onClicked: page.reports.removeRow(row.index)
                    palette.button: AppTheme.danger
                    palette.buttonText: "white"
                }
            }

            Rectangle {
                anchors.bottom: parent.bottom
                anchors.left: parent.left
                anchors.right: parent.right
                anchors.leftMargin: AppTheme.swatchWidth + 12
                height: 1
                color: AppTheme.separator
            }

            swipe.right: Rectangle {
                objectName: "swipeDeleteButton"
                width: 96
                height: row.height
                anchors.right: parent.right
                color: AppTheme.danger

                Label {
                    anchors.centerIn: parent
                    text: qsTr("Delete")
                    color: "white"
                    font.bold: true
                }
                // The delegate takes the presses of what a swipe reveals.
                SwipeDelegate.onClicked: page.reports.removeRow(row.index)
            }
        }

        Label {
            objectName: "emptyListLabel"
            anchors.centerIn: parent
            width: parent.width - 64
            visible: list.count === 0
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            // An unreadable list is said so, never shown as an empty one.
            text: page.reports.loadError.length > 0 ? qsTr("The saved reports could not be read.\n%1").arg(page.reports.loadError) : qsTr("No saved reports yet.\nSave a calculation from any calculator's export button and it appears here.")
            color: page.reports.loadError.length > 0 ? AppTheme.danger : palette.text
            opacity: page.reports.loadError.length > 0 ? 1 : 0.6
        }
    }

    // The last deleted report can be put back for 10 seconds.
    Rectangle {
        objectName: "undoBar"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 12
        height: 48
        radius: 8
        visible: page.reports.canUndo
        color: AppTheme.dark ? "#E6EAF0" : "#1B2633"

        Timer {
            id: undoTimer

            // Long enough to notice and reach (6 s was too short).
            interval: 10000
            onTriggered: page.reports.forgetUndo()
        }
        // Ctrl+Z brings the report back while the bar offers it.
        Shortcut {
            sequences: ["Ctrl+Z"]
            enabled: page.reports.canUndo && page.visible
            onActivated: page.reports.undoDelete()
        }
        Connections {
            target: page.reports
            function onUndoChanged() {
                if (page.reports.canUndo)
                    undoTimer.restart();
            }
        }

        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 16
            anchors.rightMargin: 8

            Label {
                Layout.fillWidth: true
                text: qsTr("Deleted \u201C%1\u201D").arg(page.reports.undoTitle)
                color: AppTheme.dark ? "#1B2633" : "#FFFFFF"
                elide: Text.ElideRight
            }
            Button {
                id: undoButton

                objectName: "undoButton"
                text: qsTr("Undo")
                flat: true
                Accessible.name: qsTr("Undo delete")
                onClicked: page.reports.undoDelete()
                contentItem: Label {
                    text: undoButton.text
                    color: AppTheme.keyOperator
                    font.bold: true
                    verticalAlignment: Text.AlignVCenter
                }
            }
        }
    }
}
