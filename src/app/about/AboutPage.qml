pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// The About tab: the installed version, the maker's pages, sharing, and
// the app's own information pages. Rows the controller handles go to
// rowSelected(); the others ask the tab to show a screen.
Page {
    id: page

    readonly property alias controller: controller

    signal supportRequested
    signal pageRequested(string title, string source)

    title: qsTr("About")
    Accessible.name: title

    AboutController {
        id: controller
    }

    header: TitleBar {
        title: page.title
    }

    ListModel {
        id: rows

        // kind: "version" shows the version, "action" goes to the
        // controller, "support" and "page" open a screen of the app.
        ListElement { group: 0; row: 0; groupTitle: qsTr("Tallyvane"); title: qsTr("Version"); kind: "version"; source: "" }
        ListElement { group: 0; row: 1; groupTitle: qsTr("Tallyvane"); title: qsTr("Privacy policy"); kind: "action"; source: "" }
        ListElement { group: 0; row: 2; groupTitle: qsTr("Tallyvane"); title: qsTr("Terms of use"); kind: "action"; source: "" }
        ListElement { group: 1; row: 0; groupTitle: qsTr("Share"); title: qsTr("Invite a friend"); kind: "action"; source: "" }
        ListElement { group: 1; row: 1; groupTitle: qsTr("Share"); title: qsTr("Rate Tallyvane"); kind: "action"; source: "" }
        ListElement { group: 1; row: 2; groupTitle: qsTr("Share"); title: qsTr("Send feedback"); kind: "action"; source: "" }
        ListElement { group: 2; row: 0; groupTitle: qsTr("Information"); title: qsTr("Support"); kind: "support"; source: "" }
        ListElement { group: 2; row: 1; groupTitle: qsTr("Information"); title: qsTr("Credits"); kind: "page"; source: "credits" }
        ListElement { group: 2; row: 2; groupTitle: qsTr("Information"); title: qsTr("Privacy"); kind: "page"; source: "privacy" }
        ListElement { group: 2; row: 3; groupTitle: qsTr("Information"); title: qsTr("Terms"); kind: "page"; source: "terms" }
    }

    ListView {
        id: list

        objectName: "aboutList"
        // Tab reaches the list; the arrow keys walk its rows.
        activeFocusOnTab: true
        anchors.fill: parent
        clip: true
        model: rows
        keyNavigationEnabled: true
        focus: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {}

        // Each group's first row carries the group's heading.
        delegate: Column {
            id: entry

            required property int index
            required property int group
            required property int row
            required property string groupTitle
            required property string title
            required property string kind
            required property string source

            width: ListView.view.width

            Item {
                visible: entry.row === 0
                width: parent.width
                height: 40

                SectionHeader {
                    anchors.left: parent.left
                    anchors.right: parent.right
                    anchors.bottom: parent.bottom
                    anchors.leftMargin: AppTheme.margin
                    bottomPadding: 6
                    text: entry.groupTitle
                }
            }

            ItemDelegate {
                id: item

                objectName: "aboutRow" + entry.group + "_" + entry.row
                width: parent.width
                height: 52
                font.pixelSize: 16
                Accessible.name: entry.kind === "version" ? entry.title + " " + controller.appVersion : entry.title

                contentItem: RowLayout {
                    spacing: 8

                    Label {
                        Layout.fillWidth: true
                        text: entry.title
                        font: item.font
                        elide: Text.ElideRight
                    }
                    Label {
                        objectName: "appVersionLabel"
                        visible: entry.kind === "version"
                        text: controller.appVersion
                        font: item.font
                        color: AppTheme.secondaryText
                    }
                    Label {
                        visible: entry.kind === "support" || entry.kind === "page"
                        text: "\u203A"
                        font.pixelSize: 20
                        color: AppTheme.secondaryText
                    }
                }

                onClicked: {
                    if (entry.kind === "support")
                        page.supportRequested();
                    else if (entry.kind === "page")
                        page.pageRequested(entry.title, entry.source);
                    else
                        controller.rowSelected(entry.group, entry.row);
                }
                Keys.onReturnPressed: clicked()

                Rectangle {
                    anchors.bottom: parent.bottom
                    anchors.left: parent.left
                    anchors.leftMargin: AppTheme.margin
                    anchors.right: parent.right
                    height: 1
                    color: AppTheme.separator
                }
            }
        }
    }
}
