pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// Shows what the screens ask of the user: action sheets as a bottom sheet
// (a popover under the title bar on wide windows) and alerts as dialogs,
// and reports each choice back to the Presenter.
Item {
    id: host

    // Where popovers point: the right end of the title bar.
    property real popoverTop: 56
    readonly property bool wide: width >= 600

    property var openPopups: []

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
            const component = request.kind === "sheet" ? sheetComponent : alertComponent;
            const popup = component.createObject(host, {
                "request": request
            });
            host.openPopups.push(popup);
            popup.open();
        }
    }

    component ChoiceButton: Button {
        required property var choice
        property var popup

        objectName: "choice_" + choice.title
        Layout.fillWidth: true
        implicitHeight: 48
        font.capitalization: Font.MixedCase
        font.pixelSize: 16
        text: choice.title
        flat: choice.cancel
        highlighted: !choice.cancel
        Accessible.name: choice.title
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

            objectName: "actionSheet"
            modal: true
            focus: true
            parent: Overlay.overlay
            width: host.wide ? 320 : parent.width
            x: host.wide ? parent.width - width - 8 : 0
            y: host.wide ? host.popoverTop : parent.height - height
            padding: 16
            closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
            background: Rectangle {
                color: sheet.palette.window
                radius: host.wide ? 12 : 0
                border.color: AppTheme.separator
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
            // Return picks the first action that is not a cancel.
            function chooseDefault() {
                const ok = request.actions.find(a => !a.cancel);
                if (ok)
                    choose(ok.title);
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
                        }
                    }
                }
            }
        }
    }
}
