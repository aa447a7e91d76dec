#include "CalculatorRegistry.h"

#include "QVFunctionController.h"

#include <QHash>

namespace CalculatorRegistry {

namespace {
QList<const CalculatorDescription*>& installed()
{
    static QList<const CalculatorDescription*> list;
    return list;
}
} // namespace

void install(const QList<const CalculatorDescription*>& calculators)
{
    // Installing the same list again (each run of the command line's code
    // does) leaves the list, and whoever walks it, alone.
    if (installed() != calculators)
        installed() = calculators;
}

const QList<const CalculatorDescription*>& calculators()
{
    return installed();
}

const CalculatorDescription* find(const QString& name)
{
    for (const CalculatorDescription* description : installed()) {
        if (description->name == name)
            return description;
    }
    return nullptr;
}

const CalculatorDescription* findScreen(const QString& screen)
{
    for (const CalculatorDescription* description : installed()) {
        if (description->screen == screen)
            return description;
    }
    return nullptr;
}

const CalculatorDescription* findReportLabel(const QString& label)
{
    static const QHash<QString, const CalculatorDescription*> labels = [] {
        QHash<QString, const CalculatorDescription*> byLabel;
        for (const CalculatorDescription* description : installed()) {
            if (!description->create)
                continue;
            const std::unique_ptr<QVFunctionController> screen = description->create();
            const QString own = screen->model()->report().functionTitle;
            if (!own.isEmpty() && !byLabel.contains(own))
                byLabel.insert(own, description);
        }
        return byLabel;
    }();
    return labels.value(label);
}

} // namespace CalculatorRegistry
