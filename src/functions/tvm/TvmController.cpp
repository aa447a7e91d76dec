#include "TvmController.h"

#include "platform/ReviewPrompt.h"
#include "platform/Services.h"

namespace {
const QString pvField = QStringLiteral("pvField");
const QString fvField = QStringLiteral("fvField");
const QString interestField = QStringLiteral("interestField");
const QString periodField = QStringLiteral("periodField");
const QString pmtField = QStringLiteral("pmtField");
const QString modeButton = QStringLiteral("modeButton");
const QString frequencyButton = QStringLiteral("frequencyButton");
} // namespace

const QList<std::pair<QString, double>>& TvmController::frequencies()
{
    static const QList<std::pair<QString, double>> all = {{QStringLiteral("Monthly"), 12},
                                                          {QStringLiteral("Quarterly"), 4},
                                                          {QStringLiteral("Semiannually"), 2},
                                                          {QStringLiteral("Annually"), 1}};
    return all;
}

TvmController::TvmController(QObject* parent) : QVChartController(parent)
{
    load();
}

void TvmController::connectMvc()
{
    setModel(QVFunctionModel::create<TvmModel>());
    setView(new QVFunctionView(this));
    setInitialTvmSettings();
}

void TvmController::setInitialTvmSettings()
{
    TvmModel* m = tvmModel();
    m->paymentMode = QStringLiteral("BEG");
    m->paymentFrequency = 1.0;
    qvFunctionView()->setText(modeButton, m->paymentMode);
    qvFunctionView()->setText(frequencyButton, QStringLiteral("Annually"));
}

void TvmController::solveFor(const QString& name)
{
    if (name == u"PV")
        presentValueClicked();
    else if (name == u"FV")
        futureValueClicked();
    else if (name == u"PMT")
        paymentClicked();
    else if (name == u"I/Y")
        interestRateClicked();
    else if (name == u"N")
        periodClicked();
}

void TvmController::solveInto(const QString& outlet, double (TvmModel::*solver)())
{
    // Only a solve reads the fields: edits compute nothing.
    readFields();
    // A solve's note is about that solve alone.
    tvmModel()->clearNotes();
    for (const FieldDescription& field : description()->fields)
        qvFunctionView()->setNote(field.outlet, {});
    (tvmModel()->*solver)();
    showResultOf(outlet, description()->field(outlet)->key.toLatin1().constData());
    hideChart();
}

void TvmController::finishChartSolve(const QString& quantity)
{
    tvmModel()->lastCalculated = quantity;
    showGraph();
    Services::reviewPrompt().requestReview();
}

void TvmController::presentValueClicked()
{
    solveInto(pvField, &TvmModel::calculatePresentValue);
    finishChartSolve(QStringLiteral("PV"));
}

void TvmController::futureValueClicked()
{
    solveInto(fvField, &TvmModel::calculateFutureValue);
    finishChartSolve(QStringLiteral("FV"));
}

void TvmController::interestRateClicked()
{
    solveInto(interestField, &TvmModel::calculateInterestRate);
    finishChartSolve(QStringLiteral("I/Y"));
}

void TvmController::paymentClicked()
{
    solveInto(pmtField, &TvmModel::calculatePayment);
    finishChartSolve(QStringLiteral("PMT"));
}

void TvmController::periodClicked()
{
    // N is solved and the chart cleared, but no new chart is drawn.
    solveInto(periodField, &TvmModel::calculatePeriod);
    Services::reviewPrompt().requestReview();
}

void TvmController::showGraph()
{
    if (!(tvmModel()->period > 0))
        return;
    tvmModel()->freezeChart();
    redrawChart(true);
}

ChartPicture TvmController::reportChart() const
{
    // The chart as it was drawn (its data is kept from the solve), drawn
    // only when a mail or a save asks: solving stays cheap. The screen's
    // look: legend type 1, light grid lines, 12-point text, the custom marker.
    if (!chartShown())
        return {};
    ChartPicture picture;
    picture.source = tvmModel();
    picture.delegate = tvmModel();
    picture.size = m_chartSize;
    picture.legendViewType = 1;
    picture.showCustomMarkerView = true;
    return picture;
}

void TvmController::modeClicked()
{
    presentChoices(
        QStringLiteral("Mode"), QStringLiteral("Please choose a mode for your payments."),
        description()->field(modeButton)->words, modeButton, [this](const QString& mode) {
            qvFunctionView()->setText(modeButton, mode);
            tvmModel()->paymentMode = mode;
        });
}

void TvmController::frequencyClicked()
{
    presentChoices(QStringLiteral("Frequency"), QStringLiteral("Please choose a frequency."),
                   description()->field(frequencyButton)->words, frequencyButton,
                   [this](const QString& word) {
                       for (const auto& [name, count] : frequencies()) {
                           if (name == word) {
                               qvFunctionView()->setText(frequencyButton, word);
                               tvmModel()->paymentFrequency = count;
                           }
                       }
                   });
}
