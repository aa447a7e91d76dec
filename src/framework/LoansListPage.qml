pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Tallyvane's own calculators beyond the catalogue: loans, dated cash
// flows, rates, depreciation and breakeven; rows a ninth of the list's height.
// A calculator still to come opens a page that says so.
Page {
    id: page

    signal calculatorChosen(string identifier, string title)

    title: qsTr("Loans and More")

    header: TitleBar {
        title: page.title
        backText: qsTr("Functions")
        onBackClicked: page.StackView.view.pop()
    }

    ListView {
        id: list

        objectName: "loansList"
        // Tab reaches the list; the arrow keys walk its rows.
        activeFocusOnTab: true
        anchors.fill: parent
        keyNavigationEnabled: true
        focus: true
        // The calculators of this list, from the registry.
        model: Calculators.entries("loans")

        delegate: ItemDelegate {
            id: row

            required property int index
            required property var modelData
            readonly property string name: modelData.title
            readonly property string identifier: modelData.screen
            readonly property color swatch: modelData.color

            objectName: "loansRow" + index
            width: ListView.view.width
            height: list.height / 9
            Accessible.name: name
            onClicked: page.calculatorChosen(identifier, name)
            Keys.onReturnPressed: clicked()

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
