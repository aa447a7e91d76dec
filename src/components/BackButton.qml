import QtQuick

// The title bar's back button, named by the page it goes back to. Loaded
// by its file only on screens that have one, so the first page's title bar
// does not load the button types.
TitleBarButton {
    property string backText

    objectName: "backButton"
    text: "\u2039 " + backText
    Accessible.name: qsTr("Back to %1").arg(backText)
}
