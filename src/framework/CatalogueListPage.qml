pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// One list of the catalogue beyond the Functions tab (the stock
// calculators, loans and more, bonds and dates, business and statistics),
// from the registry; rows a ninth of the list's height, each with its
// calculator's colour.
Page {
    id: page

    // The list's name in the registry ("stock", "loans", "bonds",
    // "business").
    required property string list

    signal calculatorChosen(string identifier, string title)

    header: TitleBar {
        title: page.title
        backText: qsTr("Functions")
        onBackClicked: page.StackView.view.pop()
    }

    ListView {
        id: rows

        objectName: page.list + "List"
        // Tab reaches the list; the arrow keys walk its rows.
        activeFocusOnTab: true
        anchors.fill: parent
        keyNavigationEnabled: true
        focus: true
        // The calculators of this list, from the registry.
        model: Calculators.entries(page.list)

        delegate: ItemDelegate {
            id: row

            required property int index
            required property var modelData
            readonly property string name: modelData.title
            readonly property string identifier: modelData.screen
            readonly property color swatch: modelData.color

            objectName: page.list + "Row" + index
            width: ListView.view.width
            height: rows.height / 9
            Accessible.name: name
            onClicked: page.calculatorChosen(identifier, name)
            Keys.onReturnPressed: clicked()

            // The row the arrow keys are on, while the list has the keyboard.
            FocusRing {
                shown: row.ListView.isCurrentItem && rows.activeFocus
            }

            contentItem: RowLayout {
                spacing: 14

                Rectangle {
                    Layout.preferredWidth: 6
                    Layout.fillHeight: true
                    color: row.swatch
                }
                Label {
                    Layout.fillWidth: true
                    text: row.name
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
                width: parent.width - 20
                height: 1
                color: AppTheme.separator
            }
        }
    }
}
