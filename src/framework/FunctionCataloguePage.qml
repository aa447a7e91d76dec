pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
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
        // Rows are made as they scroll into sight, not ahead of time: the
        // first frame makes only the ones it shows.
        cacheBuffer: 0

        // A row is drawn with plain items (no control template, one text
        // font): the whole catalogue is on the first frame.
        delegate: Rectangle {
            id: row

            required property int index
            required property string title
            required property string iconUrl

            signal clicked

            objectName: "functionRow" + index
            width: ListView.view.width
            height: catalogue.rowHeightForListHeight(list.height)
            color: tap.pressed ? AppTheme.pressed : hover.hovered ? AppTheme.hover : "transparent"
            Accessible.role: Accessible.Button
            Accessible.name: title
            Accessible.onPressAction: clicked()
            onClicked: page.screensRequested(catalogue.screenIdentifiersForTitle(title), title)
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()

            TapHandler {
                id: tap

                onTapped: row.clicked()
            }
            HoverHandler {
                id: hover
            }

            // The row the arrow keys are on, while the list has the keyboard.
            FocusRing {
                shown: row.ListView.isCurrentItem && list.activeFocus
            }

            Image {
                id: icon

                objectName: "functionIcon"
                x: 12
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(44, row.height - 16)
                height: width
                source: row.iconUrl
                // Its drawn size in the screen's pixels (44 points).
                sourceSize.width: Screen.devicePixelRatio > 1 ? 88 : 44
                sourceSize.height: Screen.devicePixelRatio > 1 ? 88 : 44
                fillMode: Image.PreserveAspectFit
            }
            Text {
                anchors.left: icon.right
                anchors.leftMargin: 14
                anchors.right: chevron.left
                anchors.rightMargin: 14
                anchors.verticalCenter: parent.verticalCenter
                text: row.title
                font.pixelSize: 16
                color: AppTheme.text
                elide: Text.ElideRight
            }
            // The chevron is drawn, not a glyph: no second font size to load.
            Item {
                id: chevron

                anchors.right: parent.right
                anchors.rightMargin: 16
                anchors.verticalCenter: parent.verticalCenter
                width: 8
                height: 14

                Rectangle {
                    x: 1
                    y: 3
                    width: 8
                    height: 2
                    radius: 1
                    rotation: 45
                    color: AppTheme.secondaryText
                }
                Rectangle {
                    x: 1
                    y: 9
                    width: 8
                    height: 2
                    radius: 1
                    rotation: -45
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
