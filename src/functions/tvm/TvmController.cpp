#include "TvmController.h"

#include "TvmView.h"
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
    setView(new TvmView(this));
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

QList<FunctionInput> TvmController::inputs() const
{
    return {{QStringLiteral("presentValue"), pvField},
            {QStringLiteral("futureValue"), fvField},
            {QStringLiteral("interestRate"), interestField},
            {QStringLiteral("period"), periodField},
            {QStringLiteral("payment"), pmtField},
            {QStringLiteral("paymentFrequency"), frequencyButton, FunctionInput::Kind::Choice,
             QStringLiteral("frequencyClicked")},
            {QStringLiteral("paymentMode"), modeButton, FunctionInput::Kind::Choice,
             QStringLiteral("modeClicked")}};
}

QStringList TvmController::solveButtons() const
{
    return {QStringLiteral("PV"), QStringLiteral("FV"), QStringLiteral("PMT"),
            QStringLiteral("I/Y"), QStringLiteral("N")};
}

void TvmController::solve(const QString& name)
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

void TvmController::setInputValues()
{
    TvmModel* m = tvmModel();
    m->presentValue = fieldNumber(pvField);
    m->futureValue = fieldNumber(fvField);
    m->interestRate = fieldNumber(interestField);
    m->period = fieldNumber(periodField);
    m->payment = fieldNumber(pmtField);
}

void TvmController::solveInto(const QString& outlet, double (TvmModel::*solver)())
{
    setInputValues();
    // A solve's note is about that solve alone.
    tvmModel()->clearNotes();
    for (const QString& field : {pvField, fvField, interestField, periodField, pmtField})
        qvFunctionView()->setNote(field, {});
    (tvmModel()->*solver)();
    showResultOf(outlet, propertyOf(outlet));
    hideChart();
}

const char* TvmController::propertyOf(const QString& outlet)
{
    if (outlet == pvField)
        return "presentValue";
    if (outlet == fvField)
        return "futureValue";
    if (outlet == interestField)
        return "interestRate";
    if (outlet == periodField)
        return "period";
    return "payment";
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
        {QStringLiteral("BEG"), QStringLiteral("END")}, modeButton, [this](const QString& mode) {
            qvFunctionView()->setText(modeButton, mode);
            tvmModel()->paymentMode = mode;
        });
}

void TvmController::frequencyClicked()
{
    QStringList words;
    for (const auto& [word, count] : frequencies())
        words << word;
    presentChoices(QStringLiteral("Frequency"), QStringLiteral("Please choose a frequency."), words,
                   frequencyButton, [this](const QString& word) {
                       for (const auto& [name, count] : frequencies()) {
                           if (name == word) {
                               qvFunctionView()->setText(frequencyButton, word);
                               tvmModel()->paymentFrequency = count;
                           }
                       }
                   });
}
