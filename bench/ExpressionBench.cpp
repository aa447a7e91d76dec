// One-shot parse + evaluate of realistic keypad lines: Tallyvane's engine
// against muparser (SetExpr + Eval on a reused parser) on the same set.
// The last line reads "ratio muparser/tallyvane: R", R being the ratio of
// the two medians over the set.
//
// `expression_bench --count tallyvane|muparser REPS` skips the harness: it
// evaluates every expression once to warm up, then REPS more times, and
// prints the number of expressions. Instruction counts of two REPS values
// (bench/expression_instructions.sh) then give the cost of one evaluation.
#include "AllocationCounter.h"
#include "expression/EPExpression.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <muParser.h>
#include <numbers>
#include <string>
#include <vector>

namespace {

// Valid in both syntaxes: explicit "*", "pi" defined for muparser.
const std::vector<std::string> expressions = {
    "1+2",
    "12.5*4-3/2",
    "2^10",
    "(1+2)*(3+4)",
    "sqrt(16)+ln(2)",
    "sin(pi/6)+cos(pi/3)",
    "atan(1)*4-pi",
    "((1.5+2.25)*(3-0.75))/(4+5)",
    "((((1+2)*3)-4)/5)^2",
    "1000*(1+0.05/12)^(12*30)",
    "250000*0.004166666666666667/(1-(1+0.004166666666666667)^(-360))",
    "3.14159*2.5^2*(1+sqrt(2))/(1+tan(0.5))",
    "1+2*3-4/5+6*7-8/9+10*11-12/13+14*15-16/17+18*19-20/21+22",
    "(1+2)*(3+4)-(5+6)/(7+8)+(9-10)*(11+12)-(13+14)/(15-16)+(17*18)",
};

void tallyvane(benchmark::State& state, const QString& text)
{
    const std::size_t before = AllocationCounter::count();
    for (auto _ : state) {
        std::optional<double> value = numberByParsingExpression(text);
        benchmark::DoNotOptimize(value);
    }
    state.counters["allocs/op"] = benchmark::Counter(double(AllocationCounter::count() - before),
                                                     benchmark::Counter::kAvgIterations);
}

void muparser(benchmark::State& state, const std::string& text)
{
    mu::Parser parser;
    parser.DefineConst("pi", std::numbers::pi);
    const std::size_t before = AllocationCounter::count();
    for (auto _ : state) {
        parser.SetExpr(text);
        double value = parser.Eval();
        benchmark::DoNotOptimize(value);
    }
    state.counters["allocs/op"] = benchmark::Counter(double(AllocationCounter::count() - before),
                                                     benchmark::Counter::kAvgIterations);
}

// Keeps each benchmark's time per iteration for the summary.
class CollectingReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.error_occurred)
                continue;
            const std::string name = run.benchmark_name();
            (name.rfind("tallyvane/", 0) == 0 ? tallyvaneTimes : muparserTimes)
                .push_back(run.GetAdjustedRealTime());
            unit = run.time_unit;
        }
    }
    std::vector<double> tallyvaneTimes;
    std::vector<double> muparserTimes;
    benchmark::TimeUnit unit = benchmark::kNanosecond;
};

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

// Evaluates each expression 1 + reps times with one engine, outside the
// benchmark harness.
int countRuns(const std::string& engine, int reps)
{
    double sum = 0;
    if (engine == "tallyvane") {
        std::vector<QString> texts;
        for (const std::string& text : expressions)
            texts.push_back(QString::fromStdString(text));
        for (int rep = 0; rep <= reps; ++rep)
            for (const QString& text : texts)
                sum += numberByParsingExpression(text).value_or(0.0);
    } else if (engine == "muparser") {
        mu::Parser parser;
        parser.DefineConst("pi", std::numbers::pi);
        for (int rep = 0; rep <= reps; ++rep) {
            for (const std::string& text : expressions) {
                parser.SetExpr(text);
                sum += parser.Eval();
            }
        }
    } else {
        std::fprintf(stderr, "unknown engine %s: tallyvane or muparser\n", engine.c_str());
        return 2;
    }
    benchmark::DoNotOptimize(sum);
    std::printf("expressions: %zu\n", expressions.size());
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 4 && std::string(argv[1]) == "--count")
        return countRuns(argv[2], std::atoi(argv[3]));
    for (size_t i = 0; i < expressions.size(); ++i) {
        const std::string& text = expressions[i];
        const QString qtext = QString::fromStdString(text);
        if (!numberByParsingExpression(qtext)) {
            std::fprintf(stderr, "not a valid keypad expression: %s\n", text.c_str());
            return 1;
        }
        const std::string label = std::to_string(i) + ":" + text;
        benchmark::RegisterBenchmark(("tallyvane/" + label).c_str(), tallyvane, qtext);
        benchmark::RegisterBenchmark(("muparser/" + label).c_str(), muparser, text);
    }
    benchmark::Initialize(&argc, argv);
    CollectingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();

    if (reporter.tallyvaneTimes.empty() || reporter.muparserTimes.empty())
        return 0;
    const double ours = median(reporter.tallyvaneTimes);
    const double theirs = median(reporter.muparserTimes);
    const char* unit = benchmark::GetTimeUnitString(reporter.unit);
    std::printf("median tallyvane: %.1f %s per expression\n", ours, unit);
    std::printf("median muparser: %.1f %s per expression\n", theirs, unit);
    std::printf("ratio muparser/tallyvane: %.2f\n", theirs / ours);
    return 0;
}
