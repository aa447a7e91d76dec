// The form calculators' costs per user action, through the same calls the
// QML screens make: one field edit (the text into the C++ view, the
// controller's change action, the result labels written back), a TVM solve
// button (which also renders the report's chart image), and one cell edit of
// a full 99-row NPV cash-flow table with its results and chart data, and the
// bulk tables: one amount edit of 10,000 dated cash flows (XNPV and the XIRR
// solve after it) and one cell edit of 10,000 statistics rows (every
// result and the scatter chart's points).
//
// Runs from a temporary TALLYVANE_HOME with fresh services, so no user file
// is read or written.
#include "framework/QVFunctionView.h"
#include "functions/Calculators.h"
#include "functions/datedcashflows/DatedCashFlowsController.h"
#include "functions/npv/NpvController.h"
#include "functions/roi/RoiController.h"
#include "functions/statistics/StatisticsController.h"
#include "functions/tvm/TvmController.h"
#include "platform/Services.h"

#include <QDate>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cmath>

namespace {

// Alternates between two texts so that every edit really changes the field.
class AlternatingText {
public:
    AlternatingText(QString a, QString b) : m_texts{std::move(a), std::move(b)} {}
    const QString& next() { return m_texts[m_index ^= 1]; }

private:
    QString m_texts[2];
    int m_index = 0;
};

void roiFieldEdit(benchmark::State& state)
{
    RoiController roi;
    const QVFunctionView* view = roi.qvFunctionView();
    roi.editField(QStringLiteral("investmentField"), QStringLiteral("1000"));
    roi.editField(QStringLiteral("futureValueField"), QStringLiteral("1250"));
    roi.editField(QStringLiteral("yearsField"), QStringLiteral("2"));
    AlternatingText amounts(QStringLiteral("1250"), QStringLiteral("1312.5"));
    const QString field = QStringLiteral("futureValueField");
    const QString label = QStringLiteral("annualizedRoiResultLabel");
    for (auto _ : state) {
        roi.editField(field, amounts.next());
        benchmark::DoNotOptimize(view->text(label));
    }
}
BENCHMARK(roiFieldEdit);

void tvmSolveFutureValue(benchmark::State& state)
{
    TvmController tvm;
    const QVFunctionView* view = tvm.qvFunctionView();
    tvm.editField(QStringLiteral("pvField"), QStringLiteral("1000"));
    tvm.editField(QStringLiteral("pmtField"), QStringLiteral("100"));
    tvm.editField(QStringLiteral("interestField"), QStringLiteral("6"));
    tvm.editField(QStringLiteral("periodField"), QStringLiteral("30"));
    const QString fv = QStringLiteral("FV");
    for (auto _ : state) {
        tvm.solve(fv);
        benchmark::DoNotOptimize(view->text(QStringLiteral("fvField")));
    }
}
BENCHMARK(tvmSolveFutureValue)->Unit(benchmark::kMicrosecond);

void npvCellEditOfAFullTable(benchmark::State& state)
{
    NpvController npv;
    const QVFunctionView* view = npv.qvFunctionView();
    npv.editField(QStringLiteral("periodField"), QStringLiteral("99"));
    npv.editField(QStringLiteral("discountRateField"), QStringLiteral("8"));
    QStringList flows{QStringLiteral("-25000")};
    for (int row = 1; row < 99; ++row)
        flows << QString::number(300 + 7 * row);
    npv.setTableInput(QStringLiteral("cashArray"), flows);
    NpvTableController* table = npv.table();
    const auto* chart = qobject_cast<RateSweepChart*>(npv.chartDataSource());
    AlternatingText cash(QStringLiteral("650"), QStringLiteral("700"));
    for (auto _ : state) {
        table->fieldChanged(50, cash.next());
        benchmark::DoNotOptimize(view->text(QStringLiteral("irrResultLabel")));
        // The chart is drawn again from these points after every result.
        benchmark::DoNotOptimize(chart->dataForYAxisWithLineNumber(0));
    }
}
BENCHMARK(npvCellEditOfAFullTable)->Unit(benchmark::kMicrosecond);

// An investment of 1,000,000 on 2020-01-01 paid back by 9,999 daily
// amounts of 150 to 156 (some 4 % a year); each iteration changes one
// amount in the middle, which the screen follows with XNPV and XIRR.
void xirrOfTenThousandFlows(benchmark::State& state)
{
    DatedCashFlowsController flows;
    const QVFunctionView* view = flows.qvFunctionView();
    flows.editField(QStringLiteral("rateField"), QStringLiteral("5"));
    QStringList dates;
    QStringList amounts;
    const QDate start(2020, 1, 1);
    for (int row = 0; row < DatedCashFlowsModel::maximumRows; ++row) {
        dates << start.addDays(row).toString(Qt::ISODate);
        amounts << (row == 0 ? QStringLiteral("-1000000") : QString::number(150 + row % 7));
    }
    flows.setTableInput(QStringLiteral("dates"), dates);
    flows.setTableInput(QStringLiteral("amounts"), amounts);
    AlternatingText amount(QStringLiteral("900"), QStringLiteral("153"));
    for (auto _ : state) {
        flows.amountChanged(5000, amount.next());
        benchmark::DoNotOptimize(view->text(QStringLiteral("xirrLabel")));
    }
    if (!std::isfinite(flows.datedCashFlowsModel()->xirr))
        state.SkipWithError("no XIRR");
}
BENCHMARK(xirrOfTenThousandFlows)->Unit(benchmark::kMicrosecond);

// 10,000 rows of x and a noisy straight line y; each iteration changes one
// y, which the screen follows with every statistic, the fit and the
// scatter chart's points.
void statisticsOfTenThousandRows(benchmark::State& state)
{
    StatisticsController statistics;
    const QVFunctionView* view = statistics.qvFunctionView();
    QStringList xs;
    QStringList ys;
    for (int row = 0; row < StatisticsModel::maximumRows; ++row) {
        xs << QString::number(row);
        ys << QString::number(3 + 0.5 * row + (row * 7919) % 13 - 6);
    }
    statistics.setTableInput(QStringLiteral("x"), xs);
    statistics.setTableInput(QStringLiteral("y"), ys);
    AlternatingText y(QStringLiteral("2500"), QStringLiteral("2510"));
    for (auto _ : state) {
        statistics.yChanged(5000, y.next());
        benchmark::DoNotOptimize(view->text(QStringLiteral("rLabel")));
        // The chart is drawn again after every result.
        benchmark::DoNotOptimize(statistics.scatterData());
    }
}
BENCHMARK(statisticsOfTenThousandRows)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    // The TVM chart image needs fonts, hence a GUI application; no window
    // is shown.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    installCalculators();
    QTemporaryDir home;
    if (!home.isValid())
        return 1;
    qputenv("TALLYVANE_HOME", home.path().toUtf8());
    Services::reset();

    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
