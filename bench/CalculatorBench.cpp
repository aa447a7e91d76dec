// The keypad's costs: one key press handled by the engine (keypad →
// notification → engine → display text), and IRR over a full 100-entry
// cash-flow list. Logging stays off, as in the app.
#include "calculator/CalculatorController.h"
#include "calculator/CalculatorKeypad.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

namespace {

void keyPress(benchmark::State& state, const QString& title, const QStringList& setup)
{
    CalculatorKeypad keypad;
    CalculatorController engine;
    for (const QString& key : setup)
        keypad.pressTitle(key);
    const int index = keypad.indexOfShownTitle(title);
    for (auto _ : state) {
        keypad.buttonClicked(index);
        benchmark::DoNotOptimize(engine.displayNumber());
    }
}

void typeDigit(benchmark::State& state)
{
    CalculatorKeypad keypad;
    CalculatorController engine;
    const int seven = keypad.indexOfShownTitle(QStringLiteral("7"));
    const int clear = keypad.indexOfShownTitle(QStringLiteral("CE"));
    int typed = 0;
    for (auto _ : state) {
        keypad.buttonClicked(seven);
        if (++typed == 40) { // keep the line a realistic length
            state.PauseTiming();
            keypad.buttonClicked(clear);
            typed = 0;
            state.ResumeTiming();
        }
    }
}
BENCHMARK(typeDigit);

void evaluateKey(benchmark::State& state)
{
    keyPress(state, QStringLiteral("="),
             {"1", "0", "0", "0", "*",       "(", "1", "+", "0", ".", "0", "5",
              "/", "1", "2", ")", "y\u02e3", "(", "1", "2", "*", "3", "0", ")"});
}
BENCHMARK(evaluateKey);

void computePaymentKey(benchmark::State& state)
{
    CalculatorKeypad keypad;
    CalculatorController engine;
    for (const char* key : {"3", "6", "0", "N", "6", "I/Y", "2", "5", "0", "0", "0", "0", "PV"})
        keypad.pressTitle(QString::fromUtf8(key));
    const int cpt = keypad.indexOfShownTitle(QStringLiteral("CPT"));
    const int pmt = keypad.indexOfShownTitle(QStringLiteral("PMT"));
    for (auto _ : state) {
        keypad.buttonClicked(cpt);
        keypad.buttonClicked(pmt);
    }
    state.SetItemsProcessed(state.iterations() * 2);
}
BENCHMARK(computePaymentKey);

void irrOfAFullList(benchmark::State& state)
{
    CashFlowList flows = CalculatorModel::freshCashFlows();
    flows[0].cash = QStringLiteral("-25000");
    for (size_t i = 1; i < flows.size(); ++i)
        flows[i].cash = QString::number(300 + 7 * int(i));
    for (auto _ : state)
        benchmark::DoNotOptimize(CalculatorModel::calculateIrr(flows));
}
BENCHMARK(irrOfAFullList)->Unit(benchmark::kMillisecond);

void irrWithoutASignChange(benchmark::State& state)
{
    CashFlowList flows = CalculatorModel::freshCashFlows();
    for (CashFlow& flow : flows)
        flow.cash = QStringLiteral("100");
    for (auto _ : state)
        benchmark::DoNotOptimize(CalculatorModel::calculateIrr(flows));
}
BENCHMARK(irrWithoutASignChange)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
