import QtQuick

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

    // Laid out by anchors (no layout module): the back button at the left,
    // the actions at the right, the title between them.
    data: [
        // Made only on screens that have somewhere to go back to: the first
        // pages (on the first frame) have none.
        Loader {
            id: back

            anchors.left: parent.left
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            visible: status === Loader.Ready
            source: bar.backText.length > 0 ? "BackButton.qml" : ""
            onLoaded: {
                item.backText = Qt.binding(() => bar.backText);
                item.clicked.connect(bar.backClicked);
            }
        },
        Text {
            anchors.left: back.visible ? back.right : parent.left
            anchors.leftMargin: back.visible ? 0 : AppTheme.margin
            anchors.right: trailing.left
            anchors.top: parent.top
            anchors.bottom: parent.bottom
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
            horizontalAlignment: bar.backText.length > 0 ? Text.AlignHCenter : Text.AlignLeft
        },
        Row {
            id: trailing

            anchors.right: parent.right
            anchors.rightMargin: 4
            anchors.verticalCenter: parent.verticalCenter
        }
    ]
}
