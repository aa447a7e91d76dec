pragma Singleton
import QtQuick
import Tallyvane

// Colours and sizes shared by the screens, light or dark as the desktop
// asks (SystemColorScheme).
QtObject {
    readonly property bool dark: SystemColorScheme.dark

    // Surfaces and the text on them.
    readonly property color window: dark ? "#11161D" : "#FFFFFF"
    readonly property color base: dark ? "#18202A" : "#FFFFFF"
    readonly property color text: dark ? "#E6EAF0" : "#1B2633"
    readonly property color secondaryText: dark ? "#9AA5B4" : "#6B7482"
    readonly property color button: dark ? "#27313D" : "#E8EBEF"
    readonly property color separator: dark ? "#2EFFFFFF" : "#1F000000"
    readonly property color pressed: dark ? "#24FFFFFF" : "#14000000"
    readonly property color hover: dark ? "#12FFFFFF" : "#0A000000"

    // The brand colour: title bars, and tints on plain surfaces (accent).
    readonly property color titleBar: dark ? "#1E2A38" : "#354458"
    readonly property color accent: dark ? "#9CC0EA" : "#354458"
    readonly property color textOnAccent: dark ? "#0E141B" : "#FFFFFF"
    readonly property color highlight: dark ? "#4F7CAC" : "#354458"
    readonly property color danger: "#D64541"
    // The ring around the control with the keyboard focus: its outer line
    // stands out from the page (at least 3:1 in either scheme; contrast
    // figures in docs/accessibility.md), its inner line from a dark control.
    readonly property color focusRing: dark ? "#8AB4F8" : "#0B57D0"
    readonly property color focusRingInner: dark ? "#0E141B" : "#FFFFFF"

    // Charts.
    readonly property color chartGrid: dark ? "#46515F" : "#D3D3D3"

    // The keypad: a dark display above keys that keep their kinds' colours.
    readonly property color display: dark ? "#0B1016" : "#1E2A38"
    readonly property color keyOperator: "#F2A93B"
    readonly property color digitKey: dark ? "#2B3642" : "#F4F6F8"
    readonly property color editKey: dark ? "#3A4654" : "#D5DBE2"
    readonly property color lightKeyText: dark ? "#E6EAF0" : "#1B2633"
    readonly property color lightKeySecondText: dark ? "#F2A93B" : "#9A5F10"

    readonly property int rowHeight: 72
    readonly property int margin: 16
    readonly property int maximumFormWidth: 720
    readonly property int maximumKeypadWidth: 600
    readonly property int swatchWidth: 6
}
