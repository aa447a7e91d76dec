import QtQuick
import QtQuick.Controls
import QtTest
import Tallyvane
import TallyvaneTest

// One user session through the whole app on a fresh home: every tab and
// calculator, three saved reports and a mail, the keypad, history and help,
// every About page. The steps run in their names' order on one window, and
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
    // the keypad's keys and its expression line take typed keys instead,
    // and the tabs have their shortcuts.
    function expectAccessible(screen) {
        compare(TestFiles.accessibilityProblems(window, ["key_", "expressionLine", "tab_"]), [], screen);
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
        mouseClick(field);
        field.selectAll();
        for (const c of text)
            keyClick(c === "." ? Qt.locale().decimalPoint : c);
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
        compare(openPopup().request.title, "Calculation Saved");
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

    function test_1_everyFormCalculator() {
        clickTab(0);
        const catalogue = findChild(stack(0).currentItem, "functionList");
        compare(catalogue.count, 8);

        let screen = clickRow(0, "functionList", 0);
        compare(screen.title, "TVM Calculator");
        fill(screen, {
            "pvField": "1000",
            "pmtField": "100",
            "interestField": "5",
            "periodField": "10"
        });
        mouseClick(findChild(screen, "solveFV"));
        verify(findChild(screen, "fvField").text.length > 0);
        screen.scrollToEnd();
        wait(20);
        mouseClick(findChild(screen, "exportButton"));
        choose("Send Email");
        compare(TestFiles.mails().length, 1, "the report went to the mail composer");
        compare(TestFiles.mails()[0].attachments.length, 2, "report text and chart");
        readDescriptionAndLeave(screen);

        screen = clickRow(0, "functionList", 1);
        fill(screen, {
            "investmentField": "1000",
            "futureValueField": "1250",
            "yearsField": "2"
        });
        compare(findChild(screen, "roiResultLabel").text, "25%");
        saveReport(screen, "Kitchen");
        readDescriptionAndLeave(screen);

        screen = clickRow(0, "functionList", 2);
        fill(screen, {
            "principalAmountField": "1000",
            "annualRateField": "6",
            "periodField": "1",
            "paymentField": "100"
        });
        compare(findChild(screen, "balanceResultLabel").text, local("2295.234"));
        readDescriptionAndLeave(screen);

        screen = clickRow(0, "functionList", 3);
        fill(screen, {
            "periodField": "2",
            "discountRateField": "10",
            "cashField0": "-100",
            "cashField1": "110"
        });
        verify(findChild(screen, "irrResultLabel").text.endsWith("%"));
        readDescriptionAndLeave(screen);

        screen = clickRow(0, "functionList", 4);
        fill(screen, {
            "billField": "100",
            "tipPercentField": "15",
            "numberOfPeopleField": "2",
            "salesTaxField": "0"
        });
        readDescriptionAndLeave(screen);

        screen = clickRow(0, "functionList", 5);
        fill(screen, {
            "faceValueField": "1000",
            "couponRateField": "5",
            "yieldToMaturityField": "5",
            "yearsField": "10"
        });
        compare(findChild(screen, "bondValueLabel").text, "1000");
        saveReport(screen, "Bonds");
        readDescriptionAndLeave(screen);
    }

    function test_2_everyStockCalculator() {
        const inputs = [{
                "assetPriceField": "42",
                "exercisePriceField": "40",
                "timeToExpirationField": "0.5",
                "standardDeviationField": "20",
                "riskFreeRateField": "10"
            }, {
                "periodField": "2",
                "probabilityField0": "50",
                "probabilityField1": "50",
                "stockAField0": "10",
                "stockAField1": "20"
            }, {
                "dividendField": "2",
                "returnRateField": "10",
                "growthRateField": "5"
            }, {
                "dividendField": "2",
                "periodField": "2",
                "returnRateField0": "10",
                "growthRateField0": "20"
            }, {
                "riskFreeRateField": "4",
                "marketReturnField": "9",
                "betaField": "1.3"
            }, {
                "costOfEquityField": "12",
                "equityField": "600",
                "costOfDebtField": "8",
                "debtField": "400",
                "corporateTaxRateField": "30"
            }, {
                "initialValueField": "100",
                "endingValueField": "110",
                "incomeField": "5"
            }];
        clickRow(0, "functionList", 6);
        compare(findChild(stack(0).currentItem, "stockList").count, inputs.length);
        for (let row = 0; row < inputs.length; ++row) {
            const screen = clickRow(0, "stockList", row);
            if (row === 2) {
                mouseClick(findChild(screen, "dividendTypeButton"));
                choose("Current (D0)");
            }
            fill(screen, inputs[row]);
            if (row === 4) {
                mouseClick(findChild(screen, "stockReturnButton"));
                compare(findChild(screen, "stockReturnField").text, local("10.5"));
                saveReport(screen, "Market");
            }
            readDescriptionAndLeave(screen);
        }
        goBack(0);

        // Loans and More: the rate conversion and breakeven screens solve;
        // the calculators still to come say so.
        clickRow(0, "functionList", 7);
        compare(findChild(stack(0).currentItem, "loansList").count, 5);
        let screen = clickRow(0, "loansList", 2);
        fill(screen, {
            "nominalRateField": "6",
            "compoundingPerYearField": "12"
        });
        mouseClick(findChild(screen, "effectiveRateButton"));
        compare(findChild(screen, "effectiveRateField").text, local("6.168"));
        readDescriptionAndLeave(screen);
        screen = clickRow(0, "loansList", 4);
        fill(screen, {
            "fixedCostField": "10000",
            "variableCostField": "15",
            "priceField": "40"
        });
        mouseClick(findChild(screen, "quantityButton"));
        compare(findChild(screen, "quantityField").text, "400");
        readDescriptionAndLeave(screen);
        screen = clickRow(0, "loansList", 0);
        fill(screen, {
            "loanAmountField": "200000",
            "annualRateField": "6.5",
            "yearsField": "30"
        });
        compare(findChild(screen, "paymentLabel").text, local("1264.14"));
        compare(findChild(screen, "scheduleList").count, 360);
        readDescriptionAndLeave(screen);
        screen = clickRow(0, "loansList", 1);
        fill(screen, {
            "rowCountField": "2",
            "rateField": "10"
        });
        screen.controller.dateChanged(0, "2025-01-01");
        screen.controller.amountChanged(0, "-100");
        screen.controller.dateChanged(1, "2026-01-01");
        screen.controller.amountChanged(1, "110");
        compare(findChild(screen, "xirrLabel").text, "10%");
        readDescriptionAndLeave(screen);
        goBack(0);
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
        compare(topics, 5);
        for (let topic = 0; topic < topics; ++topic) {
            const detail = clickRow(1, "helpTopics", topic);
            verify(findChild(detail, "helpText").length > 100, detail.title + " has its text");
            goBack(1);
        }
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
        const screen = settle(0);
        compare(screen.title, "ROI Calculator");
        tabTo(findChild(screen, "investmentField"));
        keyClick(Qt.Key_4);
        keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_Space); // the ± of the same field
        compare(findChild(screen, "investmentField").text, "-4");
        tabTo(findChild(screen, "backButton"));
        keyClick(Qt.Key_Space);
        tryCompare(stack(0), "depth", 1);
    }
}
