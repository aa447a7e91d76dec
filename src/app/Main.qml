import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

ApplicationWindow {
    id: window

    readonly property var stacks: [functionsStack, calculatorStack, reportsStack, aboutStack]
    readonly property StackView currentStack: stacks[tabBar.currentIndex]
    property alias reports: reportsModel
    readonly property alias presenterHost: presenterHost
    // What the screenshot walk (ScreenshotWalk.qml) works with.
    readonly property alias functionsStackView: functionsStack
    readonly property alias calculatorStackView: calculatorStack
    readonly property alias reportsStackView: reportsStack
    readonly property alias aboutStackView: aboutStack
    readonly property alias catalogue: catalogueComponent
    readonly property alias supportPage: supportComponent
    readonly property alias infoPage: infoComponent
    readonly property alias helpDetailPage: helpDetailComponent

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
            "StockTableController": stockListComponent,
            "RateConversionController": rateConversionComponent,
            "BreakevenController": breakevenComponent,
            "DepreciationController": depreciationComponent,
            "AmortizationController": amortizationComponent,
            "DatedCashFlowsController": datedCashFlowsComponent,
            "LoansTableController": loansListComponent
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
        id: rateConversionComponent

        RateConversionView {}
    }

    Component {
        id: datedCashFlowsComponent

        DatedCashFlowsView {}
    }

    Component {
        id: amortizationComponent

        AmortizationView {}
    }

    Component {
        id: depreciationComponent

        DepreciationView {}
    }

    Component {
        id: breakevenComponent

        BreakevenView {}
    }

    Component {
        id: loansListComponent

        LoansListPage {
            onCalculatorChosen: (identifier, title) => window.openScreen(identifier, title)
        }
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
