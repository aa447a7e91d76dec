import QtQuick
import QtQuick.Controls
import Tallyvane

ApplicationWindow {
    id: window

    readonly property var stacks: [functionsStack, calculatorStack, reportsStack, aboutStack]
    readonly property StackView currentStack: stacks[tabBar.currentIndex]
    property alias reports: reportsModel
    // The sheets and alerts the screens ask for (PresenterHost.qml), made
    // a moment after the first frame, or at once when a question comes
    // before that: null until then.
    readonly property var presenterHost: presenterLoader.item
    // What the screenshot walk (ScreenshotWalk.qml) works with.
    readonly property alias functionsStackView: functionsStack
    readonly property alias calculatorStackView: calculatorStack
    readonly property alias reportsStackView: reportsStack
    readonly property alias aboutStackView: aboutStack
    readonly property alias catalogue: catalogueComponent
    readonly property url supportPage: page("app/about/SupportPage.qml")
    readonly property url infoPage: page("app/about/InfoPage.qml")
    readonly property url helpDetailPage: page("calculator/CalculatorHelpDetailPage.qml")

    // Each tab's first page is made when the tab is first shown, or a moment
    // after start-up for the tabs not yet visited: the first frame only
    // waits for the shown tab. Pages other than the first tab's are named by
    // their file, so start-up does not even load their types.
    readonly property var tabPages: [catalogueComponent, page("calculator/CalculatorPage.qml"), page("reports/ReportListPage.qml"), page("app/about/AboutPage.qml")]

    // The address of a page of this module, by its path in the module.
    function page(path) {
        return Qt.resolvedUrl("../" + path);
    }

    function ensureTab(index) {
        const stack = stacks[index];
        if (!stack || stack.depth > 0)
            return;
        const page = stack.push(tabPages[index], index === 2 ? {
            "reports": reportsModel
        } : {}, StackView.Immediate);
        if (index === 1) {
            page.historyRequested.connect(() => calculatorStack.push(window.page("calculator/CalculatorHistoryPage.qml"), {
                "calculator": page.controller
            }));
            page.helpRequested.connect(() => {
                const help = calculatorStack.push(window.page("calculator/CalculatorHelpPage.qml"));
                help.topicChosen.connect((title, source) => calculatorStack.push(window.helpDetailPage, {
                    "title": title,
                    "source": source
                }));
            });
        } else if (index === 2) {
            page.reportChosen.connect(filePath => openReport(filePath));
            page.compareRequested.connect(rows => reportsStack.push(window.page("reports/ReportComparePage.qml"), {
                "reportRows": rows
            }));
        } else if (index === 3) {
            page.supportRequested.connect(() => aboutStack.push(window.supportPage));
            page.pageRequested.connect((title, source) => aboutStack.push(window.infoPage, {
                "title": title,
                "source": source
            }));
        }
    }

    function showTab(index) {
        ensureTab(index);
        tabBar.currentIndex = index;
    }

    // Pushes the screen known by `identifier` onto the Functions stack: a
    // calculator's own screen, or its plain form laid out from its
    // description, or one of the lists, which open further screens
    // themselves. An identifier nothing knows opens nothing. Gives the
    // calculator's screen it pushed (null for a list or nothing).
    function openScreen(identifier) {
        const lists = {
            "StockTableController": {
                "list": "stock",
                "title": qsTr("Stock Calculators")
            },
            "LoansTableController": {
                "list": "loans",
                "title": qsTr("Loans and More")
            },
            "BondsTableController": {
                "list": "bonds",
                "title": qsTr("Bonds and Dates")
            },
            "BusinessTableController": {
                "list": "business",
                "title": qsTr("Business and Statistics")
            }
        };
        const view = Calculators.viewOf(identifier);
        if (view === "" || view !== "?") {
            const screen = view === "" ? functionsStack.push(page("framework/DescribedScreen.qml"), {
                "calculator": Calculators.nameOf(identifier)
            }) : functionsStack.push(page(view));
            // "Clear" opens the screen again from its defaults.
            screen.clearRequested.connect(() => {
                functionsStack.pop(StackView.Immediate);
                window.openScreen(identifier);
            });
            return screen;
        } else if (lists[identifier]) {
            const list = functionsStack.push(page("framework/CatalogueListPage.qml"), lists[identifier]);
            list.calculatorChosen.connect(chosen => window.openScreen(chosen));
            return null;
        }
        return null;
    }

    // A saved report's calculator on the Functions tab, its inputs put back
    // and its results worked out again.
    function openInCalculator(identifier, inputs) {
        showTab(0);
        const screen = openScreen(identifier);
        if (screen)
            screen.controller.openWithInputs(inputs);
    }

    function openReport(filePath) {
        const detail = reportsStack.push(page("reports/ReportDetailPage.qml"), {
            "reportFilePath": filePath
        });
        detail.controller.openInCalculatorRequested.connect((identifier, inputs) => window.openInCalculator(identifier, inputs));
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
        enabled: window.currentStack.depth > 1 && (!window.presenterHost || window.presenterHost.openPopups.length === 0)
        onActivated: window.currentStack.pop()
    }
    Shortcut {
        sequences: ["Ctrl+Q"]
        onActivated: Qt.quit()
    }

    // Its first load creates the stored reports list, which has to exist
    // before any calculator saves a report: deferred to just after the first
    // frame, which then does not wait for the database.
    ReportTableModel {
        id: reportsModel

        deferred: true
    }

    footer: TabBar {
        id: tabBar

        objectName: "tabBar"
        // Calculator screens, report details and the keypad's history and
        // help take the whole window; lists and pages reached from a tab
        // (the stock list, About's pages) keep the tabs.
        visible: {
            const item = window.currentStack.currentItem;
            return !(item && item.hidesTabs === true);
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

    // One stack per tab, the current tab's shown (plain items rather than
    // a layout: nothing to lay out but the one shown, and no layout module
    // to load before the first frame).
    Item {
        anchors.fill: parent

        StackView {
            id: functionsStack

            objectName: "functionsStack"
            anchors.fill: parent
            visible: tabBar.currentIndex === 0
        }
        StackView {
            id: calculatorStack

            objectName: "calculatorStack"
            anchors.fill: parent
            visible: tabBar.currentIndex === 1
        }
        StackView {
            id: reportsStack

            objectName: "reportsStack"
            anchors.fill: parent
            visible: tabBar.currentIndex === 2
            // Back on the list from a report: read the list again.
            onDepthChanged: if (depth === 1)
                reportsModel.loadReportArray()
        }
        StackView {
            id: aboutStack

            objectName: "aboutStack"
            anchors.fill: parent
            visible: tabBar.currentIndex === 3
        }
    }

    Component.onCompleted: ensureTab(tabBar.currentIndex)

    // After the first frame, one at a time: the presenter host, then the
    // tabs not shown yet.
    Timer {
        interval: 200
        repeat: true
        running: true
        onTriggered: {
            if (presenterLoader.status === Loader.Null) {
                presenterLoader.load();
                return;
            }
            const index = window.stacks.findIndex(stack => stack.depth === 0);
            if (index < 0)
                stop();
            else
                window.ensureTab(index);
        }
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

    // Empty until its file is given: an address set on a Loader, even an
    // inactive one, has the file loaded at once.
    Loader {
        id: presenterLoader

        function load() {
            if (status === Loader.Null)
                source = window.page("app/PresenterHost.qml");
        }

        anchors.fill: parent
    }
    Connections {
        target: Presenter
        enabled: presenterLoader.status === Loader.Null

        function onPendingChanged() {
            presenterLoader.load();
        }
    }
}
