#include "DatedBondController.h"

#include <QPointer>
#include <limits>

namespace {
const QString settlementField = QStringLiteral("settlementField");
const QString maturityField = QStringLiteral("maturityField");
const QString couponRateField = QStringLiteral("couponRateField");
const QString redemptionField = QStringLiteral("redemptionField");
const QString frequencyButton = QStringLiteral("frequencyButton");
const QString basisButton = QStringLiteral("basisButton");
const QString yieldField = QStringLiteral("yieldField");
const QString priceField = QStringLiteral("priceField");
const QString callDateField = QStringLiteral("callDateField");
const QString callPriceField = QStringLiteral("callPriceField");
} // namespace

DatedBondController::DatedBondController(QObject* parent) : QVChartController(parent)
{
    load();
}

void DatedBondController::connectMvc()
{
    setModel(QVFunctionModel::create<DatedBondModel>());
    setView(new QVFunctionView(this));
    // The clean price against the yield, from a yield below 0 too.
    const QPointer<DatedBondModel> model = datedBondModel();
    m_chart = new RateSweepChart(
        {QStringLiteral("Clean price"), QStringLiteral("#2E86AB"),
         QStringLiteral("Price at %1: %2"), true},
        [model] { return model ? model->yield : 0.0; },
        [model](double yield) { return BondMath::price(model->bond(), yield / 100); },
        [model] { return model && model->bondProblem().isEmpty(); }, this);
    // What holds until another is entered or chosen: a bond redeemed at
    // par, with semiannual coupons counted 30/360 (the spreadsheets'
    // default basis).
    qvFunctionView()->setText(redemptionField, QStringLiteral("100"));
    qvFunctionView()->setText(frequencyButton, datedBondModel()->frequency);
    qvFunctionView()->setText(basisButton, datedBondModel()->basis);
}

QString DatedBondController::chartTitle() const
{
    return QStringLiteral("Chart of the clean price against the yield");
}

ChartPicture DatedBondController::reportChart() const
{
    if (!chartShown())
        return {};
    ChartPicture picture;
    picture.source = m_chart;
    picture.delegate = m_chart;
    picture.legendViewType = 1;
    picture.showCustomMarkerView = true;
    return picture;
}

void DatedBondController::frequencyClicked()
{
    presentChoice(QStringLiteral("frequency"), QStringLiteral("Frequency"),
                  QStringLiteral("How often are the coupons paid?"), [](const QString&) {});
}

void DatedBondController::basisClicked()
{
    presentChoice(QStringLiteral("basis"), QStringLiteral("Day Count Basis"),
                  QStringLiteral("How should the days be counted?"), [](const QString&) {});
}

double DatedBondController::givenValue(const QString& outlet, double empty, QString* problem) const
{
    const QString unreadable = fieldProblem(outlet);
    if (!unreadable.isEmpty()) {
        if (problem->isEmpty())
            *problem = QStringLiteral("%1 cannot be read. %2").arg(labelOf(outlet), unreadable);
        return std::numeric_limits<double>::quiet_NaN();
    }
    return qvFunctionView()->text(outlet).trimmed().isEmpty() ? empty : givenNumber(outlet);
}

void DatedBondController::readInputs(const QString& given)
{
    DatedBondModel* m = datedBondModel();
    QString settlementProblem;
    QString maturityProblem;
    m->settlement = givenDate(settlementField, &settlementProblem);
    m->maturity = givenDate(maturityField, &maturityProblem);
    m->inputProblem = !settlementProblem.isEmpty() ? settlementProblem : maturityProblem;
    m->couponRate = givenValue(couponRateField, 0, &m->inputProblem);
    // An empty redemption is the usual one, at par.
    m->redemption = givenValue(redemptionField, 100, &m->inputProblem);
    m->frequency = qvFunctionView()->text(frequencyButton);
    m->basis = qvFunctionView()->text(basisButton);

    m->givenProblem.clear();
    if (given == u"yield")
        m->yield = givenValue(yieldField, 0, &m->givenProblem);
    else
        m->price = givenValue(priceField, 0, &m->givenProblem);

    // No call date is no call; one that cannot be read is said so.
    m->callProblem.clear();
    m->callDate = givenDate(callDateField, &m->callProblem);
    if (qvFunctionView()->text(callDateField).trimmed().isEmpty())
        m->callProblem.clear();
    m->callPrice = givenValue(callPriceField, 0, &m->callProblem);
}

void DatedBondController::solveFor(const QString& name)
{
    const bool solvesPrice = name == u"price";
    if (!solvesPrice && name != u"yield")
        return;
    readInputs(solvesPrice ? QStringLiteral("yield") : QStringLiteral("price"));
    DatedBondModel* m = datedBondModel();
    if (solvesPrice)
        m->calculatePrice();
    else
        m->calculateYield();
    // The value the solve started from is as typed: no note of its own.
    qvFunctionView()->setNote(solvesPrice ? yieldField : priceField, {});
    showResultOf(solvesPrice ? priceField : yieldField, solvesPrice ? "price" : "yield");
    showResults();
    redrawChart(m->bondProblem().isEmpty());
}
