import QtQuick
import QtQuick.Controls
import QtTest
import Tallyvane
import TallyvaneTest

// The Functions tab in detail: the catalogue's rows, TVM's choice sheets and
// NPV's cash-flow rows. The tour walks every other calculator and saves
// through the export sheet; results are checked on the controllers.
TestCase {
    id: test

    name: "FunctionScreens"
    when: windowShown

    property var window
    property var stack

    function init() {
        TestFiles.reset();
        const component = Qt.createComponent("qrc:/Tallyvane/app/Main.qml");
        verify(component.status === Component.Ready, component.errorString());
        window = component.createObject(null);
        tryCompare(window, "visible", true);
        stack = findChild(window.contentItem, "functionsStack");
        tryVerify(() => findChild(stack.currentItem, "functionList").height > 300, 5000, "laid out");
    }

    function cleanup() {
        window.destroy();
        wait(0);
    }

    function openRow(row) {
        const list = findChild(stack.currentItem, "functionList");
        waitForItemPolished(list);
        const item = list.itemAtIndex(row);
        mouseClick(item);
        tryCompare(stack, "busy", false);
        return stack.currentItem;
    }

    function typeInto(screen, outlet, text) {
        const field = findChild(screen, outlet);
        verify(field, "no field " + outlet);
        field.forceActiveFocus();
        field.selectAll();
        for (const c of text)
            keyClick(c === "." ? Qt.locale().decimalPoint : c);
    }

    function label(screen, outlet) {
        return findChild(screen, outlet).text;
    }

    function local(text) {
        return text.replace(".", Qt.locale().decimalPoint);
    }

    function test_catalogueRowsFillANinthEach() {
        const list = findChild(stack.currentItem, "functionList");
        fuzzyCompare(list.itemAtIndex(0).height, list.height / 9, 0.01);
        compare(list.itemAtIndex(7).title, "Loans and More");
    }

    function test_tvmSolvesAndChoosesFromSheets() {
        const screen = openRow(0);
        compare(screen.title, "TVM Calculator");
        typeInto(screen, "pvField", "1000");
        typeInto(screen, "interestField", "12");
        typeInto(screen, "periodField", "12");
        mouseClick(findChild(screen, "frequencyButton"));
        let request = Presenter.pendingRequest();
        compare(request.title, "Frequency");
        Presenter.answer(request.id, "Monthly");
        window.presenterHost.dismissAll();
        mouseClick(findChild(screen, "modeButton"));
        request = Presenter.pendingRequest();
        compare(request.actions.map(a => a.title), ["Cancel", "BEG", "END"]);
        Presenter.answer(request.id, "END");
        window.presenterHost.dismissAll();
        mouseClick(findChild(screen, "solveFV"));
        compare(findChild(screen, "fvField").text, local("1126.825"));
    }

    function test_npvTableRowsOnTheScreen() {
        const screen = openRow(3);
        compare(screen.title, "NPV Calculator");
        typeInto(screen, "periodField", "5");
        typeInto(screen, "discountRateField", "8");
        const flows = ["-5000", "1500", "2000", "2500", "1000"];
        for (let i = 0; i < flows.length; ++i)
            typeInto(screen, "cashField" + i, flows[i]);
        compare(label(screen, "npvResultLabel"), local("823.177"));
        compare(label(screen, "irrResultLabel"), local("15.322%"));
        const sixth = findChild(screen, "cashField5");
        verify(!sixth || !sixth.visible, "rows follow the period");
        typeInto(screen, "periodField", "2");
        typeInto(screen, "periodField", "5");
        compare(findChild(screen, "cashField4").text, "1000", "hidden rows keep their values");
        mouseClick(findChild(screen, "cashField4Sign"));
        compare(findChild(screen, "cashField4").text, "-1000");
        compare(label(screen, "npvResultLabel"), local("823.177"), "a sign change computes nothing");
    }

    // Return walks down the cash-flow rows, the results can be copied, and a
    // text that is no number is marked (it still counts as 0).
    function test_npvRowsReturnCopyAndUnreadableHint() {
        const screen = openRow(3);
        typeInto(screen, "periodField", "3");
        typeInto(screen, "discountRateField", "10");
        typeInto(screen, "cashField0", "-100");
        keyClick(Qt.Key_Return);
        verify(findChild(screen, "cashField1").activeFocus, "Return goes to the next row");
        for (const c of "60")
            keyClick(c);
        keyClick(Qt.Key_Return);
        verify(findChild(screen, "cashField2").activeFocus);
        for (const c of "60")
            keyClick(c);
        compare(label(screen, "npvResultLabel"), local("4.132"));

        const result = findChild(screen, "npvResultLabel");
        result.selectAll();
        result.copy();
        result.deselect();
        compare(TestFiles.clipboardText(), local("4.132"));

        const rate = findChild(screen, "discountRateField");
        const hint = findChild(screen, "discountRateFieldHint");
        verify(!hint.visible);
        typeInto(screen, "discountRateField", "$12,000");
        verify(hint.visible, "an unreadable field is marked");
        compare(label(screen, "npvResultLabel"), local("20"), "and counts as 0");
        typeInto(screen, "discountRateField", "10");
        verify(!hint.visible);
        verify(rate.text === "10");
    }
}
