pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import Tallyvane

// The keypad's help topics.
Page {
    id: page

    // This page takes the whole window: the tab bar hides while it is shown.
    readonly property bool hidesTabs: true

    signal topicChosen(string title, string source)

    title: qsTr("Calculator Help")

    CalculatorHelpModel {
        id: topics
    }

    header: TitleBar {
        title: page.title
        backText: qsTr("Back")
        onBackClicked: page.StackView.view.pop()
    }

    ListView {
        objectName: "helpTopics"
        // Tab reaches the list; the arrow keys walk its rows.
        activeFocusOnTab: true
        anchors.fill: parent
        model: topics
        keyNavigationEnabled: true

        delegate: ItemDelegate {
            required property int index
            required property string title
            required property string source

            objectName: "helpTopic" + index
            width: ListView.view.width
            height: 56
            text: title
            font.pixelSize: 16
            Accessible.name: title
            onClicked: page.topicChosen(title, source)

            Rectangle {
                anchors.bottom: parent.bottom
                width: parent.width
                height: 1
                color: AppTheme.separator
            }
        }
    }
}
