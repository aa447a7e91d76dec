pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import Tallyvane

// The keypad business calculator: the expression line, the result label
// and display above the 44-key grid. Works with touch, mouse and the
// physical keyboard (digits and operators, Enter for "=", Backspace for
// "⇦", Delete, Home/End and the arrows for the caret and the cash-flow
// walk, Ctrl+C to copy the display, Ctrl+V to paste onto the line; Alt and
// a letter for the financial and function keys, F1 for HELP, as the
// keypad's keyboard map says; Tab walks the keys). The
// page holds the keyboard whenever it is shown: on start, on every switch
// to its tab and on every return from a screen pushed over it.
Page {
    id: page

    readonly property alias keypad: keypad
    readonly property alias controller: controller

    signal historyRequested
    signal helpRequested

    function takeKeyboard() {
        if (page.visible)
            page.forceActiveFocus();
    }

    // Physical keys the keypad has no key for.
    function editKey(event) {
        const control = (event.modifiers & Qt.ControlModifier) !== 0;
        const shift = (event.modifiers & Qt.ShiftModifier) !== 0;
        if ((control && event.key === Qt.Key_C) || (control && event.key === Qt.Key_Insert)) {
            clipboard.copyText(controller.displayNumber);
        } else if ((control && event.key === Qt.Key_V) || (shift && event.key === Qt.Key_Insert)) {
            controller.pasteText(clipboard.pastedText());
        } else if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier)) {
            return false;
        } else if (event.key === Qt.Key_Delete) {
            controller.deleteForward();
        } else if (event.key === Qt.Key_Home) {
            controller.moveCaretToStart();
        } else if (event.key === Qt.Key_End) {
            controller.moveCaretToEnd();
        } else {
            return false;
        }
        return true;
    }

    title: qsTr("Calculator")
    focus: true
    Accessible.name: title

    CalculatorKeypad {
        id: keypad
    }

    CalculatorController {
        id: controller

        // The registers, cash flows and STO/RCL come back after a restart.
        keepsRegisters: true
        onHistoryRequested: page.historyRequested()
        onHelpRequested: page.helpRequested()
    }

    StackView.onActivating: {
        keypad.loadButtonDictionary();
        page.takeKeyboard();
    }
    // Back from history or help, and every time the tab is shown again
    // (by the tab bar, a shortcut, or on leaving a calculator on another
    // tab): the page becomes visible and takes the keyboard.
    StackView.onActivated: page.takeKeyboard()
    // Hidden behind another tab, the page lets go of the keyboard, so what
    // is typed there never lands on this line.
    onVisibleChanged: {
        if (page.visible)
            page.takeKeyboard();
        else if (page.activeFocus)
            page.focus = false;
    }
    Component.onCompleted: {
        // BEG/END as the keypad was left.
        keypad.begModeOn = controller.begMode();
        page.takeKeyboard();
    }

    Keys.onPressed: event => {
        if (!page.visible)
            return;
        if (page.editKey(event)) {
            event.accepted = true;
            return;
        }
        // The financial and function keys: Alt (and Shift) and a letter, F1.
        const index = keypad.indexForShortcut(event.key, event.modifiers);
        if (index >= 0) {
            keypad.buttonClicked(index);
            event.accepted = true;
            return;
        }
        if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
            return; // shortcuts (Ctrl+1 ... Ctrl+4) are the window's
        const title = keypad.titleForKeyboard(event.key, event.text, keypad.npvModeOn);
        if (title.length > 0) {
            keypad.pressTitle(title);
            event.accepted = true;
        } else if (/^[a-z]$/.test(event.text)) {
            controller.typeLetters(event.text);
            event.accepted = true;
        }
    }

    header: TitleBar {
        title: page.title

        Label {
            objectName: "modeIndicators"
            rightPadding: 8
            color: "#F2A93B"
            font.pixelSize: 13
            font.bold: true
            text: {
                let modes = "";
                if (keypad.secondaryButtonsOn)
                    modes += "2ND  ";
                if (keypad.npvModeOn)
                    modes += "CF  ";
                if (keypad.begModeOn)
                    modes += "BEG  ";
                if (controller.waitingCompute)
                    modes += "CPT";
                return modes.trim();
            }
        }
    }

    // On a wide window display and keys keep a keypad's proportions, centred.
    Rectangle {
        id: screen

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, AppTheme.maximumKeypadWidth)
        anchors.top: parent.top
        height: Math.max(120, parent.height * 0.2)
        color: AppTheme.display

        TextInput {
            id: line

            property bool syncing: false

            function sync() {
                syncing = true;
                text = controller.expression;
                select(controller.selectionStart, controller.selectionEnd);
                syncing = false;
            }

            objectName: "expressionLine"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.margins: 12
            color: "white"
            selectionColor: "#5B7088"
            font.pixelSize: 20
            font.family: "monospace"
            readOnly: true
            // Touch and mouse set the caret and selection; the keyboard
            // stays with the page.
            activeFocusOnPress: false
            cursorVisible: true
            persistentSelection: true
            selectByMouse: true
            clip: true
            Accessible.name: qsTr("Expression")
            cursorDelegate: Rectangle {
                width: 2
                color: "#F2A93B"

                SequentialAnimation on opacity {
                    loops: Animation.Infinite
                    running: page.activeFocus || line.activeFocus
                    NumberAnimation {
                        to: 0
                        duration: 500
                    }
                    NumberAnimation {
                        to: 1
                        duration: 500
                    }
                }
            }
            Component.onCompleted: sync()
            onSelectionStartChanged: if (!syncing)
                controller.setSelection(selectionStart, selectionEnd)
            onSelectionEndChanged: if (!syncing)
                controller.setSelection(selectionStart, selectionEnd)
            onCursorPositionChanged: if (!syncing && selectionStart === selectionEnd)
                controller.setSelection(cursorPosition, cursorPosition)

            Connections {
                target: controller
                function onExpressionChanged() {
                    line.sync();
                }
            }
        }

        Label {
            objectName: "resultLabel"
            anchors.left: parent.left
            anchors.bottom: parent.bottom
            anchors.margins: 12
            text: controller.resultLabel
            color: "#F2A93B"
            font.pixelSize: 18
            font.bold: true
        }

        // Why the display shows no number, or the other rates that fit.
        Text {
            objectName: "note"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: display.top
            anchors.leftMargin: 12
            anchors.rightMargin: 12
            visible: text.length > 0
            horizontalAlignment: Text.AlignRight
            text: controller.note
            color: "#F2A93B"
            font.pixelSize: 12
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            id: display

            objectName: "display"
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.margins: 12
            width: parent.width * 0.78
            height: parent.height * 0.55
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignBottom
            text: controller.displayNumber
            color: "white"
            font.pixelSize: 48
            minimumPixelSize: 16
            fontSizeMode: Text.Fit
            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("Display %1").arg(text)
        }
    }

    // The system clipboard, through an invisible text field.
    TextInput {
        id: clipboard

        function copyText(text) {
            clipboard.text = text;
            clipboard.selectAll();
            clipboard.copy();
            clipboard.text = "";
        }

        function pastedText() {
            clipboard.text = "";
            clipboard.paste();
            const pasted = clipboard.text;
            clipboard.text = "";
            return pasted;
        }

        visible: false
        enabled: false
    }

    Item {
        id: grid

        objectName: "keyGrid"
        anchors.left: screen.left
        anchors.right: screen.right
        anchors.top: screen.bottom
        anchors.bottom: parent.bottom

        Repeater {
            model: keypad

            delegate: KeypadKey {
                id: keyItem

                readonly property rect cell: {
                    grid.width;
                    grid.height;
                    return keypad.keyRect(index, grid.width, grid.height);
                }

                objectName: "key_" + index
                x: cell.x
                y: cell.y
                width: cell.width
                height: cell.height
                onClicked: keypad.buttonClicked(index)
            }
        }
    }
}
