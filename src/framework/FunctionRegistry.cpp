#include "FunctionRegistry.h"

namespace FunctionRegistry {

const QList<FunctionDescriptor>& functions()
{
    static const QList<FunctionDescriptor> all;
    return all;
}

} // namespace FunctionRegistry
