pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// The catalogue of form calculators. Rows are a ninth of the list's height,
// so nine would fill it; choosing one asks for the screens its title opens.
Page {
    id: page

    signal screensRequested(var identifiers, string title)

    title: qsTr("Functions")

    FunctionTableModel {
        id: catalogue
    }

    header: TitleBar {
        title: page.title
    }

    ListView {
        id: list

        objectName: "functionList"
        // Tab reaches the list; the arrow keys walk its rows.
        activeFocusOnTab: true
        anchors.fill: parent
        model: catalogue
        keyNavigationEnabled: true
        focus: true
        boundsBehavior: Flickable.StopAtBounds
        // A row scrolled half out of sight does not draw under the tab bar.
        clip: true

        delegate: ItemDelegate {
            id: row

            required property int index
            required property string title
            required property string iconUrl

            objectName: "functionRow" + index
            width: ListView.view.width
            height: catalogue.rowHeightForListHeight(list.height)
            Accessible.name: title
            onClicked: page.screensRequested(catalogue.screenIdentifiersForTitle(title), title)
            Keys.onReturnPressed: clicked()

            // The row the arrow keys are on, while the list has the keyboard.
            FocusRing {
                shown: row.ListView.isCurrentItem && list.activeFocus
            }

            contentItem: RowLayout {
                spacing: 14

                Image {
                    Layout.preferredWidth: Math.min(44, row.height - 16)
                    Layout.preferredHeight: Layout.preferredWidth
                    source: row.iconUrl
                    sourceSize.width: 88
                    sourceSize.height: 88
                    fillMode: Image.PreserveAspectFit
                }
                Label {
                    Layout.fillWidth: true
                    text: row.title
                    font.pixelSize: 16
                    elide: Text.ElideRight
                }
                Label {
                    text: "\u203A"
                    font.pixelSize: 22
                    color: AppTheme.secondaryText
                }
            }

            Rectangle {
                anchors.bottom: parent.bottom
                anchors.right: parent.right
                width: parent.width - 70
                height: 1
                color: AppTheme.separator
            }
        }
    }
}
