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
    }
    NumericField {
        controller: screen.controller
        outlet: "annualRateField"
    }
    NumericField {
        controller: screen.controller
        outlet: "periodField"
    }
    NumericField {
        controller: screen.controller
        outlet: "paymentField"
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "modeButton"
    }
    ChoiceRow {
        controller: screen.controller
        outlet: "frequencyButton"
    }
    SectionHeader {
        text: qsTr("Results")
    }
    ResultRow {
        controller: screen.controller
        outlet: "balanceResultLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "interestAmounResultLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "totalPrincipalResultLabel"
    }
    ResultRow {
        controller: screen.controller
        outlet: "apyResultLabel"
    }
    CmpChart {
        controller: cmp
    }
}
