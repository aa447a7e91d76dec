#include "amortization/AmortizationController.h"
#include "blackscholes/BlackScholesController.h"
#include "bond/BondController.h"
#include "breakeven/BreakevenController.h"
#include "capm/CapmController.h"
#include "cmp/CmpController.h"
#include "constgrowth/ConstGrowthController.h"
#include "datedcashflows/DatedCashFlowsController.h"
#include "depreciation/DepreciationController.h"
#include "expreturn/ExpReturnController.h"
#include "framework/FunctionRegistry.h"
#include "noncgrowth/NoncGrowthController.h"
#include "npv/NpvController.h"
#include "periodreturn/PeriodReturnController.h"
#include "rateconversion/RateConversionController.h"
#include "roi/RoiController.h"
#include "tip/TipController.h"
#include "tvm/TvmController.h"
#include "wacc/WaccController.h"

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
        {QStringLiteral("black-scholes"), QStringLiteral("Black-Scholes"),
         make<BlackScholesController>},
        {QStringLiteral("expected-return"), QStringLiteral("Expected Return"),
         make<ExpReturnController>},
        {QStringLiteral("const-growth"), QStringLiteral("Constant Growth"),
         make<ConstGrowthController>},
        {QStringLiteral("nonconst-growth"), QStringLiteral("Nonconstant Growth"),
         make<NoncGrowthController>},
        {QStringLiteral("capm"), QStringLiteral("Capital Asset Pricing Model"),
         make<CapmController>},
        {QStringLiteral("wacc"), QStringLiteral("Weighted Average Cost of Capital"),
         make<WaccController>},
        {QStringLiteral("period-return"), QStringLiteral("Holding Period Return"),
         make<PeriodReturnController>},
        {QStringLiteral("amortization"), QStringLiteral("Amortization Schedule"),
         make<AmortizationController>},
        {QStringLiteral("dated-cash-flows"), QStringLiteral("Dated Cash Flows"),
         make<DatedCashFlowsController>},
        {QStringLiteral("rate-conversion"), QStringLiteral("Interest Rate Conversion"),
         make<RateConversionController>},
        {QStringLiteral("depreciation"), QStringLiteral("Depreciation"),
         make<DepreciationController>},
        {QStringLiteral("breakeven"), QStringLiteral("Breakeven"), make<BreakevenController>},
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
