pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Shows what the screens ask of the user: action sheets as a bottom sheet
// on narrow windows; on windows 600 px wide or more as a popover with an
// arrow at the button it belongs to, or centred when it belongs to none;
// alerts as dialogs. Each choice goes back to the Presenter.
Item {
    id: host

    readonly property bool wide: width >= 600
    readonly property real arrowSize: 10

    property var openPopups: []

    // The shown control called `name` (an outlet, or "export" for the export
    // button), searched depth-first below `item`; null when none is shown.
    function findAnchor(item, name, depth) {
        if (!item || !item.visible || depth > 64)
            return null;
        if (item.objectName === name || item.objectName === name + "Button")
            return item;
        for (let i = 0; i < item.children.length; ++i) {
            const found = findAnchor(item.children[i], name, depth + 1);
            if (found)
                return found;
        }
        return null;
    }

    function forget(popup) {
        openPopups = openPopups.filter(p => p !== popup);
    }

    // Closes whatever is open, each answered as if cancelled.
    function dismissAll() {
        for (const popup of openPopups.slice())
            popup.close();
    }

    Connections {
        target: Presenter
        // Answered elsewhere (a test, the screenshot driver): just close.
        function onAnswered(id) {
            for (const popup of host.openPopups.slice()) {
                if (popup.request.id === id) {
                    popup.answeredElsewhere = true;
                    popup.close();
                }
            }
        }
        function onPresentRequested(request) {
            host.present(request);
        }
    }

    // Shows `request`, unless it is shown already.
    function present(request) {
        if (openPopups.some(p => p.request.id === request.id))
            return;
        const component = request.kind === "sheet" ? sheetComponent : alertComponent;
        openPopups = openPopups.concat([component.createObject(host, {
                "request": request
            })]);
        openPopups[openPopups.length - 1].open();
    }

    // The host is made after the window's first frame, or when the first
    // question comes: what was asked before it existed is shown now.
    Component.onCompleted: {
        for (const request of Presenter.pendingRequests())
            present(request);
    }

    component ChoiceButton: Button {
        required property var choice
        property var popup
        // In an alert the default (the one Return presses) is drawn filled;
        // in a sheet every choice but the cancel.
        property bool isDefault: !choice.cancel

        objectName: "choice_" + choice.title
        Layout.fillWidth: true
        implicitHeight: 48
        font.capitalization: Font.MixedCase
        font.pixelSize: 16
        // The choice the button shows now carries a check mark.
        text: (choice.current ? "\u2713 " : "") + (choice.label || choice.title)
        flat: !isDefault
        highlighted: isDefault
        Accessible.name: choice.label || choice.title
        onClicked: popup.choose(choice.title)
    }

    Component {
        id: sheetComponent

        Popup {
            id: sheet

            property var request
            property string chosen
            property bool answeredElsewhere: false

            function choose(title) {
                chosen = title;
                close();
            }

            // The anchor's rectangle in the overlay, when the sheet is a
            // popover pointing at it.
            property rect anchorRect: Qt.rect(0, 0, 0, 0)
            readonly property bool popover: host.wide && anchorRect.width > 0
            readonly property bool below: anchorRect.y + anchorRect.height + host.arrowSize + implicitHeight <= parent.height - 8

            function placeAtAnchor() {
                const item = host.wide && request.anchor.length > 0 ? host.findAnchor(host.Window.contentItem, request.anchor, 0) : null;
                anchorRect = item ? item.mapToItem(parent, 0, 0, item.width, item.height) : Qt.rect(0, 0, 0, 0);
            }

            objectName: "actionSheet"
            modal: true
            focus: true
            parent: Overlay.overlay
            width: host.wide ? 320 : parent.width
            x: popover ? Math.max(8, Math.min(parent.width - width - 8, anchorRect.x + anchorRect.width / 2 - width / 2)) : (host.wide ? (parent.width - width) / 2 : 0)
            y: popover ? (below ? anchorRect.y + anchorRect.height + host.arrowSize : Math.max(8, anchorRect.y - host.arrowSize - height)) : (host.wide ? (parent.height - height) / 2 : parent.height - height)
            padding: 16
            closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
            Component.onCompleted: placeAtAnchor()
            background: Rectangle {
                color: sheet.palette.window
                radius: host.wide ? 12 : 0
                border.color: AppTheme.separator

                // The popover's arrow, pointing at the middle of its button.
                Rectangle {
                    objectName: "popoverArrow"
                    visible: sheet.popover
                    width: host.arrowSize * 1.6
                    height: width
                    rotation: 45
                    color: parent.color
                    border.color: parent.border.color
                    x: Math.max(12, Math.min(parent.width - width - 12, sheet.anchorRect.x + sheet.anchorRect.width / 2 - sheet.x - width / 2))
                    y: sheet.below ? -height / 2 : parent.height - height / 2
                    z: -1
                }
            }

            onClosed: {
                const cancel = request.actions.find(a => a.cancel);
                host.forget(sheet);
                if (!answeredElsewhere)
                    Presenter.answer(request.id, chosen.length > 0 ? chosen : (cancel ? cancel.title : ""), "");
                destroy();
            }

            contentItem: ColumnLayout {
                spacing: 8

                Label {
                    Layout.fillWidth: true
                    visible: text.length > 0
                    text: sheet.request.title
                    font.bold: true
                    font.pixelSize: 16
                    horizontalAlignment: Text.AlignHCenter
                }
                Label {
                    Layout.fillWidth: true
                    visible: text.length > 0
                    text: sheet.request.message
                    wrapMode: Text.WordWrap
                    horizontalAlignment: Text.AlignHCenter
                    opacity: 0.7
                }
                Repeater {
                    // Cancel goes last, apart from the others.
                    model: sheet.request.actions.filter(a => !a.cancel).concat(sheet.request.actions.filter(a => a.cancel))
                    delegate: ChoiceButton {
                        required property var modelData
                        choice: modelData
                        popup: sheet
                    }
                }
            }
        }
    }

    Component {
        id: alertComponent

        Dialog {
            id: alert

            property var request
            property string chosen
            property bool answeredElsewhere: false

            function choose(title) {
                chosen = title;
                close();
            }
            // The action Return presses: the preferred one, else the first
            // that is no cancel, else the only one.
            readonly property var defaultAction: request.actions.find(a => a.preferred) || request.actions.find(a => !a.cancel) || (request.actions.length === 1 ? request.actions[0] : null)

            function chooseDefault() {
                if (defaultAction)
                    choose(defaultAction.title);
            }

            objectName: "alertDialog"
            parent: Overlay.overlay
            anchors.centerIn: parent
            width: Math.min(parent.width - 48, 360)
            modal: true
            focus: true
            title: request.title
            closePolicy: Popup.CloseOnEscape

            onOpened: if (field.visible)
                field.forceActiveFocus()
            onClosed: {
                const cancel = request.actions.find(a => a.cancel);
                const fallback = cancel ? cancel.title : (request.actions.length === 1 ? request.actions[0].title : "");
                host.forget(alert);
                if (!answeredElsewhere)
                    Presenter.answer(request.id, chosen.length > 0 ? chosen : fallback, field.text);
                destroy();
            }

            ColumnLayout {
                anchors.fill: parent
                spacing: 12
                focus: true
                Keys.onReturnPressed: alert.chooseDefault()
                Keys.onEnterPressed: alert.chooseDefault()

                Label {
                    Layout.fillWidth: true
                    text: alert.request.message
                    wrapMode: Text.WordWrap
                }
                TextField {
                    id: field

                    objectName: "alertField"
                    Layout.fillWidth: true
                    visible: alert.request.textField
                    inputMethodHints: alert.request.numeric ? Qt.ImhDigitsOnly : Qt.ImhNone
                    validator: alert.request.numeric ? digits : null
                    Accessible.name: alert.request.title
                    onAccepted: alert.chooseDefault()

                    RegularExpressionValidator {
                        id: digits
                        regularExpression: /-?[0-9]*/
                    }
                }
                RowLayout {
                    Layout.fillWidth: true
                    Repeater {
                        model: alert.request.actions
                        delegate: ChoiceButton {
                            required property var modelData
                            choice: modelData
                            popup: alert
                            isDefault: alert.defaultAction !== null && modelData.title === alert.defaultAction.title
                        }
                    }
                }
            }
        }
    }
}
