import QtQuick
import QtQuick.Controls
import Tallyvane

// The walk through every screen that scripts/screenshots renders, made only
// by tallyvane-screenshots (tools/screenshots): the driver asks it for its `steps`
// and shows each with showStep(name) before it saves the window.
QtObject {
    id: walk

    required property var window

    // The calculators of the registry, each with its own list: the
    // Functions tab's first, then the stock, the loans, the bonds and the
    // business lists.
    readonly property var calculators: ["functions", "stock", "loans", "bonds", "business"].reduce((all, list) => all.concat(Calculators.entries(list).filter(entry => entry.home).map(entry => ({
                        "name": entry.name,
                        "screen": entry.screen,
                        "list": list
                    }))), [])

    // The screens in order: the catalogue and its lists, every calculator
    // with its worked example, then the rest. The ones that end in a
    // failure or a mail come last: the screens they leave behind would
    // answer later reports of their calculator.
    readonly property var steps: ["functions", "stock-list", "loans-list", "bonds-list", "business-list"].concat(calculators.map(c => c.name), ["roi-description", "roi-export-sheet", "roi-report-title", "calculator", "calculator-2nd", "calculator-cash-flow", "calculator-history", "calculator-help", "calculator-help-page", "calculator-store-alert", "reports", "report-detail", "report-export-sheet", "reports-editing", "reports-confirm-delete", "about", "about-support", "about-credits", "about-privacy", "about-terms", "roi-unreadable", "reports-undo", "roi-save-failed", "roi-mail-draft"])

    // How long the step needs to settle before its picture: calculators
    // draw their charts with an animation.
    function settleMilliseconds(name) {
        return calculators.some(c => c.name === name) ? 1900 : 600;
    }

    // Opens the calculator `name` over its list and shows its worked
    // example, as a person would type it.
    function showCalculator(name) {
        const calculator = calculators.find(c => c.name === name);
        window.showTab(0);
        if (calculator.list === "stock")
            window.openScreen("StockTableController", "");
        else if (calculator.list === "loans")
            window.openScreen("LoansTableController", "");
        else if (calculator.list === "bonds")
            window.openScreen("BondsTableController", "");
        else if (calculator.list === "business")
            window.openScreen("BusinessTableController", "");
        window.openScreen(calculator.screen, "");
        const screen = window.functionsStackView.currentItem;
        const decimal = Qt.locale().decimalPoint;
        const local = text => text.replace(".", decimal);
        for (const step of Calculators.example(name)) {
            if (step.type === "field")
                screen.controller.editField(step.outlet, local(step.value));
            else if (step.type === "table")
                screen.controller.setTableInput(step.name, step.values.map(local));
            else if (step.type === "solve")
                screen.controller.solve(step.name);
            else if (step.type === "choice") {
                screen.controller.openChoice(step.outlet);
                Presenter.answer(Presenter.pendingRequest().id, step.value);
            }
        }
        if (screen.scrollToEnd)
            screen.scrollToEnd();
    }

    // Types sample values into a calculator screen, one edit per field.
    function fillForm(screen, values) {
        const decimal = Qt.locale().decimalPoint;
        for (const outlet in values)
            screen.controller.editField(outlet, values[outlet].replace(".", decimal));
    }

    // Types a sample session on the keypad for the calculator screenshots.
    function showCalculatorScreenshot(name) {
        const calculator = window.calculatorStackView.currentItem;
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
            window.calculatorStackView.push(window.helpDetailPage, {
                "title": "Tvm Equations",
                "source": "tvm_equations"
            }, StackView.Immediate);
        } else if (name === "calculator-store-alert")
            press(["=", "STO"]);
    }

    // Brings up the screen called `name` for a screenshot.
    function showStep(name) {
        if (window.presenterHost)
            window.presenterHost.dismissAll();
        for (let i = 0; i < window.stacks.length; ++i)
            window.ensureTab(i);
        for (const stack of window.stacks)
            stack.pop(null, StackView.Immediate);
        window.functionsStackView.clear(StackView.Immediate);
        window.functionsStackView.push(window.catalogue, {}, StackView.Immediate);
        window.reportsStackView.currentItem.editing = false;
        switch (name) {
        case "functions":
            window.showTab(0);
            break;
        case "stock-list":
            window.showTab(0);
            window.openScreen("StockTableController", "");
            break;
        case "loans-list":
            window.showTab(0);
            window.openScreen("LoansTableController", "");
            break;
        case "bonds-list":
            window.showTab(0);
            window.openScreen("BondsTableController", "");
            break;
        case "business-list":
            window.showTab(0);
            window.openScreen("BusinessTableController", "");
            break;
        case "roi-unreadable":
            window.showTab(0);
            window.openScreen("RoiController", "");
            walk.fillForm(window.functionsStackView.currentItem, {
                "investmentField": "$12,000",
                "futureValueField": "15900",
                "yearsField": "4"
            });
            break;
        case "roi-description":
        case "roi-export-sheet":
        case "roi-report-title":
        case "roi-save-failed":
        case "roi-mail-draft":
            walk.showCalculator("roi");
            if (name === "roi-description")
                window.functionsStackView.currentItem.controller.segmentChanged(1);
            else if (name === "roi-export-sheet")
                window.functionsStackView.currentItem.controller.exportClicked();
            else if (name === "roi-report-title" || name === "roi-save-failed") {
                window.functionsStackView.currentItem.controller.exportClicked();
                Presenter.answer(Presenter.pendingRequest().id, "Save");
                // The driver has blocked the documents folder for this one.
                if (name === "roi-save-failed")
                    Presenter.answer(Presenter.pendingRequest().id, "OK", "Solar panels");
            } else if (name === "roi-mail-draft") {
                // No mail program offscreen: the draft's place is shown.
                window.functionsStackView.currentItem.controller.exportClicked();
                Presenter.answer(Presenter.pendingRequest().id, "Send Email");
            }
            break;
        case "calculator":
        case "calculator-2nd":
        case "calculator-cash-flow":
        case "calculator-history":
        case "calculator-help":
        case "calculator-help-page":
        case "calculator-store-alert":
            window.showTab(1);
            walk.showCalculatorScreenshot(name);
            break;
        case "reports":
            window.showTab(2);
            break;
        case "report-detail":
        case "report-export-sheet":
            window.showTab(2);
            if (window.reports.count > 0)
                window.openReport(window.reports.filePathAt(0));
            if (name === "report-export-sheet")
                window.reportsStackView.currentItem.controller.actionClicked();
            break;
        case "reports-editing":
        case "reports-confirm-delete":
            window.showTab(2);
            window.reportsStackView.currentItem.editing = true;
            if (name === "reports-confirm-delete")
                window.reportsStackView.currentItem.confirmDelete(0);
            break;
        case "reports-undo":
            window.showTab(2);
            window.reports.removeRow(0);
            break;
        case "about":
            window.showTab(3);
            break;
        case "about-support":
            window.showTab(3);
            window.aboutStackView.push(window.supportPage, {}, StackView.Immediate);
            window.aboutStackView.currentItem.controller.name = "Ann";
            window.aboutStackView.currentItem.controller.email = "ann@example.com";
            window.aboutStackView.currentItem.controller.comment = "Could the TVM chart show the payments too?";
            window.aboutStackView.currentItem.controller.sendClicked();
            break;
        case "about-credits":
        case "about-privacy":
        case "about-terms":
            window.showTab(3);
            window.aboutStackView.push(window.infoPage, {
                "title": name === "about-credits" ? qsTr("Credits") : (name === "about-privacy" ? qsTr("Privacy") : qsTr("Terms")),
                "source": name.substring(6)
            }, StackView.Immediate);
            break;
        default:
            walk.showCalculator(name);
            break;
        }
    }
}
