#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The form calculators the command line knows, by their command names.
// Each calculator adds its entry when it lands.
struct FunctionDescriptor {
    QString name;       // command name, "roi"
    QString title;      // catalogue title
    QStringList fields; // input properties, in screen order
};

namespace FunctionRegistry {
const QList<FunctionDescriptor>& functions();
} // namespace FunctionRegistry
