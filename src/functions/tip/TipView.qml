import QtQuick
import Tallyvane

// The tip calculator: the bill (tax included), tip, people and tax, in
// plain number fields (no "±").
FunctionScreen {
    id: screen

    controller: TipController {}

    SectionHeader {
        text: qsTr("Bill")
    }
    NumericField {
        controller: screen.controller
        outlet: "billField"
        signable: false
        label: qsTr("Bill, sales tax included")
    }
    NumericField {
        controller: screen.controller
        outlet: "tipPercentField"
        signable: false
        label: qsTr("Tip (%)")
    }
    NumericField {
        controller: screen.controller
        outlet: "numberOfPeopleField"
        signable: false
        label: qsTr("Number of people")
    }
    NumericField {
        controller: screen.controller
        outlet: "salesTaxField"
        signable: false
        label: qsTr("Sales tax in the bill (%)")
    }
    SectionHeader {
        text: qsTr("Results")
    }
    ResultRow {
        controller: screen.controller
        outlet: "totalAmountResultLabel"
        label: qsTr("Total to pay")
    }
    ResultRow {
        controller: screen.controller
        outlet: "totalPerPersonResultLabel"
        label: qsTr("Total per person")
    }
    ResultRow {
        controller: screen.controller
        outlet: "tipResultLabel"
        label: qsTr("Tip")
    }
    ResultRow {
        controller: screen.controller
        outlet: "tipPerPersonResultLabel"
        label: qsTr("Tip per person")
    }
}
