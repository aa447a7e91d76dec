// The keypad's costs: one key press handled by the engine (keypad →
// notification → engine → display text) for every kind of key: a digit,
// "=", CPT with each register, CPT NPV and CPT IRR over a full 100-entry
// cash-flow list (frequencies 1 and 1000); and the IRR solver alone.
// Logging stays off, as in the app.
#include "calculator/CalculatorController.h"
#include "calculator/CalculatorKeypad.h"

#include <QCoreApplication>
#include <QLocale>
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

// A full 100-entry list: an outlay, then 99 different returns, each
// repeated `frequency` periods.
CashFlowList fullList(int frequency)
{
    CashFlowList flows = CalculatorModel::freshCashFlows();
    flows[0].cash = QStringLiteral("-25000");
    for (size_t i = 1; i < flows.size(); ++i) {
        flows[i].cash = QString::number(300 + 7 * int(i));
        flows[i].freq = QString::number(frequency);
    }
    if (frequency > 1) // keep an IRR inside (−100 %, 100 %)
        flows[0].cash = QStringLiteral("-2500000");
    return flows;
}

// The solver alone over a full list, at frequencies 1 and 1000.
void irrOfAFullList(benchmark::State& state)
{
    const CashFlowList flows = fullList(int(state.range(0)));
    double irr = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(irr = CalculatorModel::calculateIrr(flows));
    state.counters["irr"] = irr;
}
BENCHMARK(irrOfAFullList)->Arg(1)->Arg(1000)->Unit(benchmark::kMicrosecond);

void irrWithoutASignChange(benchmark::State& state)
{
    CashFlowList flows = CalculatorModel::freshCashFlows();
    for (CashFlow& flow : flows)
        flow.cash = QStringLiteral("100");
    for (auto _ : state)
        benchmark::DoNotOptimize(CalculatorModel::calculateIrr(flows));
}
BENCHMARK(irrWithoutASignChange)->Unit(benchmark::kMicrosecond);

// Keys through the keypad and the engine, as the screen presses them.

// The keypad with its registers typed in, for CPT of any register: a
// 30-year monthly mortgage.
void typeRegisters(CalculatorKeypad& keypad)
{
    for (const char* key : {"1", "2", "P/Y", "1", "2", "C/Y", "3",  "6", "0",  "N",   "6",  "I/Y",
                            "2", "5", "0",   "0", "0", "0",   "PV", "0", "FV", "CPT", "PMT"})
        keypad.pressTitle(QString::fromUtf8(key));
}

// CPT then the register: two keys per iteration. A register solved from
// the other four comes back as it was (to rounding), so every iteration
// solves the same problem.
void computeKey(benchmark::State& state, const char* name)
{
    CalculatorKeypad keypad;
    CalculatorController engine;
    typeRegisters(keypad);
    const QString title = QString::fromUtf8(name);
    const int cpt = keypad.indexOfShownTitle(QStringLiteral("CPT"));
    const int key = keypad.indexOfShownTitle(title);
    for (auto _ : state) {
        keypad.buttonClicked(cpt);
        keypad.buttonClicked(key);
        benchmark::DoNotOptimize(engine.displayNumber());
    }
    state.counters["display"] = QLocale().toDouble(engine.displayNumber());
}
BENCHMARK_CAPTURE(computeKey, N, "N")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(computeKey, IY, "I/Y")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(computeKey, PV, "PV")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(computeKey, PMT, "PMT")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(computeKey, FV, "FV")->Unit(benchmark::kMicrosecond);

// CPT NPV or CPT IRR on a full 100-entry list entered through the keys at
// the given frequency.
void cashFlowKey(benchmark::State& state, const char* name)
{
    CalculatorKeypad keypad;
    CalculatorController engine;
    const CashFlowList flows = fullList(int(state.range(0)));
    const auto type = [&](const QString& text) {
        for (const QChar c : text)
            keypad.pressTitle(QString(c));
    };
    keypad.pressTitle(QStringLiteral("CF"));
    for (size_t i = 0; i < flows.size(); ++i) {
        type(flows[i].cash);
        keypad.pressTitle(QStringLiteral("ENTER"));
        keypad.pressTitle(QStringLiteral("\u2193"));
        if (i > 0) {
            type(flows[i].freq);
            keypad.pressTitle(QStringLiteral("ENTER"));
            keypad.pressTitle(QStringLiteral("\u2193"));
        }
    }
    keypad.pressTitle(QStringLiteral("CF"));
    type(QStringLiteral("1"));
    keypad.pressTitle(QStringLiteral("I/Y"));
    const int cpt = keypad.indexOfShownTitle(QStringLiteral("CPT"));
    const int key = keypad.indexOfShownTitle(QString::fromUtf8(name));
    for (auto _ : state) {
        keypad.buttonClicked(cpt);
        keypad.buttonClicked(key);
        benchmark::DoNotOptimize(engine.displayNumber());
    }
    state.counters["display"] = QLocale().toDouble(engine.displayNumber());
}
BENCHMARK_CAPTURE(cashFlowKey, NPV, "NPV")->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(cashFlowKey, IRR, "IRR")->Arg(1)->Arg(1000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
