pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tallyvane

// A calculator screen laid out from its description alone: its fields (a
// number field, a number field with its solve button, or a choice button)
// and then its results, each under the heading its description gives it.
// Calculators whose screens need more (charts, tables, schedules) have QML
// files of their own instead.
FunctionScreen {
    id: screen

    // The calculator's name in the registry ("roi").
    required property string calculator

    controller: Calculators.create(calculator)

    // The rows are made once the screen is: rows loaded while the screen
    // itself is still being made do not grow in the form's layout when a
    // mark or a note shows under a field.
    Component.onCompleted: rows.model = Calculators.form(screen.calculator)

    Repeater {
        id: rows

        delegate: ColumnLayout {
            id: row

            required property var modelData

            Layout.fillWidth: true
            // A heading sits as far above its row as the form's rows from
            // each other.
            spacing: 10

            SectionHeader {
                visible: row.modelData.section !== ""
                text: row.modelData.section
            }
            // The rows' own layout margins apply inside a layout only; the
            // loader takes them here (a solve field's number field keeps its
            // left one inside the row).
            Loader {
                Layout.fillWidth: true
                Layout.leftMargin: row.modelData.type === "solve" ? 0 : AppTheme.margin
                Layout.rightMargin: AppTheme.margin
                Component.onCompleted: {
                    const spec = row.modelData;
                    const common = {
                        "controller": screen.controller,
                        "outlet": spec.outlet,
                        "label": spec.label
                    };
                    if (spec.type === "result") {
                        setSource(Qt.resolvedUrl("../components/ResultRow.qml"), common);
                    } else if (spec.type === "choice") {
                        setSource(Qt.resolvedUrl("../components/ChoiceRow.qml"), common);
                    } else if (spec.type === "solve") {
                        setSource(Qt.resolvedUrl("../components/SolveField.qml"), {
                                "controller": screen.controller,
                                "name": spec.name,
                                "label": spec.label,
                                "countsAsZero": spec.countsAsZero
                            });
                    } else {
                        common.signable = spec.signable;
                        common.countsAsZero = spec.countsAsZero;
                        setSource(Qt.resolvedUrl("../components/NumericField.qml"), common);
                    }
                }
            }
        }
    }
}
