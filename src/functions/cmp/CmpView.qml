import QtQuick
import Tallyvane

// Compound interest: principal, rate, years and monthly deposit, the deposit
// mode and the compounding; four results and the balance year by year.
FunctionScreen {
    id: screen

    controller: CmpController {
        id: cmp
    }

    SectionHeader {
        text: qsTr("Savings")
    }
    NumericField {
        controller: screen.controller
        outlet: "principalAmountField"
        label: qsTr("Principal")
    }
    NumericField {
        controller: screen.controller
        outlet: "annualRateField"
        label: qsTr("Annual rate (%)")
    }
    NumericField {
        controller: screen.controller
        outlet: "periodField"
        label: qsTr("Years")
    }
    NumericField {
        controller: screen.controller
        outlet: "paymentField"
        label: qsTr("Monthly deposit")
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "modeButton"
        label: qsTr("Deposits at")
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "frequencyButton"
        label: qsTr("Compounding")
    }
    SectionHeader {
        text: qsTr("Results")
    }
    ResultRow {
        controller: screen.controller
        outlet: "balanceResultLabel"
        label: qsTr("Balance")
    }
    ResultRow {
        controller: screen.controller
        outlet: "interestAmounResultLabel"
        label: qsTr("Interest earned")
    }
    ResultRow {
        controller: screen.controller
        outlet: "totalPrincipalResultLabel"
        label: qsTr("Total principal")
    }
    ResultRow {
        controller: screen.controller
        outlet: "apyResultLabel"
        label: qsTr("Annual percentage yield")
    }
    CmpChart {
        controller: cmp
    }
}
