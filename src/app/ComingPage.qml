import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Placeholder for a tab whose screens are still being built.
Page {
    id: page

    property string heading
    property string blurb
    property string backText

    title: heading

    header: TitleBar {
        title: page.heading
        backText: page.backText
        onBackClicked: page.StackView.view.pop()
    }

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(parent.width - 48, 360)
        spacing: 12

        Label {
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Coming soon")
            font.pixelSize: 22
            font.bold: true
        }
        Label {
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            text: page.blurb
            opacity: 0.7
        }
    }
}
