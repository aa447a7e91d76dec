import QtQuick
import QtQuick.Controls
import QtTest
import Tallyvane
import TallyvaneTest

// One user session through the whole app on a fresh home: every tab and
// every calculator of the registry, three saved reports and a mail, the
// keypad, history and help, every About page. The steps run in their names' order on one window, and
// each fails if anything printed a warning meanwhile.
TestCase {
    id: tour

    name: "Tour"
    when: windowShown

    property var window
    readonly property var stacks: window ? window.stacks : []

    function initTestCase() {
        TestFiles.reset();
        TestFiles.recordDesktop();
        const component = Qt.createComponent("qrc:/Tallyvane/app/Main.qml");
        verify(component.status === Component.Ready, component.errorString());
        window = component.createObject(null);
        tryCompare(window, "visible", true);
        waitForRendering(window.contentItem);
        tryVerify(() => window.presenterHost !== null, 5000, "the presenter host is made after the first frame");
        expectNoWarnings();
    }

    function cleanupTestCase() {
        window.destroy();
    }

    function cleanup() {
        wait(20); // lets a pending frame paint
        expectNoWarnings();
        // A failed step leaves the next one a clean start.
        window.presenterHost.dismissAll();
        for (const stack of window.stacks)
            stack.pop(null, StackView.Immediate);
    }

    function expectNoWarnings() {
        compare(TestFiles.takeWarnings(), [], "warnings printed");
    }

    // Every control of the shown screen has a name and is reached by Tab;
    // the keypad's expression line takes typed keys instead, a field's "±"
    // is pressed by F9 in the field, and the tabs have their shortcuts.
    function expectAccessible(screen) {
        compare(TestFiles.accessibilityProblems(window, ["expressionLine", "tab_", "*Sign"]), [], screen);
    }

    function local(text) {
        return text.replace(".", Qt.locale().decimalPoint);
    }

    function stack(tab) {
        return window.stacks[tab];
    }

    function settle(tab) {
        tryCompare(stack(tab), "busy", false);
        waitForItemPolished(stack(tab).currentItem);
        wait(20); // lets the new screen paint
        expectAccessible(stack(tab).currentItem.title);
        return stack(tab).currentItem;
    }

    function clickTab(index) {
        mouseClick(window.footer.itemAt(index));
        compare(window.footer.currentIndex, index);
        return settle(index);
    }

    function goBack(tab) {
        const depth = stack(tab).depth;
        mouseClick(findChild(stack(tab).currentItem, "backButton"));
        tryCompare(stack(tab), "depth", depth - 1);
        return settle(tab);
    }

    function clickRow(tab, listName, row) {
        const list = findChild(stack(tab).currentItem, listName);
        verify(list, "no list " + listName);
        waitForItemPolished(list);
        list.positionViewAtIndex(row, ListView.Contain);
        mouseClick(list.itemAtIndex(row));
        return settle(tab);
    }

    function typeInto(screen, outlet, text) {
        const field = findChild(screen, outlet);
        verify(field, "no field " + outlet);
        verify(field.visible, outlet + " is shown");
        clickInSight(field);
        field.selectAll();
        for (const c of text)
            keyClick(c === "." ? Qt.locale().decimalPoint : c);
    }

    // Clicks a control of a form after bringing it into sight, as a person
    // scrolls to it first (the form scrolls to the focused control).
    function clickInSight(control) {
        control.forceActiveFocus();
        mouseClick(control);
    }

    function fill(screen, values) {
        for (const outlet in values)
            typeInto(screen, outlet, values[outlet]);
    }

    function openPopup() {
        const popups = window.presenterHost.openPopups;
        compare(popups.length, 1, "one sheet or alert open");
        tryCompare(popups[0], "opened", true);
        return popups[0];
    }

    function choose(title) {
        const popup = openPopup();
        const button = findChild(popup.contentItem, "choice_" + title);
        verify(button, "no choice " + title);
        mouseClick(button);
        tryVerify(() => !window.presenterHost.openPopups.includes(popup), 5000, title + " closes its sheet");
    }

    // Export > Save, titled `title`, confirmed.
    function saveReport(screen, title) {
        mouseClick(findChild(screen, "exportButton"));
        compare(openPopup().request.title, "Export");
        choose("Save");
        tryCompare(window.presenterHost.openPopups, "length", 1);
        const alert = openPopup();
        compare(alert.request.title, "Report Title");
        const field = findChild(alert, "alertField");
        mouseClick(field);
        for (const c of title)
            keyClick(c);
        keyClick(Qt.Key_Return);
        tryCompare(window.presenterHost.openPopups, "length", 1);
        const saved = openPopup();
        compare(saved.request.title, "Calculation Saved");
        verify(findChild(saved.contentItem, "choice_OK").highlighted, "its only action is the default");
        keyClick(Qt.Key_Return);
        tryCompare(window.presenterHost.openPopups, "length", 0);
    }

    // Switches to the description and back, and returns to the list.
    function readDescriptionAndLeave(screen) {
        mouseClick(findChild(screen, "descriptionSegment"));
        tryVerify(() => findChild(screen, "descriptionText").visible);
        verify(findChild(screen, "descriptionText").text.length > 100, "the description has its text");
        screen.controller.segmentChanged(0);
        goBack(0);
    }

    // What the tour does on a calculator besides opening it, checking its
    // controls and reading its description, from calculators.json, keyed by
    // the registry's names: fields to type into ("fill", outlet: text), a
    // word to choose, controller calls (table cells), a button to press, a
    // field that must show the solve, results to check ("expect"), a list's
    // rows, a report to save under a title or to mail (with that many
    // attachments). A calculator without steps of its own here gets its
    // worked example typed in, as its description gives it.
    readonly property var steps: TestFiles.json("calculators.json")

    function typeExample(screen, name) {
        for (const step of Calculators.example(name)) {
            if (step.type === "field")
                typeInto(screen, step.outlet, step.value);
            else if (step.type === "choice") {
                clickInSight(findChild(screen, step.outlet));
                choose(step.value);
            } else if (step.type === "table")
                screen.controller.setTableInput(step.name, step.values);
            else
                screen.controller.solve(step.name);
        }
    }

    // Opens row `row` of `listName`, takes the calculator's steps, reads its
    // description and goes back to the list.
    function visit(listName, row, entry) {
        const screen = clickRow(0, listName, row);
        verify(screen.title.length > 0, entry.name + " has a title");
        const step = steps[entry.name] || {};
        if (!steps[entry.name])
            typeExample(screen, entry.name);
        if (step.choose) {
            clickInSight(findChild(screen, step.choose[0]));
            choose(step.choose[1]);
        }
        fill(screen, step.fill || {});
        for (const call of step.calls || [])
            screen.controller[call[0]](call[1], call[2]);
        if (step.press)
            clickInSight(findChild(screen, step.press));
        if (step.shown)
            verify(findChild(screen, step.shown).text.length > 0, step.shown + " shows the solve");
        const expected = step.expect || {};
        for (const outlet in expected)
            compare(findChild(screen, outlet).text, local(expected[outlet]), entry.name + " " + outlet);
        if (step.rows)
            compare(findChild(screen, step.rows[0]).count, step.rows[1]);
        if (step.save)
            saveReport(screen, step.save);
        if (step.mail) {
            screen.scrollToEnd();
            wait(20);
            mouseClick(findChild(screen, "exportButton"));
            choose("Send Email");
            compare(TestFiles.mails().length, 1, "the report went to the mail composer");
            compare(TestFiles.mails()[0].attachments.length, step.mail);
        }
        readDescriptionAndLeave(screen);
    }

    // Every calculator of the registry, in the catalogue's order: the
    // Functions tab's rows, then the stock, the loans, the bonds and the
    // business lists.
    // A calculator a list shows too (the bond, also among the bonds) is
    // visited on its own list only.
    function test_1_everyCalculator() {
        clickTab(0);
        const functions = Calculators.entries("functions");
        const lists = ["stock", "loans", "bonds", "business"];
        compare(findChild(stack(0).currentItem, "functionList").count, functions.length + lists.length);
        functions.forEach((entry, row) => visit("functionList", row, entry));
        lists.forEach((list, offset) => {
            clickRow(0, "functionList", functions.length + offset);
            const entries = Calculators.entries(list);
            compare(findChild(stack(0).currentItem, list + "List").count, entries.length);
            entries.forEach((entry, index) => {
                if (entry.home)
                    visit(list + "List", index, entry);
            });
            goBack(0);
        });
    }

    // An alert that offers a further step beside OK ("Schedule Saved":
    // Open Folder) draws OK as its default, and Return presses it: the
    // folder opens only when asked for.
    function test_2_alertDefaultIsWhatReturnPresses() {
        clickTab(0);
        const screen = window.openScreen("DepreciationController");
        screen.controller.editField("costField", "1000");
        screen.controller.editField("lifeField", "5");
        screen.controller.saveScheduleCsv();
        const popups = window.presenterHost.openPopups;
        compare(popups.length, 1);
        const alert = popups[0];
        tryCompare(alert, "opened", true);
        compare(alert.request.title, "Schedule Saved");
        verify(findChild(alert.contentItem, "choice_OK").highlighted, "OK is drawn as the default");
        verify(!findChild(alert.contentItem, "choice_Open Folder").highlighted);
        const opened = TestFiles.openedUrls().length;
        keyClick(Qt.Key_Return);
        tryCompare(window.presenterHost.openPopups, "length", 0);
        compare(TestFiles.openedUrls().length, opened, "Return only closed the alert");
    }

    function test_3_reportsNewestFirstAndDelete() {
        const page = clickTab(2);
        const list = findChild(page, "reportList");
        compare(list.count, 3);
        const titles = [0, 1, 2].map(i => list.itemAtIndex(i).title);
        compare(titles, ["Market", "Bonds", "Kitchen"]);
        const detail = clickRow(2, "reportList", 1);
        verify(findChild(detail, "reportText").text.indexOf("Financial Report") >= 0);
        mouseClick(findChild(detail, "exportButton"));
        choose("Send Email");
        compare(TestFiles.mails().length, 2);
        goBack(2);
        mouseClick(findChild(page, "editButton"));
        const row = list.itemAtIndex(2);
        mouseClick(findChild(row, "deleteButton"));
        verify(row.confirming);
        mouseClick(findChild(row, "confirmDeleteButton"));
        compare(list.count, 2);
        // Ctrl+Z puts it back while the Undo bar shows; deleted again.
        verify(findChild(page, "undoBar").visible);
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        compare(list.count, 3);
        verify(!findChild(page, "undoBar").visible);
        mouseClick(findChild(list.itemAtIndex(2), "deleteButton"));
        mouseClick(findChild(list.itemAtIndex(2), "confirmDeleteButton"));
        mouseClick(findChild(page, "editButton"));
        compare(list.count, 2);
        compare(TestFiles.storedCount(), 2);
    }

    function keyItem(page, title) {
        const index = page.keypad.indexOfShownTitle(title);
        verify(index >= 0, "no key " + title);
        return findChild(page, "key_" + index);
    }

    function tap(page, titles) {
        for (const title of titles) {
            if (/^[0-9.]+$/.test(title) && title.length > 1)
                tap(page, title.split(""));
            else
                mouseClick(keyItem(page, title));
        }
    }

    function test_4_keypadLoanAndIrr() {
        const page = clickTab(1);
        const display = findChild(page, "display");
        tap(page, ["12", "P/Y", "12", "C/Y", "360", "N", "6", "I/Y", "250000", "PV", "0", "FV", "CPT", "PMT"]);
        compare(display.text, local("-1498.8764"));
        compare(findChild(page, "resultLabel").text, "PMT");
        tap(page, ["CF"]);
        compare(findChild(page, "resultLabel").text, "CF0");
        tap(page, ["-", "100", "ENTER", "\u2193", "110", "ENTER", "CPT", "IRR"]);
        compare(display.text, local("0.1"));
        compare(findChild(page, "resultLabel").text, "IRR");
        tap(page, ["CF"]);
        tap(page, ["6", "*", "7", "=", "2ND", "HIST"]);
        const history = settle(1);
        verify(findChild(history, "historyList").count >= 1);
        goBack(1);
        tap(page, ["HELP"]);
        const help = settle(1);
        const topics = findChild(help, "helpTopics").count;
        compare(topics, 6, "five topics and the keyboard map");
        for (let topic = 0; topic < topics; ++topic) {
            const detail = clickRow(1, "helpTopics", topic);
            verify(findChild(detail, "helpText").length > 100, detail.title + " has its text");
            goBack(1);
        }
        goBack(1);
    }

    // Types `keys` on the keyboard: digits and "-" as themselves, the
    // keypad's other keys by their keyboard map ([key, modifiers]).
    function typeKeys(keys) {
        for (const k of keys) {
            if (typeof k === "string")
                for (const c of k)
                    keyClick(c === "." ? Qt.locale().decimalPoint : c);
            else
                keyClick(k[0], k[1] || Qt.NoModifier);
        }
    }

    // The loan payment and the IRR of test_4 again, by the keyboard alone:
    // Alt and a letter for the financial keys, Alt+Shift for their
    // cash-flow counterparts; then Tab walks the keys with a visible ring
    // and Space presses the one in focus.
    function test_4b_keypadByKeysOnly() {
        const page = clickTab(1);
        const display = findChild(page, "display");
        const alt = Qt.AltModifier;
        typeKeys(["12", [Qt.Key_Y, alt], "12", [Qt.Key_Y, alt | Qt.ShiftModifier], "360", [Qt.Key_N, alt], "6", [Qt.Key_I, alt], "250000", [Qt.Key_V, alt], "0", [Qt.Key_F, alt], [Qt.Key_C, alt], [Qt.Key_M, alt]]);
        compare(display.text, local("-1498.8764"), "PMT of 250,000 at 6 % over 360 months");
        compare(findChild(page, "resultLabel").text, "PMT");
        typeKeys([[Qt.Key_W, alt]]);
        compare(findChild(page, "resultLabel").text, "CF0");
        typeKeys(["-100", [Qt.Key_Return], [Qt.Key_Down, alt], "110", [Qt.Key_E, alt], [Qt.Key_C, alt], [Qt.Key_I, alt | Qt.ShiftModifier]]);
        compare(display.text, local("0.1"), "IRR of -100, 110");
        compare(findChild(page, "resultLabel").text, "IRR");
        typeKeys([[Qt.Key_W, alt]]);
        // Tab walks every key and comes round to the first (CPT), ringed,
        // with its key in the tooltip.
        let first = null;
        for (let i = 0; i < 80 && !first; ++i) {
            keyClick(Qt.Key_Tab);
            if (window.activeFocusItem && window.activeFocusItem.objectName === "key_0")
                first = window.activeFocusItem;
        }
        verify(first, "Tab reaches the keys");
        verify(first.visualFocus, "the focused key shows it");
        compare(first.hint, "CPT: Alt+C");
        keyClick(Qt.Key_Tab);
        compare(window.activeFocusItem.objectName, "key_1", "Tab goes on to ENTER");
        keyClick(Qt.Key_F1);
        const help = settle(1);
        compare(help.title, "Calculator Help");
        goBack(1);
    }

    function test_5_everyAboutPage() {
        let page = clickTab(3);
        compare(findChild(page, "appVersionLabel").text.length > 0, true);
        const rows = ["aboutRow0_1", "aboutRow0_2", "aboutRow1_0", "aboutRow1_1", "aboutRow1_2"];
        for (const row of rows)
            mouseClick(findChild(page, row));
        compare(TestFiles.openedUrls().length, 3, "privacy, terms and store pages");
        const subjects = TestFiles.mails().slice(2).map(m => m.subject);
        compare(subjects.length, 2, "invitation and feedback mails");
        compare(subjects[0], "Tallyvane Invitation");
        mouseClick(findChild(page, "aboutRow2_0"));
        const support = settle(3);
        typeInto(support, "nameField", "Ann");
        typeInto(support, "emailField", "ann@example.com");
        verify(findChild(support, "sendButton").visible);
        goBack(3);
        for (const row of ["aboutRow2_1", "aboutRow2_2", "aboutRow2_3"]) {
            mouseClick(findChild(page, row));
            const info = settle(3);
            verify(findChild(info, "pageText").text.length > 100, info.title + " has its text");
            page = goBack(3);
        }
    }

    function tabTo(item) {
        for (let press = 0; press < 60 && !item.activeFocus; ++press)
            keyClick(Qt.Key_Tab);
        verify(item.activeFocus, "Tab reaches " + item.objectName);
    }

    function test_6_keyboardOnly() {
        keyClick(Qt.Key_3, Qt.ControlModifier);
        compare(window.footer.currentIndex, 2);
        keyClick(Qt.Key_Tab, Qt.ControlModifier);
        compare(window.footer.currentIndex, 3);
        keyClick(Qt.Key_1, Qt.ControlModifier);
        compare(window.footer.currentIndex, 0);
        tabTo(findChild(stack(0).currentItem, "functionList"));
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        let screen = settle(0);
        compare(screen.title, "ROI Calculator");
        // The screen opens as the tour left it; Clear opens it afresh.
        verify(findChild(screen, "investmentField").text !== "", "the screen remembers");
        tabTo(findChild(screen, "clearButton"));
        keyClick(Qt.Key_Space);
        tryVerify(() => stack(0).currentItem !== screen && !stack(0).busy);
        screen = settle(0);
        compare(findChild(screen, "investmentField").text, "");
        tabTo(findChild(screen, "investmentField"));
        keyClick(Qt.Key_4);
        // F9 (or Ctrl+−) in the field flips its sign; Tab goes on to the
        // next field, not to the "±" beside it, so nothing typed is lost.
        keyClick(Qt.Key_F9);
        compare(findChild(screen, "investmentField").text, "-4");
        keyClick(Qt.Key_Minus, Qt.ControlModifier);
        compare(findChild(screen, "investmentField").text, "4");
        keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_5);
        compare(findChild(screen, "futureValueField").text, "5");
        tabTo(findChild(screen, "backButton"));
        keyClick(Qt.Key_Space);
        tryCompare(stack(0), "depth", 1);
    }
}
