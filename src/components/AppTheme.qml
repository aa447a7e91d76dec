pragma Singleton
import QtQuick

// Colours and sizes shared by the screens.
QtObject {
    readonly property color accent: "#354458"
    readonly property color danger: "#D64541"
    readonly property color secondaryText: "#7A8391"
    readonly property color separator: "#1F000000"
    readonly property int rowHeight: 72
    readonly property int margin: 16
    readonly property int swatchWidth: 6
}
