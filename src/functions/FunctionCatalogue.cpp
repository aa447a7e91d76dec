#include "bond/BondController.h"
#include "cmp/CmpController.h"
#include "constgrowth/ConstGrowthController.h"
#include "framework/FunctionRegistry.h"
#include "npv/NpvController.h"
#include "periodreturn/PeriodReturnController.h"
#include "roi/RoiController.h"
#include "tip/TipController.h"
#include "tvm/TvmController.h"

namespace FunctionRegistry {

namespace {
template <typename Controller> std::unique_ptr<QVFunctionController> make()
{
    return std::make_unique<Controller>();
}
} // namespace

const QList<FunctionDescriptor>& functions()
{
    static const QList<FunctionDescriptor> all = {
        {QStringLiteral("roi"), QStringLiteral("Return on Investment Calculator"),
         make<RoiController>},
        {QStringLiteral("tip"), QStringLiteral("Tip Calculator"), make<TipController>},
        {QStringLiteral("tvm"), QStringLiteral("Time Value of Money Calculator"),
         make<TvmController>},
        {QStringLiteral("npv"), QStringLiteral("Net Present Value Calculator"),
         make<NpvController>},
        {QStringLiteral("bond"), QStringLiteral("Bond Calculator"), make<BondController>},
        {QStringLiteral("cmp"), QStringLiteral("Compound Interest Calculator"),
         make<CmpController>},
        {QStringLiteral("const-growth"), QStringLiteral("Constant Growth"),
         make<ConstGrowthController>},
        {QStringLiteral("period-return"), QStringLiteral("Holding Period Return"),
         make<PeriodReturnController>},
    };
    return all;
}

const FunctionDescriptor* find(const QString& name)
{
    for (const FunctionDescriptor& f : functions()) {
        if (f.name == name)
            return &f;
    }
    return nullptr;
}

} // namespace FunctionRegistry
