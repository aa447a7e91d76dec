import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// The title bar of every screen: an optional back button, the title, and
// whatever the screen puts on the right (its `actions`).
Rectangle {
    id: bar

    property string title
    property string backText
    default property alias actions: trailing.data

    signal backClicked

    implicitHeight: 56
    color: AppTheme.titleBar
    Accessible.role: Accessible.ToolBar
    Accessible.name: title

    data: [
        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: bar.backText.length > 0 ? 0 : AppTheme.margin
            anchors.rightMargin: 4
            spacing: 0

            TitleBarButton {
                objectName: "backButton"
                visible: bar.backText.length > 0
                text: "\u2039 " + bar.backText
                Accessible.name: qsTr("Back to %1").arg(bar.backText)
                onClicked: bar.backClicked()
            }
            Label {
                Layout.fillWidth: true
                text: bar.title
                color: "white"
                font.bold: true
                font.pixelSize: 18
                // A long title on a narrow window first gets smaller (down to
                // 13 px), and only then is cut short.
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: 13
                elide: Text.ElideRight
                verticalAlignment: Text.AlignVCenter
                Layout.fillHeight: true
                horizontalAlignment: bar.backText.length > 0 ? Text.AlignHCenter : Text.AlignLeft
            }
            RowLayout {
                id: trailing
                spacing: 0
            }
        }
    ]
}
