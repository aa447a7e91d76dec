pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// The stock calculators, a fixed list; rows a ninth of the list's height.
Page {
    id: page

    signal calculatorChosen(string identifier, string title)

    title: qsTr("Stock Calculators")

    header: TitleBar {
        title: page.title
        backText: qsTr("Functions")
        onBackClicked: page.StackView.view.pop()
    }

    ListView {
        id: list

        objectName: "stockList"
        // Tab reaches the list; the arrow keys walk its rows.
        activeFocusOnTab: true
        anchors.fill: parent
        keyNavigationEnabled: true
        focus: true
        model: ListModel {
            ListElement {
                name: "Black-Scholes"
                identifier: "BlackScholesController"
                swatch: "#E74C3C"
            }
            ListElement {
                name: "Expected Return"
                identifier: "ExpReturnController"
                swatch: "#3498DB"
            }
            ListElement {
                name: "Constant Growth"
                identifier: "ConstGrowthController"
                swatch: "#2ECC71"
            }
            ListElement {
                name: "Nonconstant Growth"
                identifier: "NoncGrowthController"
                swatch: "#F39C12"
            }
            ListElement {
                name: "Capital Asset Pricing Model"
                identifier: "CapmController"
                swatch: "#9B59B6"
            }
            ListElement {
                name: "Weighted Average Cost of Capital"
                identifier: "WaccController"
                swatch: "#1ABC9C"
            }
            ListElement {
                name: "Holding Period Return"
                identifier: "PeriodReturnController"
                swatch: "#34495E"
            }
        }

        delegate: ItemDelegate {
            id: row

            required property int index
            required property string name
            required property string identifier
            required property color swatch

            objectName: "stockRow" + index
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
