import QtQuick
import QtQuick.Controls
import QtTest
import Tallyvane

// The keypad screen, pressed with the mouse and typed on the keyboard.
Item {
    id: root

    width: 412
    height: 780

    Component {
        id: calculatorPage

        CalculatorPage {
            width: root.width
            height: root.height
        }
    }

    TestCase {
        name: "CalculatorScreen"
        when: windowShown

        property var page

        function init() {
            page = createTemporaryObject(calculatorPage, root);
            page.forceActiveFocus();
        }

        function keyItem(title) {
            const index = page.keypad.indexOfShownTitle(title);
            verify(index >= 0, "no key " + title);
            return findChild(page, "key_" + index);
        }

        function tap(titles) {
            for (const title of titles)
                mouseClick(keyItem(title));
        }

        function display() {
            return findChild(page, "display").text;
        }

        function label() {
            return findChild(page, "resultLabel").text;
        }

        function local(text) {
            return text.replace(".", Qt.locale().decimalPoint);
        }

        function test_tapsEvaluateAnExpression() {
            tap(["1", "+", "2", "*", "3", "="]);
            compare(findChild(page, "expressionLine").text, "1+2*3");
            compare(display(), "7");
            compare(label(), "Ans");
        }

        function test_loanPaymentOnTheKeys() {
            tap(["1", "2", "P/Y", "1", "2", "C/Y", "3", "6", "0", "N", "6", "I/Y"]);
            tap(["2", "5", "0", "0", "0", "0", "PV", "0", "FV", "CPT", "PMT"]);
            compare(label(), "PMT");
            compare(display(), local("-1498.8764"));
        }

        function test_secondFunctionsChangeTheKeys() {
            const paren = keyItem("(");
            tap(["2ND"]);
            compare(paren.title, "SIN");
            verify(keyItem("2ND").bordered);
            mouseClick(paren);
            compare(findChild(page, "expressionLine").text, "sin(");
            compare(paren.title, "SIN", "2ND stays on");
            tap(["2ND"]);
            compare(paren.title, "(");
        }

        function test_cashFlowsAndIrr() {
            tap(["CF"]);
            compare(label(), "CF0");
            tap(["-", "1", "0", "0", "ENTER", "\u2193", "1", "1", "0", "ENTER", "CPT", "IRR"]);
            compare(label(), "IRR");
            compare(display(), local("0.1"));
        }

        function test_physicalKeyboard() {
            keyClick(Qt.Key_4);
            keyClick(Qt.Key_Asterisk, Qt.ShiftModifier);
            keyClick(Qt.Key_2);
            keyClick(Qt.Key_5);
            keyClick(Qt.Key_Backspace);
            keyClick(Qt.Key_Return);
            compare(findChild(page, "expressionLine").text, "4*2");
            compare(display(), "8");
            keyClick(Qt.Key_Left);
            keyClick(Qt.Key_Left);
            keyClick(Qt.Key_Left);
            keyClick(Qt.Key_1);
            compare(findChild(page, "expressionLine").text, "14*2");
        }

        function test_keysDoNotStealFocusAndFitTheGrid() {
            mouseClick(keyItem("7"));
            verify(page.activeFocus);
            const grid = findChild(page, "keyGrid");
            const zero = keyItem("0");
            fuzzyCompare(zero.width, 2 * keyItem("1").width, 0.001);
            for (let i = 0; i < 44; ++i) {
                const key = findChild(page, "key_" + i);
                verify(key.x + key.width <= grid.width + 0.001, "key " + i);
                verify(key.y + key.height <= grid.height + 0.001, "key " + i);
            }
        }

        function test_historyAndHelpAreRequested() {
            const history = signalSpy.createObject(root, {
                "target": page,
                "signalName": "historyRequested"
            });
            const help = signalSpy.createObject(root, {
                "target": page,
                "signalName": "helpRequested"
            });
            tap(["2ND", "HIST", "2ND", "HELP"]);
            compare(history.count, 1);
            compare(help.count, 1);
            history.destroy();
            help.destroy();
        }
    }

    Component {
        id: signalSpy

        SignalSpy {}
    }
}
