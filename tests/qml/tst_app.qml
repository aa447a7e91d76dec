import QtQuick
import QtQuick.Controls
import QtTest
import Tallyvane
import TallyvaneTest

// The whole window: tabs, the reports tab and the presenter host; the
// Functions tab's catalogue rows and NPV's cash-flow rows. The tour walks
// every calculator, chooses from sheets and saves through the export sheet;
// results are checked in tests/vectors.
TestCase {
    id: test

    name: "AppWindow"
    when: windowShown

    property var window
    property var functions

    function init() {
        TestFiles.reset();
        const component = Qt.createComponent("qrc:/Tallyvane/app/Main.qml");
        verify(component.status === Component.Ready, component.errorString());
        window = component.createObject(null);
        verify(window);
        tryCompare(window, "visible", true);
        functions = findChild(window.contentItem, "functionsStack");
        tryVerify(() => findChild(functions.currentItem, "functionList").height > 300, 5000, "laid out");
        tryVerify(() => window.presenterHost !== null, 5000, "the presenter host is made after the first frame");
    }

    function cleanup() {
        window.destroy();
        wait(0);
    }

    function openRow(row) {
        const list = findChild(functions.currentItem, "functionList");
        waitForItemPolished(list);
        const item = list.itemAtIndex(row);
        mouseClick(item);
        tryCompare(functions, "busy", false);
        return functions.currentItem;
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

    function rowTitles(list) {
        const titles = [];
        for (let i = 0; i < list.count; ++i) {
            list.positionViewAtIndex(i, ListView.Contain);
            titles.push(list.itemAtIndex(i).title);
        }
        return titles;
    }

    // Reports saved elsewhere show when the tab is shown, newest first; Edit
    // deletes a row (its file stays) and Undo puts it back; a row opens its
    // report over the tab bar, and the report mails again.
    function test_reportsTabListsEditsAndOpensReports() {
        const tabBar = window.footer;
        verify(tabBar.visible);
        TestFiles.saveReport("one");
        const keptFile = TestFiles.saveReport("two");
        const path = TestFiles.saveReport("three");
        mouseClick(findChild(tabBar, "tab_Reports"));
        compare(window.reports.count, 3, "reloaded when the tab is shown");
        const stack = findChild(window.contentItem, "reportsStack");
        const page = stack.currentItem;
        const list = findChild(page, "reportList");
        waitForItemPolished(list);
        compare(rowTitles(list), ["three", "two", "one"]);
        // A report that does not name its calculator is known by the short
        // label it carries ("Roi").
        compare(list.itemAtIndex(0).calculatorTitle, "Return on Investment Calculator");
        verify(Qt.colorEqual(list.itemAtIndex(0).colorTag, "#1FDA9A"));
        const edit = findChild(page, "editButton");
        compare(edit.text, "Edit");
        mouseClick(edit);
        compare(edit.text, "Done");
        const row = list.itemAtIndex(1);
        const deleteButton = findChild(row, "deleteButton");
        verify(deleteButton.visible);
        mouseClick(deleteButton);
        compare(list.count, 3, "the minus only reveals the Delete button");
        verify(row.confirming);
        mouseClick(findChild(row, "confirmDeleteButton"));
        compare(rowTitles(list), ["three", "one"]);
        compare(TestFiles.storedCount(), 2);
        verify(TestFiles.exists(keptFile));
        const undoBar = findChild(page, "undoBar");
        verify(undoBar.visible);
        mouseClick(findChild(undoBar, "undoButton"));
        compare(rowTitles(list), ["three", "two", "one"]);
        compare(TestFiles.storedCount(), 3);
        verify(!undoBar.visible);
        mouseClick(edit);
        mouseClick(list.itemAtIndex(0));
        tryCompare(stack, "depth", 2);
        tryCompare(stack, "busy", false);
        verify(!tabBar.visible);
        compare(stack.currentItem.reportFilePath, path);
        const text = findChild(stack.currentItem, "reportText").text;
        verify(text.startsWith("Financial Report - Return on Investment\nDate: 05-03-2024 "));
        verify(text.endsWith("Investment: 1000\nRoi: 12%\n"));
        mouseClick(findChild(stack.currentItem, "exportButton"));
        const request = Presenter.pendingRequest();
        compare(request.title, "Export");
        compare(request.kind, "sheet");
        Presenter.answer(request.id, "Send Email");
        window.presenterHost.dismissAll();
        compare(TestFiles.draftCount(), 1);
        const name = path.substring(path.lastIndexOf("/") + 1);
        verify(TestFiles.lastDraft().indexOf("filename=\"" + name + ".txt\"") >= 0, "doubled .txt");
        verify(TestFiles.exists(path));
        mouseClick(findChild(stack.currentItem, "backButton"));
        tryCompare(stack, "depth", 1);
        verify(tabBar.visible);
    }

    // Two reports of one calculator, checked in Compare, open side by side
    // with the differing rows marked and the results' differences; a report
    // opens again in its calculator with its inputs and results.
    function test_compareReportsAndOpenOneInItsCalculator() {
        TestFiles.saveCalculatorReport("roi", "Plan A", {
            "investmentField": "1000",
            "futureValueField": "1250",
            "yearsField": "2"
        });
        TestFiles.saveCalculatorReport("roi", "Plan B", {
            "investmentField": "1000",
            "futureValueField": local("1500.5"),
            "yearsField": "2"
        });
        window.showTab(2);
        const stack = findChild(window.contentItem, "reportsStack");
        const page = stack.currentItem;
        const list = findChild(page, "reportList");
        waitForItemPolished(list);
        compare(rowTitles(list), ["Plan B", "Plan A"]);
        compare(findChild(list.itemAtIndex(0), "calculatorTitle").text, "Return on Investment Calculator", "the calculator's full name");
        mouseClick(findChild(page, "compareButton"));
        const chosen = findChild(page, "compareChosenButton");
        verify(chosen.visible);
        verify(!chosen.enabled, "one report is no comparison");
        mouseClick(list.itemAtIndex(1));
        mouseClick(findChild(list.itemAtIndex(0), "compareCheck0"));
        compare(page.chosen, [1, 0]);
        verify(chosen.enabled);
        mouseClick(chosen);
        tryCompare(stack, "depth", 2);
        tryCompare(stack, "busy", false);
        const comparing = stack.currentItem;
        compare(comparing.controller.problem, "");
        compare(comparing.controller.reportTitles, ["Plan A", "Plan B"]);
        const rows = comparing.controller.rows;
        const investment = rows.find(row => row.values[0] === "1000");
        verify(investment && !investment.differs, "the same investment is no difference");
        const roi = rows.find(row => row.result && row.differs);
        verify(roi, "a result differs");
        compare(roi.differences.length, 1);
        verify(findChild(comparing, "compareRow0").visible);
        mouseClick(findChild(comparing, "backButton"));
        tryCompare(stack, "depth", 1);

        // Plan B opens in the ROI calculator with its inputs and result.
        mouseClick(findChild(page, "compareButton"));
        window.openReport(window.reports.filePathAt(0));
        tryCompare(stack, "busy", false);
        const detail = stack.currentItem;
        const open = findChild(detail, "openInCalculatorButton");
        verify(open.visible);
        mouseClick(open);
        tryCompare(functions, "busy", false);
        compare(window.currentStack, functions, "the Functions tab shows the calculator");
        const screen = functions.currentItem;
        compare(screen.controller.view.texts["futureValueField"], local("1500.5"));
        compare(screen.controller.view.texts["roiResultLabel"], local("50.05") + "%", "(1500.5 - 1000) / 1000");
    }

    function test_tabBarStaysForListsAndAboutPagesAndEscapeGoesBack() {
        const tabBar = window.footer;
        window.openScreen("StockTableController", "");
        tryCompare(functions, "busy", false);
        verify(tabBar.visible, "the stock list keeps the tabs");
        window.openScreen("CapmController", "");
        tryCompare(functions, "busy", false);
        verify(!tabBar.visible, "a calculator screen takes the window");
        keyClick(Qt.Key_Escape);
        tryCompare(functions, "depth", 2);
        verify(tabBar.visible);
        keyClick(Qt.Key_Left, Qt.AltModifier);
        tryCompare(functions, "depth", 1);
        window.showTab(3);
        const about = findChild(window.contentItem, "aboutStack");
        about.push(Qt.createComponent("qrc:/Tallyvane/app/about/SupportPage.qml"), {}, StackView.Immediate);
        verify(tabBar.visible, "About's pages keep the tabs");
    }

    // The host of sheets and alerts is not part of the first frame: a
    // question asked before it is made makes it at once and is shown by
    // it, once.
    function test_aQuestionAskedBeforeThePresenterHostIsShown() {
        const early = Qt.createComponent("qrc:/Tallyvane/app/Main.qml").createObject(null);
        verify(early);
        compare(early.presenterHost, null, "not made with the window");
        const screen = early.openScreen("TvmController");
        screen.controller.openChoice("modeButton");
        verify(early.presenterHost !== null, "made by the question");
        compare(early.presenterHost.openPopups.length, 1);
        compare(early.presenterHost.openPopups[0].request.id, Presenter.pendingRequest().id);
        early.presenterHost.dismissAll();
        tryCompare(Presenter, "pendingCount", 0);
        early.destroy();
    }

    // On a wide window a sheet is a popover at its button, with an arrow;
    // a sheet that belongs to no button (the report's export sheet) is
    // centred and Escape cancels it; on a narrow one it is a bottom sheet.
    function test_sheetsSitAtTheirButtonOnWideWindows() {
        window.width = 1000;
        window.height = 800;
        tryCompare(window.presenterHost, "wide", true);
        window.openScreen("TvmController", "");
        tryCompare(functions, "busy", false);
        const button = findChild(functions.currentItem, "modeButton");
        functions.currentItem.controller.openChoice("modeButton");
        const sheet = window.presenterHost.openPopups[0];
        tryCompare(sheet, "opened", true);
        const at = button.mapToItem(sheet.parent, 0, 0, button.width, button.height);
        verify(sheet.popover);
        compare(sheet.y, at.y + at.height + window.presenterHost.arrowSize);
        verify(sheet.x <= at.x + at.width / 2 && sheet.x + sheet.width >= at.x + at.width / 2, "under its button");
        verify(findChild(sheet.background, "popoverArrow").visible);
        keyClick(Qt.Key_Escape);
        tryCompare(Presenter, "pendingCount", 0);
        TestFiles.saveReport("Centred");
        window.reports.loadReportArray();
        window.showTab(2);
        window.openReport(window.reports.filePathAt(0));
        const reports = findChild(window.contentItem, "reportsStack");
        tryCompare(reports, "busy", false);
        reports.currentItem.controller.actionClicked();
        compare(Presenter.pendingCount, 1);
        compare(window.presenterHost.openPopups.length, 1);
        const centred = window.presenterHost.openPopups[0];
        compare(centred.objectName, "actionSheet");
        tryCompare(centred, "opened", true);
        verify(!centred.popover);
        compare(centred.x, (centred.parent.width - centred.width) / 2);
        keyClick(Qt.Key_Escape);
        tryCompare(Presenter, "pendingCount", 0);
        compare(TestFiles.draftCount(), 0, "a cancelled export sheet sends nothing");
        window.width = 412;
        tryCompare(window.presenterHost, "wide", false);
        reports.currentItem.controller.actionClicked();
        const bottom = window.presenterHost.openPopups[0];
        tryCompare(bottom, "opened", true);
        compare(bottom.y + bottom.height, bottom.parent.height);
        compare(bottom.width, bottom.parent.width);
        keyClick(Qt.Key_Escape);
    }

    // A choice's sheet spells its words out and marks the one its button
    // shows; the fields that only one choice uses show with that choice
    // alone (the factor, with the declining balance).
    function test_choicesSpelledOutAndTheCurrentOneMarked() {
        const screen = window.openScreen("DepreciationController");
        tryCompare(functions, "busy", false);
        const factor = findChild(screen, "factorField");
        verify(!factor.visible, "no factor for straight line");
        compare(findChild(screen, "methodButton").text, "Straight line (SL)  \u25BE");
        screen.controller.openChoice("methodButton");
        const sheet = window.presenterHost.openPopups[0];
        tryCompare(sheet, "opened", true);
        compare(findChild(sheet.contentItem, "choice_SL").text, "\u2713 Straight line (SL)");
        compare(findChild(sheet.contentItem, "choice_DDB").text, "Declining balance (DDB)");
        mouseClick(findChild(sheet.contentItem, "choice_DDB"));
        tryCompare(window.presenterHost.openPopups, "length", 0);
        verify(factor.visible, "the factor of the declining balance");
        compare(screen.controller.inputTexts().method, "DDB", "the word kept is the short one");
    }

    // Clipboard text set from outside the app.
    TextEdit {
        id: foreignClipboard

        visible: false
    }

    function setClipboard(text) {
        foreignClipboard.text = text;
        foreignClipboard.selectAll();
        foreignClipboard.copy();
    }

    // The Calculator tab takes the keyboard when shown and after every
    // return to it, without a click: typing, Enter, Backspace, Ctrl+C and
    // Ctrl+V go to the expression line.
    function test_calculatorTabTakesTheKeyboardWithoutAClick() {
        const typeText = text => {
            for (const c of text)
                keyClick(c);
        };

        // The tab's page is made when the tab is first shown.
        keyClick(Qt.Key_2, Qt.ControlModifier);
        compare(window.footer.currentIndex, 1);
        const stack = findChild(window.contentItem, "calculatorStack");
        const calculator = stack.currentItem;
        const line = findChild(calculator, "expressionLine");
        const display = findChild(calculator, "display");
        tryVerify(() => calculator.activeFocus, 1000, "the tab takes the keyboard when shown");
        typeText("12*3");
        compare(line.text, "12*3");
        keyClick(Qt.Key_Return);
        compare(display.text, "36");
        keyClick(Qt.Key_Backspace);
        compare(line.text, "12*");
        keyClick(Qt.Key_C, Qt.ControlModifier);
        keyClick(Qt.Key_V, Qt.ControlModifier);
        compare(line.text, "12*36", "Ctrl+C copied the display, Ctrl+V pasted it");
        setClipboard("x €+1,5 ×");
        keyClick(Qt.Key_V, Qt.ControlModifier);
        compare(line.text, "12*36x+1.5", "only what the line accepts");
        keyClick(Qt.Key_Home);
        keyClick(Qt.Key_Delete);
        keyClick(Qt.Key_End);
        keyClick(Qt.Key_Backspace);
        compare(line.text, "2*36x+1.");

        // Back from a calculator on the Functions tab.
        keyClick(Qt.Key_Escape);
        keyClick(Qt.Key_1, Qt.ControlModifier);
        window.openScreen("TvmController", "");
        tryCompare(functions, "busy", false);
        verify(!calculator.activeFocus, "the hidden tab lets go of the keyboard");
        keyClick(Qt.Key_9);
        compare(line.text, "", "keys on another tab stay there");
        keyClick(Qt.Key_2, Qt.ControlModifier);
        tryVerify(() => calculator.activeFocus, 1000, "back from a calculator");
        typeText("7*6");
        keyClick(Qt.Key_Enter);
        compare(display.text, "42");

        // Back from the history, after using a row.
        calculator.keypad.pressTitle("2ND");
        calculator.keypad.pressTitle("HIST");
        calculator.keypad.pressTitle("2ND");
        tryCompare(stack, "depth", 2);
        tryCompare(stack, "busy", false);
        mouseClick(findChild(stack.currentItem, "copyButton1"));
        mouseClick(findChild(stack.currentItem, "useButton0"));
        tryCompare(stack, "depth", 1);
        tryCompare(stack, "busy", false);
        tryVerify(() => calculator.activeFocus, 1000, "back from the history");
        compare(line.text, "36", "after \"=\", Use put the first result on a new line");
        keyClick(Qt.Key_V, Qt.ControlModifier);
        compare(line.text, "3642", "Copy put the second result on the clipboard");
        keyClick(Qt.Key_Escape);
        typeText("2+2");
        keyClick(Qt.Key_Return);
        compare(display.text, "4");
    }

    // The keypad under the mouse: 2ND switches the keys' titles until it is
    // pressed again, taps evaluate without taking the focus, the keys fit
    // their grid; on the keyboard Shift+* types "*" and the arrows move the
    // caret.
    function test_calculatorKeysAndKeyboard() {
        window.showTab(1);
        const page = findChild(window.contentItem, "calculatorStack").currentItem;
        tryVerify(() => page.activeFocus, 1000);
        const line = findChild(page, "expressionLine");
        const display = findChild(page, "display");
        const key = title => {
            const index = page.keypad.indexOfShownTitle(title);
            verify(index >= 0, "no key " + title);
            return findChild(page, "key_" + index);
        };
        const paren = key("(");
        mouseClick(key("2ND"));
        compare(paren.title, "SIN");
        verify(key("2ND").bordered);
        mouseClick(paren);
        compare(line.text, "sin(");
        compare(paren.title, "SIN", "2ND stays on");
        mouseClick(key("2ND"));
        compare(paren.title, "(");
        keyClick(Qt.Key_Escape);
        for (const title of ["1", "+", "2", "*", "3", "="])
            mouseClick(key(title));
        compare(line.text, "1+2*3");
        compare(display.text, "7");
        compare(findChild(page, "resultLabel").text, "Ans");
        verify(page.activeFocus, "the keys leave the focus where it was");
        const grid = findChild(page, "keyGrid");
        fuzzyCompare(key("0").width, 2 * key("1").width, 0.001);
        for (let i = 0; i < 44; ++i) {
            const k = findChild(page, "key_" + i);
            verify(k.x + k.width <= grid.width + 0.001, "key " + i);
            verify(k.y + k.height <= grid.height + 0.001, "key " + i);
        }
        keyClick(Qt.Key_Escape);
        keyClick(Qt.Key_4);
        keyClick(Qt.Key_Asterisk, Qt.ShiftModifier);
        keyClick(Qt.Key_2);
        keyClick(Qt.Key_5);
        keyClick(Qt.Key_Backspace);
        keyClick(Qt.Key_Return);
        compare(line.text, "4*2");
        compare(display.text, "8");
        for (let i = 0; i < 3; ++i)
            keyClick(Qt.Key_Left);
        keyClick(Qt.Key_1);
        compare(line.text, "14*2");
    }

    function test_calculatorTabOpensHistoryAndHelp() {
        window.showTab(1);
        const stack = findChild(window.contentItem, "calculatorStack");
        const calculator = stack.currentItem;
        const press = titles => titles.forEach(t => calculator.keypad.pressTitle(t));
        press(["6", "*", "7", "=", "2ND", "HIST"]);
        tryCompare(stack, "depth", 2);
        tryCompare(stack, "busy", false);
        verify(!window.footer.visible, "the tab bar hides for the keypad's history");
        const history = findChild(stack.currentItem, "historyList");
        compare(history.count, 1);
        mouseClick(findChild(stack.currentItem, "clearButton"));
        compare(history.count, 0);
        mouseClick(findChild(stack.currentItem, "backButton"));
        tryCompare(stack, "depth", 1);
        press(["2ND", "HIST"]);
        tryCompare(stack, "depth", 2);
        compare(findChild(stack.currentItem, "historyList").count, 1, "Clear was local to the screen");
        stack.pop(null, StackView.Immediate);
        press(["2ND", "HELP"]);
        tryCompare(stack, "depth", 2);
        tryCompare(stack, "busy", false);
        mouseClick(findChild(stack.currentItem, "helpTopic3"));
        tryCompare(stack, "depth", 3);
        compare(stack.currentItem.title, "CF Analysis");
    }

    function test_catalogueRowsFillANinthEach() {
        const list = findChild(functions.currentItem, "functionList");
        fuzzyCompare(list.itemAtIndex(0).height, list.height / 9, 0.01);
        compare(list.itemAtIndex(7).title, "Loans and More");
        // Each icon is read by name at its on-screen size (44 px on a
        // screen of one pixel a point); a name that is no icon gives none.
        for (let row = 0; row < 9; ++row) {
            const icon = findChild(list.itemAtIndex(row), "functionIcon");
            tryCompare(icon, "status", Image.Ready);
            compare(icon.implicitWidth, 44, "row " + row);
        }
        ignoreWarning(new RegExp("Failed to get image from provider"));
        const missing = createTemporaryQmlObject("import QtQuick; Image { source: \"image://icons/../icons/tvm\" }", test);
        tryCompare(missing, "status", Image.Error);
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
        // but greys the results and says how to update them; Return in the
        // field (which keeps the focus) does: -646.883 and 808.030 are
        // the NPV of -5000, 1500, 2000, 2500, -1000 at 8 % and at -8 %.
        const notice = findChild(screen, "staleNotice");
        const npvResult = findChild(screen, "npvResultLabel");
        verify(notice.visible);
        compare(notice.text, "Press Return or edit a field to update");
        verify(Qt.colorEqual(npvResult.color, AppTheme.secondaryText));
        keyClick(Qt.Key_Return);
        compare(npvResult.text, local("-646.883"));
        verify(!notice.visible);
        verify(Qt.colorEqual(npvResult.color, AppTheme.accent));
        mouseClick(findChild(screen, "discountRateFieldSign"));
        verify(notice.visible);
        keyClick(Qt.Key_Return);
        compare(npvResult.text, local("808.03"));
        verify(!notice.visible);
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

    // A date that cannot be read marks its own row and blanks XIRR, with a
    // note naming the row; put right, XIRR is back. -100 on 2025-01-01 and
    // +110 on 2026-01-01, 365 days apart, have XIRR 10 % exactly.
    function test_datedCashFlowsMarkABadDateAndBlankXirr() {
        window.openScreen("LoansTableController", "");
        tryCompare(functions, "busy", false);
        window.openScreen("DatedCashFlowsController", "");
        tryCompare(functions, "busy", false);
        const screen = functions.currentItem;
        typeInto(screen, "rowCountField", "2");
        typeInto(screen, "dateField0", "2025-1-1");
        typeInto(screen, "amountField0", "-100");
        typeInto(screen, "dateField1", "2026-01-01");
        typeInto(screen, "amountField1", "110");
        compare(label(screen, "xirrLabel"), "10%");
        const hint = findChild(screen, "dateField1Hint");
        const note = findChild(screen, "xirrLabelNote");
        verify(!hint.visible);
        verify(!note.visible);
        typeInto(screen, "dateField1", "2025-02-30");
        verify(hint.visible, "the row's date is marked");
        compare(hint.text, "Not a date: use YYYY-MM-DD");
        verify(!findChild(screen, "dateField0Hint").visible, "and no other row");
        compare(label(screen, "xirrLabel"), "NaN%");
        verify(note.visible);
        compare(note.text, "Cash flow 1 cannot be read. Not a date: use YYYY-MM-DD");
        // A date picked from the calendar is taken as a typed one. The
        // calendar opens at the field's date; "›" goes a month on and a day
        // is clicked. By keys: Alt+Down opens it, Left goes a day back,
        // Page Up a month back, Return picks. XIRR of -100, then 110 396
        // days later: 1.1^(365/396) - 1.
        typeInto(screen, "dateField1", "2026-01-01");
        mouseClick(findChild(screen, "dateField1Calendar"));
        const popup = findChild(screen, "dateField1").parent.calendar;
        tryCompare(popup, "opened", true);
        compare(popup.grid.year * 100 + popup.grid.month, 202600, "January 2026");
        mouseClick(findChild(popup.contentItem, "nextMonth"));
        mouseClick(findChild(popup.grid, "day_1"));
        compare(findChild(screen, "dateField1").text, "2026-02-01");
        compare(label(screen, "xirrLabel"), local("9.182%"));
        keyClick(Qt.Key_Down, Qt.AltModifier);
        keyClick(Qt.Key_Left);
        keyClick(Qt.Key_PageUp);
        keyClick(Qt.Key_Return);
        compare(findChild(screen, "dateField1").text, "2025-12-31");
        typeInto(screen, "dateField1", "2026-01-01");
        verify(!hint.visible);
        verify(!note.visible);
        compare(label(screen, "xirrLabel"), "10%");
    }

    // A form laid out from its description makes room for the mark under a
    // field: the next field moves down instead of being drawn over.
    function test_describedFormRowsGrowWithTheirMarks() {
        window.openScreen("LoansTableController", "");
        tryCompare(functions, "busy", false);
        window.openScreen("BreakevenController", "");
        tryCompare(functions, "busy", false);
        const screen = functions.currentItem;
        const next = findChild(screen, "variableCostField");
        const hint = findChild(screen, "fixedCostFieldHint");
        const top = next.mapToItem(screen, 0, 0).y;
        typeInto(screen, "fixedCostField", "x");
        verify(hint.visible);
        tryVerify(() => next.mapToItem(screen, 0, 0).y >= top + hint.height, 1000, "the next field moves down below the mark");
    }

    // A plain form's date field marks a day that does not exist; a solve
    // then leaves the price blank, says which field, and draws no chart.
    // Put right, the price (PRICE's documented 94.63436162) and the chart of
    // the price against the yield are there.
    function test_datedBondDateFieldsAndChart() {
        window.openScreen("BondsTableController", "");
        tryCompare(functions, "busy", false);
        window.openScreen("DatedBondController", "");
        tryCompare(functions, "busy", false);
        const screen = functions.currentItem;
        typeInto(screen, "settlementField", "2008-02-30");
        typeInto(screen, "maturityField", "2017-11-15");
        typeInto(screen, "couponRateField", "5.75");
        typeInto(screen, "yieldField", "6.5");
        const hint = findChild(screen, "settlementFieldHint");
        verify(hint.visible);
        compare(hint.text, "Not a date: use YYYY-MM-DD");
        mouseClick(findChild(screen, "priceButton"));
        compare(findChild(screen, "priceField").text, "NaN");
        compare(findChild(screen, "priceFieldNote").text, "Settlement date cannot be read. Not a date: use YYYY-MM-DD");
        verify(!findChild(screen, "chart").parent.visible, "no chart without a bond");
        typeInto(screen, "settlementField", "2008-02-15");
        verify(!hint.visible);
        mouseClick(findChild(screen, "priceButton"));
        compare(findChild(screen, "priceField").text, local("94.634"));
        verify(!findChild(screen, "priceFieldNote").visible);
        const chart = findChild(screen, "chart");
        tryVerify(() => chart.parent.visible && chart.lineCount === 1, 1000, "the chart of the price against the yield");
    }
}
