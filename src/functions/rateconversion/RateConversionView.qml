import QtQuick
import Tallyvane

// Interest rate conversion: a nominal rate compounded so many times a year
// and its effective annual rate, each solved from the other; and the
// effective rate of continuous compounding at the nominal rate.
FunctionScreen {
    id: screen

    controller: RateConversionController {}

    SectionHeader {
        text: qsTr("Enter one rate, solve the other")
    }
    SolveField {
        controller: screen.controller
        name: "nominalRate"
        label: qsTr("Nominal annual rate (%)")
        countsAsZero: false
    }
    SolveField {
        controller: screen.controller
        name: "effectiveRate"
        label: qsTr("Effective annual rate (%)")
        countsAsZero: false
    }
    NumericField {
        controller: screen.controller
        outlet: "compoundingPerYearField"
        label: qsTr("Compoundings a year (12 for monthly)")
        signable: false
        countsAsZero: false
    }
    SectionHeader {
        text: qsTr("Continuous compounding")
    }
    ResultRow {
        controller: screen.controller
        outlet: "continuousRateResultLabel"
        label: qsTr("Effective rate at the nominal rate")
    }
}
