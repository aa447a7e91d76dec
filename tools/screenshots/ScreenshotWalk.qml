import QtQuick
import QtQuick.Controls
import Tallyvane

// The walk through every screen that scripts/screenshots renders, made only
// by tallyvane-screenshots (tools/screenshots): the driver asks it for its `steps`
// and shows each with showStep(name) before it saves the window.
QtObject {
    id: walk

    required property var window

    // The screens in order. The ones that end in a failure or a mail come
    // last: the screens they leave behind would answer later reports of
    // their calculator.
    readonly property var steps: ["functions", "stock-list", "roi", "tip", "tvm-chart", "npv-chart", "bond", "cmp-chart", "black-scholes", "expected-return", "const-growth", "nonconst-growth", "capm", "wacc", "period-return", "loans-list", "amortization", "dated-cash-flows", "rate-conversion", "depreciation", "breakeven", "roi-description", "roi-export-sheet", "roi-report-title", "calculator", "calculator-2nd", "calculator-cash-flow", "calculator-history", "calculator-help", "calculator-help-page", "calculator-store-alert", "reports", "report-detail", "report-export-sheet", "reports-editing", "reports-confirm-delete", "about", "about-support", "about-credits", "about-privacy", "about-terms", "roi-unreadable", "reports-undo", "roi-save-failed", "roi-mail-draft"]

    // Opens a stock calculator over the stock list and fills it.
    function showStockScreenshot(identifier, values) {
        window.showTab(0);
        window.openScreen("StockTableController", "");
        window.openScreen(identifier, "");
        walk.fillForm(window.functionsStackView.currentItem, values);
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
        case "rate-conversion":
            window.showTab(0);
            window.openScreen("LoansTableController", "");
            window.openScreen("RateConversionController", "");
            walk.fillForm(window.functionsStackView.currentItem, {
                "nominalRateField": "6",
                "compoundingPerYearField": "12"
            });
            window.functionsStackView.currentItem.controller.solve("effectiveRate");
            break;
        case "amortization":
            window.showTab(0);
            window.openScreen("LoansTableController", "");
            window.openScreen("AmortizationController", "");
            walk.fillForm(window.functionsStackView.currentItem, {
                "loanAmountField": "200000",
                "annualRateField": "6.5",
                "yearsField": "30",
                "firstPaymentDateField": "2027-01-01"
            });
            window.functionsStackView.currentItem.scrollToEnd();
            break;
        case "dated-cash-flows":
            window.showTab(0);
            window.openScreen("LoansTableController", "");
            window.openScreen("DatedCashFlowsController", "");
            walk.fillForm(window.functionsStackView.currentItem, {
                "rowCountField": "5",
                "rateField": "9"
            });
            window.functionsStackView.currentItem.controller.setTableInput("dates", ["2008-01-01", "2008-03-01", "2008-10-30", "2009-02-15", "2009-04-01"]);
            window.functionsStackView.currentItem.controller.setTableInput("amounts", ["-10000", "2750", "4250", "3250", "2750"]);
            break;
        case "depreciation":
            window.showTab(0);
            window.openScreen("LoansTableController", "");
            window.openScreen("DepreciationController", "");
            walk.fillForm(window.functionsStackView.currentItem, {
                "costField": "30000",
                "salvageField": "7500",
                "lifeField": "6",
                "firstYearMonthsField": "9"
            });
            window.functionsStackView.currentItem.controller.fieldChanged();
            break;
        case "breakeven":
            window.showTab(0);
            window.openScreen("LoansTableController", "");
            window.openScreen("BreakevenController", "");
            walk.fillForm(window.functionsStackView.currentItem, {
                "fixedCostField": "10000",
                "variableCostField": "15",
                "priceField": "40",
                "profitField": "0"
            });
            window.functionsStackView.currentItem.controller.solve("quantity");
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
        case "roi":
        case "roi-description":
        case "roi-export-sheet":
        case "roi-report-title":
        case "roi-save-failed":
        case "roi-mail-draft":
            window.showTab(0);
            window.openScreen("RoiController", "");
            walk.fillForm(window.functionsStackView.currentItem, {
                "investmentField": "12000",
                "futureValueField": "15900",
                "yearsField": "4"
            });
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
        case "npv-chart":
            window.showTab(0);
            window.openScreen("NpvController", "");
            walk.fillForm(window.functionsStackView.currentItem, {
                "periodField": "5",
                "discountRateField": "8"
            });
            window.functionsStackView.currentItem.controller.setTableInput("cashArray", ["-5000", "1500", "2000", "2500", "1000"]);
            window.functionsStackView.currentItem.scrollToEnd();
            break;
        case "bond":
            window.showTab(0);
            window.openScreen("BondController", "");
            walk.fillForm(window.functionsStackView.currentItem, {
                "faceValueField": "1000",
                "couponRateField": "10",
                "yieldToMaturityField": "8",
                "yearsField": "10"
            });
            break;
        case "cmp-chart":
            window.showTab(0);
            window.openScreen("CmpController", "");
            walk.fillForm(window.functionsStackView.currentItem, {
                "principalAmountField": "10000",
                "annualRateField": "5",
                "periodField": "10",
                "paymentField": "200"
            });
            window.functionsStackView.currentItem.scrollToEnd();
            break;
        case "black-scholes":
            walk.showStockScreenshot("BlackScholesController", {
                "assetPriceField": "42",
                "exercisePriceField": "40",
                "timeToExpirationField": "0.5",
                "standardDeviationField": "20",
                "riskFreeRateField": "10"
            });
            break;
        case "expected-return":
            walk.showStockScreenshot("ExpReturnController", {
                "periodField": "3"
            });
            window.functionsStackView.currentItem.controller.setTableInput("probability", ["30", "40", "30"]);
            window.functionsStackView.currentItem.controller.setTableInput("stock-a", ["20", "10", "-5"]);
            window.functionsStackView.currentItem.controller.setTableInput("stock-b", ["10", "5", "0"]);
            break;
        case "const-growth":
            walk.showStockScreenshot("ConstGrowthController", {});
            window.functionsStackView.currentItem.controller.openChoice("dividendTypeButton");
            Presenter.answer(Presenter.pendingRequest().id, "Current (D0)");
            walk.fillForm(window.functionsStackView.currentItem, {
                "dividendField": "2.5",
                "returnRateField": "8",
                "growthRateField": "3"
            });
            break;
        case "nonconst-growth":
            walk.showStockScreenshot("NoncGrowthController", {
                "dividendField": "2",
                "periodField": "3"
            });
            window.functionsStackView.currentItem.controller.setTableInput("return-rate", ["10", "10", "10"]);
            window.functionsStackView.currentItem.controller.setTableInput("growth-rate", ["20", "15", "5"]);
            break;
        case "capm":
            walk.showStockScreenshot("CapmController", {
                "riskFreeRateField": "4",
                "marketReturnField": "9",
                "betaField": "1.3"
            });
            window.functionsStackView.currentItem.controller.solve("stockReturn");
            break;
        case "wacc":
            walk.showStockScreenshot("WaccController", {
                "costOfEquityField": "12",
                "equityField": "600",
                "costOfDebtField": "8",
                "debtField": "400",
                "corporateTaxRateField": "30"
            });
            break;
        case "period-return":
            walk.showStockScreenshot("PeriodReturnController", {
                "initialValueField": "48.5",
                "endingValueField": "52.75",
                "incomeField": "1.2"
            });
            break;
        case "tip":
            window.showTab(0);
            window.openScreen("TipController", "");
            walk.fillForm(window.functionsStackView.currentItem, {
                "billField": "86.4",
                "tipPercentField": "18",
                "numberOfPeopleField": "3",
                "salesTaxField": "8"
            });
            break;
        case "tvm-chart":
            window.showTab(0);
            window.openScreen("TvmController", "");
            walk.fillForm(window.functionsStackView.currentItem, {
                "pvField": "1000",
                "pmtField": "100",
                "interestField": "5",
                "periodField": "10"
            });
            window.functionsStackView.currentItem.controller.solve("FV");
            window.functionsStackView.currentItem.scrollToEnd();
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
        }
    }
}
