import QtQuick
import Tallyvane

// Breakeven: fixed costs, variable cost and price per unit, profit and
// quantity; any one solved from the other four (a profit of 0 is the
// breakeven point).
FunctionScreen {
    id: screen

    controller: BreakevenController {}

    SectionHeader {
        text: qsTr("Enter four values, solve the fifth")
    }
    SolveField {
        controller: screen.controller
        name: "fixedCost"
        label: qsTr("Fixed costs")
        countsAsZero: false
    }
    SolveField {
        controller: screen.controller
        name: "variableCost"
        label: qsTr("Variable cost per unit")
        countsAsZero: false
    }
    SolveField {
        controller: screen.controller
        name: "price"
        label: qsTr("Price per unit")
        countsAsZero: false
    }
    SolveField {
        controller: screen.controller
        name: "profit"
        label: qsTr("Profit (0 to break even)")
        countsAsZero: false
    }
    SolveField {
        controller: screen.controller
        name: "quantity"
        label: qsTr("Quantity (units)")
        countsAsZero: false
    }
}
