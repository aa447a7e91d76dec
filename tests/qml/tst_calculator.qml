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

        function test_tapsEvaluateAnExpression() {
            tap(["1", "+", "2", "*", "3", "="]);
            compare(findChild(page, "expressionLine").text, "1+2*3");
            compare(display(), "7");
            compare(findChild(page, "resultLabel").text, "Ans");
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
    }
}
