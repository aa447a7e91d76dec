// The form calculators' costs per user action, through the same calls the
// QML screens make: one field edit (the text into the C++ view, the
// controller's change action, the result labels written back), a TVM solve
// button (which also renders the report's chart image), and one cell edit of
// a full 99-row NPV cash-flow table with its results and chart data.
//
// Runs from a temporary TALLYVANE_HOME with fresh services, so no user file
// is read or written.
#include "framework/QVFunctionView.h"
#include "functions/Calculators.h"
#include "functions/npv/NpvController.h"
#include "functions/roi/RoiController.h"
#include "functions/tvm/TvmController.h"
#include "platform/Services.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

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
