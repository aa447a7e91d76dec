import QtQuick
import Tallyvane

// Bond: face value, coupon rate, yield, years and the coupon frequency; the
// price, both durations and the convexity follow every edit.
FunctionScreen {
    id: screen

    controller: BondController {}

    SectionHeader {
        text: qsTr("Bond")
    }
    NumericField {
        controller: screen.controller
        outlet: "faceValueField"
        label: qsTr("Face value")
    }
    NumericField {
        controller: screen.controller
        outlet: "couponRateField"
        label: qsTr("Coupon rate (% a year)")
    }
    NumericField {
        controller: screen.controller
        outlet: "yieldToMaturityField"
        label: qsTr("Yield to maturity (% a year)")
    }
    NumericField {
        controller: screen.controller
        outlet: "yearsField"
        label: qsTr("Years to maturity")
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "frequencyButton"
        label: qsTr("Coupons a year")
    }
    SectionHeader {
        text: qsTr("Results")
    }
    ResultRow {
        controller: screen.controller
        outlet: "bondValueLabel"
        label: qsTr("Bond value")
    }
    ResultRow {
        controller: screen.controller
        outlet: "maculayDurationLabel"
        label: qsTr("Macaulay duration (years)")
    }
    ResultRow {
        controller: screen.controller
        outlet: "modifiedDurationLabel"
        label: qsTr("Modified duration")
    }
    ResultRow {
        controller: screen.controller
        outlet: "convexityLabel"
        label: qsTr("Convexity (years²)")
    }
}
