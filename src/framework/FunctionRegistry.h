#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

class QVFunctionController;

// The form calculators the command line knows, by their command names.
struct FunctionDescriptor {
    QString name;  // command name, "roi"
    QString title; // catalogue title
    std::function<std::unique_ptr<QVFunctionController>()> create;
};

namespace FunctionRegistry {
const QList<FunctionDescriptor>& functions();
const FunctionDescriptor* find(const QString& name);
} // namespace FunctionRegistry
