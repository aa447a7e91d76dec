import QtQuick

// The ring around a control that has the keyboard focus: an outer line that
// stands out from the page (at least 3:1 in either colour scheme) and an
// inner line that stands out from a dark control. Put it inside the
// control's background, `shown` bound to the control's visualFocus.
Rectangle {
    property bool shown: false
    // On dark ground (the title bar) the outer line is white.
    property bool light: false

    anchors.fill: parent
    visible: shown
    color: "transparent"
    radius: 0
    border.width: 2
    border.color: light ? "#FFFFFF" : AppTheme.focusRing

    Rectangle {
        anchors.fill: parent
        anchors.margins: 2
        radius: parent.radius
        color: "transparent"
        border.width: 1
        border.color: AppTheme.focusRingInner
    }
}
