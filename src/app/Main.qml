import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

ApplicationWindow {
    id: window

    // Screens that scripts/screenshots renders, in order. The two that end
    // in a failure or a mail come last: the screens they leave behind would
    // answer later reports of their calculator.
    readonly property var screenshotSteps: ["functions", "stock-list", "roi", "tip", "tvm-chart", "npv-chart", "bond", "cmp-chart", "black-scholes", "expected-return", "const-growth", "nonconst-growth", "capm", "wacc", "period-return", "roi-description", "roi-export-sheet", "roi-report-title", "calculator", "calculator-2nd", "calculator-cash-flow", "calculator-history", "calculator-help", "calculator-help-page", "calculator-store-alert", "reports", "report-detail", "report-export-sheet", "reports-editing", "reports-confirm-delete", "about", "about-support", "about-credits", "about-privacy", "about-terms", "roi-unreadable", "reports-undo", "roi-save-failed", "roi-mail-draft"]
    readonly property var stacks: [functionsStack, calculatorStack, reportsStack, aboutStack]
    readonly property StackView currentStack: stacks[tabBar.currentIndex]
    property alias reports: reportsModel
    readonly property alias presenterHost: presenterHost

    // Each tab's first page is made when the tab is first shown, or a moment
    // after start-up for the tabs not yet visited: the first frame only
    // waits for the shown tab.
    readonly property var tabPages: [catalogueComponent, calculatorPageComponent, reportListComponent, aboutPageComponent]

    function ensureTab(index) {
        const stack = stacks[index];
        if (!stack || stack.depth > 0)
            return;
        const page = stack.push(tabPages[index], index === 2 ? {
            "reports": reportsModel
        } : {}, StackView.Immediate);
        if (index === 1) {
            page.historyRequested.connect(() => calculatorStack.push(historyComponent, {
                "calculator": page.controller
            }));
            page.helpRequested.connect(() => calculatorStack.push(helpComponent));
        } else if (index === 2) {
            page.reportChosen.connect(filePath => openReport(filePath));
        } else if (index === 3) {
            page.supportRequested.connect(() => aboutStack.push(supportComponent));
            page.pageRequested.connect((title, source) => aboutStack.push(infoComponent, {
                "title": title,
                "source": source
            }));
        }
    }

    function showTab(index) {
        ensureTab(index);
        tabBar.currentIndex = index;
    }

    // Pushes the screen known by `identifier` onto the Functions stack.
    function openScreen(identifier, title) {
        const screens = {
            "TvmController": tvmComponent,
            "RoiController": roiComponent,
            "TipController": tipComponent,
            "BondController": bondComponent,
            "NpvController": npvComponent,
            "CmpController": cmpComponent,
            "ConstGrowthController": constGrowthComponent,
            "ExpReturnController": expReturnComponent,
            "NoncGrowthController": noncGrowthComponent,
            "BlackScholesController": blackScholesComponent,
            "CapmController": capmComponent,
            "WaccController": waccComponent,
            "PeriodReturnController": periodReturnComponent,
            "StockTableController": stockListComponent
        };
        const component = screens[identifier];
        if (component)
            functionsStack.push(component);
        else
            functionsStack.push(comingComponent, {
                "heading": title
            });
    }

    function openReport(filePath) {
        reportsStack.push(reportDetailComponent, {
            "reportFilePath": filePath
        });
    }

    // Opens a stock calculator over the stock list and fills it.
    function showStockScreenshot(identifier, values) {
        showTab(0);
        openScreen("StockTableController", "");
        openScreen(identifier, "");
        fillForm(functionsStack.currentItem, values);
    }

    // Types sample values into a calculator screen, one edit per field.
    function fillForm(screen, values) {
        const decimal = Qt.locale().decimalPoint;
        for (const outlet in values)
            screen.controller.editField(outlet, values[outlet].replace(".", decimal));
    }

    // Types a sample session on the keypad for the calculator screenshots.
    function showCalculatorScreenshot(name) {
        const calculator = calculatorStack.currentItem;
        const press = titles => titles.forEach(t => calculator.keypad.pressTitle(t));
        if (calculator.keypad.secondaryButtonsOn)
            press(["2ND"]);
        if (calculator.keypad.npvModeOn)
            press(["CF"]);
        press(["2ND", "RESET", "2ND", "CE"]);
        if (name === "calculator-cash-flow") {
            press(["CF", "-", "1", "0", "0", "0", "ENTER", "\u2193", "4", "5", "0", "ENTER", "\u2193", "3", "ENTER"]);
            return;
        }
        press(["1", "2", "P/Y", "1", "2", "C/Y", "3", "6", "0", "N", "6", "I/Y", "2", "5", "0", "0", "0", "0", "PV", "0", "FV", "CPT", "PMT"]);
        press(["(", "1", "+", "0", ".", "0", "6", "/", "1", "2", ")", "y\u02e3", "1", "2", "-", "1"]);
        if (name === "calculator-2nd")
            press(["2ND"]);
        else if (name === "calculator-history")
            press(["=", "2ND", "HIST", "2ND"]);
        else if (name === "calculator-help")
            press(["HELP"]);
        else if (name === "calculator-help-page") {
            press(["HELP"]);
            calculatorStack.push(helpDetailComponent, {
                "title": "Tvm Equations",
                "source": "tvm_equations"
            }, StackView.Immediate);
        } else if (name === "calculator-store-alert")
            press(["=", "STO"]);
    }

    // Brings up the screen called `name` for a screenshot.
    function showScreenshotStep(name) {
        presenterHost.dismissAll();
        for (let i = 0; i < stacks.length; ++i)
            ensureTab(i);
        for (const stack of stacks)
            stack.pop(null, StackView.Immediate);
        functionsStack.clear(StackView.Immediate);
        functionsStack.push(catalogueComponent, {}, StackView.Immediate);
        reportsStack.currentItem.editing = false;
        switch (name) {
        case "functions":
            showTab(0);
            break;
        case "stock-list":
            showTab(0);
            openScreen("StockTableController", "");
            break;
        case "roi-unreadable":
            showTab(0);
            openScreen("RoiController", "");
            fillForm(functionsStack.currentItem, {
                "investmentField": "$12,000",
                "futureValueField": "15900",
                "yearsField": "4"
            });
            break;
        case "roi":
        case "roi-description":
        case "roi-export-sheet":
        case "roi-report-title":
        case "roi-save-failed":
        case "roi-mail-draft":
            showTab(0);
            openScreen("RoiController", "");
            fillForm(functionsStack.currentItem, {
                "investmentField": "12000",
                "futureValueField": "15900",
                "yearsField": "4"
            });
            if (name === "roi-description")
                functionsStack.currentItem.controller.segmentChanged(1);
            else if (name === "roi-export-sheet")
                functionsStack.currentItem.controller.exportClicked();
            else if (name === "roi-report-title" || name === "roi-save-failed") {
                functionsStack.currentItem.controller.exportClicked();
                Presenter.answer(Presenter.pendingRequest().id, "Save");
                // The driver has blocked the documents folder for this one.
                if (name === "roi-save-failed")
                    Presenter.answer(Presenter.pendingRequest().id, "OK", "Solar panels");
            } else if (name === "roi-mail-draft") {
                // No mail program offscreen: the draft's place is shown.
                functionsStack.currentItem.controller.exportClicked();
                Presenter.answer(Presenter.pendingRequest().id, "Send Email");
            }
            break;
        case "npv-chart":
            showTab(0);
            openScreen("NpvController", "");
            fillForm(functionsStack.currentItem, {
                "periodField": "5",
                "discountRateField": "8"
            });
            functionsStack.currentItem.controller.setTableInput("cashArray", ["-5000", "1500", "2000", "2500", "1000"]);
            functionsStack.currentItem.scrollToEnd();
            break;
        case "bond":
            showTab(0);
            openScreen("BondController", "");
            fillForm(functionsStack.currentItem, {
                "faceValueField": "1000",
                "couponRateField": "10",
                "yieldToMaturityField": "8",
                "yearsField": "10"
            });
            break;
        case "cmp-chart":
            showTab(0);
            openScreen("CmpController", "");
            fillForm(functionsStack.currentItem, {
                "principalAmountField": "10000",
                "annualRateField": "5",
                "periodField": "10",
                "paymentField": "200"
            });
            functionsStack.currentItem.scrollToEnd();
            break;
        case "black-scholes":
            showStockScreenshot("BlackScholesController", {
                "assetPriceField": "42",
                "exercisePriceField": "40",
                "timeToExpirationField": "0.5",
                "standardDeviationField": "20",
                "riskFreeRateField": "10"
            });
            break;
        case "expected-return":
            showStockScreenshot("ExpReturnController", {
                "periodField": "3"
            });
            functionsStack.currentItem.controller.setTableInput("probability", ["30", "40", "30"]);
            functionsStack.currentItem.controller.setTableInput("stock-a", ["20", "10", "-5"]);
            functionsStack.currentItem.controller.setTableInput("stock-b", ["10", "5", "0"]);
            break;
        case "const-growth":
            showStockScreenshot("ConstGrowthController", {});
            functionsStack.currentItem.controller.openChoice("dividendTypeButton");
            Presenter.answer(Presenter.pendingRequest().id, "Current (D0)");
            fillForm(functionsStack.currentItem, {
                "dividendField": "2.5",
                "returnRateField": "8",
                "growthRateField": "3"
            });
            break;
        case "nonconst-growth":
            showStockScreenshot("NoncGrowthController", {
                "dividendField": "2",
                "periodField": "3"
            });
            functionsStack.currentItem.controller.setTableInput("return-rate", ["10", "10", "10"]);
            functionsStack.currentItem.controller.setTableInput("growth-rate", ["20", "15", "5"]);
            break;
        case "capm":
            showStockScreenshot("CapmController", {
                "riskFreeRateField": "4",
                "marketReturnField": "9",
                "betaField": "1.3"
            });
            functionsStack.currentItem.controller.solve("stockReturn");
            break;
        case "wacc":
            showStockScreenshot("WaccController", {
                "costOfEquityField": "12",
                "equityField": "600",
                "costOfDebtField": "8",
                "debtField": "400",
                "corporateTaxRateField": "30"
            });
            break;
        case "period-return":
            showStockScreenshot("PeriodReturnController", {
                "initialValueField": "48.5",
                "endingValueField": "52.75",
                "incomeField": "1.2"
            });
            break;
        case "tip":
            showTab(0);
            openScreen("TipController", "");
            fillForm(functionsStack.currentItem, {
                "billField": "86.4",
                "tipPercentField": "18",
                "numberOfPeopleField": "3",
                "salesTaxField": "8"
            });
            break;
        case "tvm-chart":
            showTab(0);
            openScreen("TvmController", "");
            fillForm(functionsStack.currentItem, {
                "pvField": "1000",
                "pmtField": "100",
                "interestField": "5",
                "periodField": "10"
            });
            functionsStack.currentItem.controller.solve("FV");
            functionsStack.currentItem.scrollToEnd();
            break;
        case "calculator":
        case "calculator-2nd":
        case "calculator-cash-flow":
        case "calculator-history":
        case "calculator-help":
        case "calculator-help-page":
        case "calculator-store-alert":
            showTab(1);
            showCalculatorScreenshot(name);
            break;
        case "reports":
            showTab(2);
            break;
        case "report-detail":
        case "report-export-sheet":
            showTab(2);
            if (reportsModel.count > 0)
                openReport(reportsModel.filePathAt(0));
            if (name === "report-export-sheet")
                reportsStack.currentItem.controller.actionClicked();
            break;
        case "reports-editing":
        case "reports-confirm-delete":
            showTab(2);
            reportsStack.currentItem.editing = true;
            if (name === "reports-confirm-delete")
                reportsStack.currentItem.confirmDelete(0);
            break;
        case "reports-undo":
            showTab(2);
            reportsModel.removeRow(0);
            break;
        case "about":
            showTab(3);
            break;
        case "about-support":
            showTab(3);
            aboutStack.push(supportComponent, {}, StackView.Immediate);
            aboutStack.currentItem.controller.name = "Ann";
            aboutStack.currentItem.controller.email = "ann@example.com";
            aboutStack.currentItem.controller.comment = "Could the TVM chart show the payments too?";
            aboutStack.currentItem.controller.sendClicked();
            break;
        case "about-credits":
        case "about-privacy":
        case "about-terms":
            showTab(3);
            aboutStack.push(infoComponent, {
                "title": name === "about-credits" ? qsTr("Credits") : (name === "about-privacy" ? qsTr("Privacy") : qsTr("Terms")),
                "source": name.substring(6)
            }, StackView.Immediate);
            break;
        }
    }

    width: 412
    height: 892
    minimumWidth: 320
    minimumHeight: 480
    visible: true
    title: "Tallyvane"
    // The Basic style draws every control from this palette.
    palette.window: AppTheme.window
    palette.windowText: AppTheme.text
    palette.base: AppTheme.base
    palette.alternateBase: AppTheme.button
    palette.text: AppTheme.text
    palette.button: AppTheme.button
    palette.buttonText: AppTheme.text
    palette.brightText: "#FFFFFF"
    palette.highlight: AppTheme.highlight
    palette.highlightedText: "#FFFFFF"
    palette.placeholderText: AppTheme.secondaryText
    palette.light: AppTheme.dark ? "#2F3A47" : "#FFFFFF"
    palette.midlight: AppTheme.dark ? "#3A4654" : "#D9DEE4"
    palette.mid: AppTheme.dark ? "#5C6877" : "#A9B1BC"
    palette.dark: AppTheme.dark ? "#4F7CAC" : "#353637"
    palette.shadow: "#000000"
    palette.toolTipBase: AppTheme.button
    palette.toolTipText: AppTheme.text

    // The tabs from the keyboard: Ctrl+1 to Ctrl+4, Ctrl+Tab and
    // Ctrl+Shift+Tab. Tab itself walks the controls of the shown screen.
    Shortcut {
        sequences: ["Ctrl+1"]
        onActivated: window.showTab(0)
    }
    Shortcut {
        sequences: ["Ctrl+2"]
        onActivated: window.showTab(1)
    }
    Shortcut {
        sequences: ["Ctrl+3"]
        onActivated: window.showTab(2)
    }
    Shortcut {
        sequences: ["Ctrl+4"]
        onActivated: window.showTab(3)
    }
    Shortcut {
        sequences: ["Ctrl+Tab"]
        onActivated: window.showTab((tabBar.currentIndex + 1) % tabBar.count)
    }
    Shortcut {
        sequences: ["Ctrl+Shift+Tab", "Ctrl+Backtab"]
        onActivated: window.showTab((tabBar.currentIndex + tabBar.count - 1) % tabBar.count)
    }

    // Back, as a desktop has it: Escape or Alt+Left on a pushed screen (not
    // while a sheet or alert is open, which takes Escape itself, and not on
    // the keypad, where Escape clears). Ctrl+Q quits.
    Shortcut {
        objectName: "backShortcut"
        sequences: ["Escape", "Alt+Left", "Back"]
        enabled: window.currentStack.depth > 1 && window.presenterHost.openPopups.length === 0
        onActivated: window.currentStack.pop()
    }
    Shortcut {
        sequences: ["Ctrl+Q"]
        onActivated: Qt.quit()
    }

    // Made at start-up: its first load creates the stored reports list, which
    // has to exist before any calculator saves a report.
    ReportTableModel {
        id: reportsModel
    }

    footer: TabBar {
        id: tabBar

        objectName: "tabBar"
        // Calculator screens, report details and the keypad's history and
        // help take the whole window; lists and pages reached from a tab
        // (the stock list, About's pages) keep the tabs.
        visible: {
            const item = window.currentStack.currentItem;
            return !(item instanceof FunctionScreen || item instanceof ReportDetailPage || item instanceof CalculatorHistoryPage || item instanceof CalculatorHelpPage || item instanceof CalculatorHelpDetailPage);
        }
        onCurrentIndexChanged: {
            window.ensureTab(currentIndex);
            if (currentIndex === 2)
                reportsModel.loadReportArray();
        }

        AppTabButton {
            text: qsTr("Functions")
            glyph: "\u2211"
        }
        AppTabButton {
            text: qsTr("Calculator")
            glyph: "\u229E"
        }
        AppTabButton {
            text: qsTr("Reports")
            glyph: "\u2630"
        }
        AppTabButton {
            text: qsTr("About")
            glyph: "\u2139"
        }
    }

    StackLayout {
        anchors.fill: parent
        currentIndex: tabBar.currentIndex

        StackView {
            id: functionsStack

            objectName: "functionsStack"
        }
        StackView {
            id: calculatorStack

            objectName: "calculatorStack"
        }
        StackView {
            id: reportsStack

            objectName: "reportsStack"
            // Back on the list from a report: read the list again.
            onDepthChanged: if (depth === 1)
                reportsModel.loadReportArray()
        }
        StackView {
            id: aboutStack

            objectName: "aboutStack"
        }
    }

    Component.onCompleted: ensureTab(tabBar.currentIndex)

    // The tabs not shown yet, one at a time after the first frame.
    Timer {
        interval: 200
        repeat: true
        running: true
        onTriggered: {
            const index = window.stacks.findIndex(stack => stack.depth === 0);
            if (index < 0)
                stop();
            else
                window.ensureTab(index);
        }
    }

    Component {
        id: calculatorPageComponent

        CalculatorPage {}
    }

    Component {
        id: reportListComponent

        ReportListPage {}
    }

    Component {
        id: aboutPageComponent

        AboutPage {}
    }

    Component {
        id: catalogueComponent

        FunctionCataloguePage {
            onScreensRequested: (identifiers, title) => {
                for (const identifier of identifiers)
                    window.openScreen(identifier, title);
            }
        }
    }

    Component {
        id: tvmComponent

        TvmView {}
    }

    Component {
        id: roiComponent

        RoiView {}
    }

    Component {
        id: tipComponent

        TipView {}
    }

    Component {
        id: bondComponent

        BondView {}
    }

    Component {
        id: npvComponent

        NpvView {}
    }

    Component {
        id: cmpComponent

        CmpView {}
    }

    Component {
        id: blackScholesComponent

        BlackScholesView {}
    }

    Component {
        id: capmComponent

        CapmView {}
    }

    Component {
        id: waccComponent

        WaccView {}
    }

    Component {
        id: expReturnComponent

        ExpReturnView {}
    }

    Component {
        id: noncGrowthComponent

        NoncGrowthView {}
    }

    Component {
        id: constGrowthComponent

        ConstGrowthView {}
    }

    Component {
        id: periodReturnComponent

        PeriodReturnView {}
    }

    Component {
        id: stockListComponent

        StockListPage {
            onCalculatorChosen: (identifier, title) => window.openScreen(identifier, title)
        }
    }

    Component {
        id: comingComponent

        ComingPage {
            backText: qsTr("Back")
            blurb: qsTr("This calculator is on its way.")
        }
    }

    Component {
        id: supportComponent

        SupportPage {}
    }

    Component {
        id: infoComponent

        InfoPage {}
    }

    Component {
        id: historyComponent

        CalculatorHistoryPage {}
    }

    Component {
        id: helpComponent

        CalculatorHelpPage {
            onTopicChosen: (title, source) => calculatorStack.push(helpDetailComponent, {
                    "title": title,
                    "source": source
                })
        }
    }

    Component {
        id: helpDetailComponent

        CalculatorHelpDetailPage {}
    }

    Component {
        id: reportDetailComponent

        ReportDetailPage {}
    }

    PresenterHost {
        id: presenterHost

        anchors.fill: parent
    }
}
