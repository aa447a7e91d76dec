pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tallyvane

// A calculator screen laid out from its description alone: its fields (a
// number field, or a choice button) and then its results, each under the
// heading its description gives it. Calculators whose screens need more
// (charts, tables, schedules) have QML files of their own instead.
FunctionScreen {
    id: screen

    // The calculator's name in the registry ("roi").
    required property string calculator

    controller: Calculators.create(calculator)

    Repeater {
        model: Calculators.form(screen.calculator)

        delegate: ColumnLayout {
            id: row

            required property var modelData

            Layout.fillWidth: true
            spacing: 6

            SectionHeader {
                visible: row.modelData.section !== ""
                text: row.modelData.section
            }
            // The rows' own layout margins apply inside a layout only; the
            // loader takes them here.
            Loader {
                Layout.fillWidth: true
                Layout.leftMargin: AppTheme.margin
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
