pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// The frame every calculator screen shares: the title bar with the export
// button, the calculator/description switch, the scrolling form (the
// screen's own content goes here) and the description page.
Page {
    id: screen

    // This page takes the whole window: the tab bar hides while it is shown.
    readonly property bool hidesTabs: true

    required property QVFunctionController controller
    readonly property QVFunctionView view: controller.view
    default property alias form: formColumn.data

    // "Clear": the screen is to be opened afresh, from its defaults.
    signal clearRequested

    // Scrolls the form to its end (where results and charts are).
    function scrollToEnd() {
        scrollToEndTimer.restart();
    }

    // The item with the keyboard focus: a field Tab (or a test) moves to
    // is scrolled into sight.
    readonly property Item focusedItem: Window.activeFocusItem

    onFocusedItemChanged: ensureFocusedItemVisible()

    // Scrolls the form just enough to show the focused item, when it is on
    // the form (with a little room around it).
    function ensureFocusedItemVisible() {
        const item = focusedItem;
        let ancestor = item;
        for (let depth = 0; ancestor && ancestor !== formColumn && depth < 64; ++depth)
            ancestor = ancestor.parent;
        if (!item || ancestor !== formColumn || !scroll.visible)
            return;
        const flick = scroll.contentItem as Flickable;
        if (!flick)
            return;
        const top = item.mapToItem(formColumn, 0, 0).y - 12;
        const bottom = top + item.height + 24;
        if (top < flick.contentY)
            flick.contentY = Math.max(0, top);
        else if (bottom > flick.contentY + flick.height)
            flick.contentY = Math.max(0, Math.min(flick.contentHeight - flick.height, bottom - flick.height));
    }

    title: view.title
    Accessible.name: title

    // The screen opens as it was last left, and keeps what it holds when it
    // goes (Back, another tab's work, the app's end).
    Component.onCompleted: controller.recallInputs()
    // Opened from the keyboard or not, the first input takes the keyboard,
    // so what is typed next goes into it (not into a title-bar button).
    StackView.onActivated: {
        if (!screen.activeFocus || screen.Window.activeFocusItem === screen) {
            const first = formColumn.nextItemInFocusChain(true);
            if (first && screen.contains(screen.mapFromItem(first, 0, 0)))
                first.forceActiveFocus(Qt.TabFocusReason);
        }
    }
    Component.onDestruction: controller.rememberInputs()

    component SegmentButton: TabButton {
        id: segment

        Accessible.name: text
        font.pixelSize: 14
        contentItem: Label {
            text: segment.text
            font: segment.font
            color: segment.checked ? AppTheme.textOnAccent : AppTheme.accent
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            radius: 7
            color: segment.checked ? AppTheme.accent : "transparent"

            FocusRing {
                shown: segment.visualFocus
                radius: 7
            }
        }
    }

    header: TitleBar {
        title: screen.title
        backText: qsTr("Back")
        onBackClicked: screen.StackView.view.pop()

        TitleBarButton {
            objectName: "clearButton"
            text: qsTr("Clear")
            Accessible.name: qsTr("Clear every input")
            onClicked: {
                screen.controller.forgetInputs();
                screen.clearRequested();
            }
        }
        TitleBarButton {
            objectName: "exportButton"
            // On the narrowest windows the arrow alone leaves the title room.
            text: screen.width < 360 ? "\u21EA" : "\u21EA " + qsTr("Export")
            Accessible.name: qsTr("Export report")
            onClicked: screen.controller.exportClicked()
        }
    }

    // Waits for the form to lay out what was just added (a chart).
    Timer {
        id: scrollToEndTimer

        interval: 50
        onTriggered: {
            const bar = scroll.ScrollBar.vertical;
            bar.position = Math.max(0, 1 - bar.size);
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        TabBar {
            id: segments

            objectName: "segmentedControl"
            Layout.fillWidth: true
            Layout.maximumWidth: AppTheme.maximumFormWidth
            Layout.alignment: Qt.AlignHCenter
            Layout.margins: 8
            currentIndex: screen.view.segment
            onCurrentIndexChanged: if (currentIndex !== screen.view.segment)
                screen.controller.segmentChanged(currentIndex)

            background: Rectangle {
                radius: 8
                color: AppTheme.button
            }

            SegmentButton {
                text: qsTr("Calculator")
            }
            SegmentButton {
                objectName: "descriptionSegment"
                text: qsTr("Description")
            }
        }

        ScrollView {
            id: scroll

            objectName: "formScroll"
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: screen.view.scrollVisible
            contentWidth: availableWidth

            // On a wide window the form keeps a readable width, centred.
            ColumnLayout {
                id: formColumn

                width: Math.min(scroll.availableWidth, AppTheme.maximumFormWidth)
                x: (scroll.availableWidth - width) / 2
                spacing: 10
            }
        }

        // While a flipped sign is not counted in (the results are greyed).
        Label {
            objectName: "staleNotice"
            Layout.fillWidth: true
            visible: screen.view.stale && screen.view.scrollVisible
            text: qsTr("Press Return or edit a field to update")
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            padding: 8
            font.pixelSize: 13
            color: AppTheme.text
            background: Rectangle {
                color: AppTheme.button
            }
        }

        ScrollView {
            objectName: "descriptionScroll"
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: screen.view.descriptionVisible
            contentWidth: availableWidth

            TextArea {
                objectName: "descriptionText"
                readOnly: true
                wrapMode: TextEdit.Wrap
                textFormat: TextEdit.RichText
                text: screen.view.descriptionHtml
                leftPadding: Math.max(AppTheme.margin, (width - AppTheme.maximumFormWidth) / 2)
                rightPadding: leftPadding
                topPadding: 4
                bottomPadding: AppTheme.margin
                background: null
                Accessible.name: qsTr("Description")
            }
        }
    }
}
