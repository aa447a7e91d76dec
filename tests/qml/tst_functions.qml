import QtQuick
import QtQuick.Controls
import QtTest
import Tallyvane
import TallyvaneTest

// The Functions tab: the catalogue opens each calculator; typing into the
// real fields fills the result labels; Export > Save lands in Reports.
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

    function topPopupTitle() {
        const popups = window.presenterHost.openPopups;
        return popups.length === 1 ? popups[0].request.title : "";
    }

    function label(screen, outlet) {
        return findChild(screen, outlet).text;
    }

    function local(text) {
        return text.replace(".", Qt.locale().decimalPoint);
    }

    function test_catalogueRowsFillANinthEach() {
        const list = findChild(stack.currentItem, "functionList");
        compare(list.count, 7);
        fuzzyCompare(list.itemAtIndex(0).height, list.height / 9, 0.01);
        compare(list.itemAtIndex(6).title, "Stock Calculators");
    }

    function test_roiFromTheCatalogue() {
        const screen = openRow(1);
        compare(screen.title, "ROI Calculator");
        verify(!window.footer.visible, "no tab bar over a calculator");
        typeInto(screen, "investmentField", "1000");
        typeInto(screen, "futureValueField", "1250");
        typeInto(screen, "yearsField", "2");
        compare(label(screen, "gainResultLabel"), "250");
        compare(label(screen, "roiResultLabel"), "25%");
        compare(label(screen, "annualizedRoiResultLabel"), local("12.5%"));
    }

    function test_tipFromTheCatalogue() {
        const screen = openRow(4);
        compare(screen.title, "TIP Calculator");
        typeInto(screen, "billField", "107");
        typeInto(screen, "salesTaxField", "7");
        typeInto(screen, "tipPercentField", "15");
        typeInto(screen, "numberOfPeopleField", "2");
        compare(label(screen, "totalAmountResultLabel"), "122");
        compare(label(screen, "totalPerPersonResultLabel"), "61");
        compare(label(screen, "tipPerPersonResultLabel"), local("7.5"));
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

    function test_descriptionSwitch() {
        const screen = openRow(1);
        mouseClick(findChild(screen, "descriptionSegment"));
        verify(findChild(screen, "descriptionScroll").visible);
        verify(!findChild(screen, "formScroll").visible);
        verify(findChild(screen, "descriptionText").length > 300);
    }

    function test_stockRowOpensTheStockList() {
        const screen = openRow(6);
        compare(screen.title, "Stock Calculators");
        compare(findChild(screen, "stockList").count, 7);
    }

    function test_saveLandsAtTheTopOfReports() {
        TestFiles.saveReport("older");
        const screen = openRow(1);
        typeInto(screen, "investmentField", "100");
        typeInto(screen, "futureValueField", "150");
        typeInto(screen, "yearsField", "1");
        mouseClick(findChild(screen, "exportButton"));
        let request = Presenter.pendingRequest();
        compare(request.title, "Export");
        compare(request.actions.map(a => a.title), ["Cancel", "Send Email", "Save"]);
        window.presenterHost.dismissAll(); // the sheet goes; answer as Save
        mouseClick(findChild(screen, "exportButton"));
        request = Presenter.pendingRequest();
        const sheet = window.presenterHost.openPopups[0];
        tryCompare(sheet, "opened", true);
        const save = findChild(sheet.contentItem, "choice_Save");
        verify(save, "the Save button of the sheet");
        mouseClick(save);
        tryVerify(() => topPopupTitle() === "Report Title");
        const alert = window.presenterHost.openPopups[0];
        tryCompare(alert, "opened", true);
        const field = findChild(alert, "alertField");
        field.forceActiveFocus();
        keyClick(Qt.Key_M);
        keyClick(Qt.Key_Y);
        keyClick(Qt.Key_Return);
        tryVerify(() => topPopupTitle() === "Calculation Saved");
        window.presenterHost.dismissAll();

        window.showTab(2);
        compare(window.reports.count, 2);
        const reports = findChild(window.contentItem, "reportsStack");
        const list = findChild(reports.currentItem, "reportList");
        compare(list.itemAtIndex(0).title, "my");
        compare(list.itemAtIndex(0).functionTitle, "Roi");
    }

    function test_bondFromTheCatalogue() {
        const screen = openRow(5);
        compare(screen.title, "Bond Calculator");
        typeInto(screen, "faceValueField", "1000");
        typeInto(screen, "couponRateField", "5");
        typeInto(screen, "yieldToMaturityField", "5");
        typeInto(screen, "yearsField", "10");
        compare(label(screen, "bondValueLabel"), "1000");
        compare(label(screen, "maculayDurationLabel"), local("8.108"));
        compare(label(screen, "modifiedDurationLabel"), local("7.722"));
        compare(label(screen, "convexityLabel"), local("74.998"));
    }

    function test_compoundInterestFromTheCatalogue() {
        const screen = openRow(2);
        compare(screen.title, "Interest Calculator");
        typeInto(screen, "principalAmountField", "1000");
        typeInto(screen, "annualRateField", "6");
        typeInto(screen, "periodField", "1");
        typeInto(screen, "paymentField", "100");
        compare(label(screen, "balanceResultLabel"), local("2295.234"));
        compare(label(screen, "totalPrincipalResultLabel"), "2200");
        compare(label(screen, "apyResultLabel"), local("6.168%"));
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
    }

    function openStock(row) {
        openRow(6);
        const list = findChild(stack.currentItem, "stockList");
        waitForItemPolished(list);
        mouseClick(list.itemAtIndex(row));
        tryCompare(stack, "busy", false);
        return stack.currentItem;
    }

    function test_constantGrowthWithItsDividendSheet() {
        const screen = openStock(2);
        compare(screen.title, "Constant Growth");
        mouseClick(findChild(screen, "dividendTypeButton"));
        const request = Presenter.pendingRequest();
        compare(request.title, "Dividend Type");
        Presenter.answer(request.id, "Current (D0)");
        typeInto(screen, "dividendField", "2");
        typeInto(screen, "returnRateField", "10");
        typeInto(screen, "growthRateField", "5");
        compare(label(screen, "priceResultLabel"), "42");
    }

    function test_holdingPeriodReturn() {
        const screen = openStock(6);
        compare(screen.title, "Holding Period Return");
        typeInto(screen, "initialValueField", "100");
        typeInto(screen, "endingValueField", "110");
        typeInto(screen, "incomeField", "5");
        compare(label(screen, "hprResultLabel"), "15%");
    }

    function test_blackScholesTextbookCase() {
        const screen = openStock(0);
        typeInto(screen, "assetPriceField", "42");
        typeInto(screen, "exercisePriceField", "40");
        typeInto(screen, "timeToExpirationField", "0.5");
        typeInto(screen, "standardDeviationField", "20");
        typeInto(screen, "riskFreeRateField", "10");
        compare(label(screen, "callPriceLabel"), local("4.759"));
        compare(label(screen, "putPriceLabel"), local("0.809"));
    }

    function test_expectedReturnStateTable() {
        const screen = openStock(1);
        typeInto(screen, "periodField", "3");
        const rows = [["30", "20", "10"], ["40", "10", "5"], ["30", "-5", "0"]];
        for (let i = 0; i < 3; ++i) {
            typeInto(screen, "probabilityField" + i, rows[i][0]);
            typeInto(screen, "stockAField" + i, rows[i][1]);
            typeInto(screen, "stockBField" + i, rows[i][2]);
        }
        compare(label(screen, "expReturnAResultLabel"), local("8.5%"));
        compare(label(screen, "standardDeviationAResultLabel"), local("9.76%"));
    }

    function test_nonconstantGrowthRateTable() {
        const screen = openStock(3);
        typeInto(screen, "dividendField", "2");
        typeInto(screen, "periodField", "3");
        const rows = [["10", "20"], ["10", "15"], ["10", "5"]];
        for (let i = 0; i < 3; ++i) {
            typeInto(screen, "returnRateField" + i, rows[i][0]);
            typeInto(screen, "growthRateField" + i, rows[i][1]);
        }
        compare(label(screen, "priceResultLabel"), local("52.364"));
    }

    function test_capmSolvesTheChosenUnknown() {
        const screen = openStock(4);
        typeInto(screen, "riskFreeRateField", "4");
        typeInto(screen, "marketReturnField", "9");
        typeInto(screen, "betaField", "1.3");
        mouseClick(findChild(screen, "stockReturnButton"));
        compare(findChild(screen, "stockReturnField").text, local("10.5"));
    }

    function test_wacc() {
        const screen = openStock(5);
        typeInto(screen, "costOfEquityField", "12");
        typeInto(screen, "equityField", "600");
        typeInto(screen, "costOfDebtField", "8");
        typeInto(screen, "debtField", "400");
        typeInto(screen, "corporateTaxRateField", "30");
        compare(label(screen, "waccResultLabel"), local("9.44%"));
    }
}
