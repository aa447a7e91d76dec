import QtQuick
import Tallyvane

// Constant growth: the dividend type, the dividend and the two rates; the
// price of the share.
FunctionScreen {
    id: screen

    controller: ConstGrowthController {}

    SectionHeader {
        text: qsTr("Dividend")
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "dividendTypeButton"
        label: qsTr("Dividend type")
    }
    NumericField {
        controller: screen.controller
        outlet: "dividendField"
        label: qsTr("Dividend per share")
    }
    SectionHeader {
        text: qsTr("Rates")
    }
    NumericField {
        controller: screen.controller
        outlet: "returnRateField"
        label: qsTr("Required rate of return (%)")
    }
    NumericField {
        controller: screen.controller
        outlet: "growthRateField"
        label: qsTr("Dividend growth rate (%)")
    }
    SectionHeader {
        text: qsTr("Result")
    }
    ResultRow {
        controller: screen.controller
        outlet: "priceResultLabel"
        label: qsTr("Price of stock")
    }
}
