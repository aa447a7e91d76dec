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
