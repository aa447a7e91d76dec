#include "CalculatorRegistry.h"

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

} // namespace CalculatorRegistry
