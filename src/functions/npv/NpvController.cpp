#include "NpvController.h"

#include "framework/RateTable.h"
#include "numerics/FinanceMath.h"
#include "numerics/NumberFormat.h"
#include "platform/NotificationCenter.h"

#include <QPointer>

namespace {
const QString periodField = QStringLiteral("periodField");
const QString discountRateField = QStringLiteral("discountRateField");
const QString financeRateField = QStringLiteral("financeRateField");
const QString reinvestRateField = QStringLiteral("reinvestRateField");
} // namespace

NpvController::NpvController(QObject* parent) : QVChartController(parent)
{
    load();
    // The table is the form's embedded child screen; it loads after the form.
    m_table = new NpvTableController(this);
}

void NpvController::connectMvc()
{
    setModel(QVFunctionModel::create<NpvModel>());
    setView(new QVFunctionView(this));
    // The form starts by showing the period the table starts with.
    qvFunctionView()->setText(periodField, QString::number(npvModel()->period));
    // The NPV of the flows against the discount rate.
    const QPointer<NpvModel> model = npvModel();
    m_chartDataSource = new RateSweepChart(
        {QStringLiteral("NPV"), QStringLiteral("#DB3340"), QStringLiteral("NPV at %1: %2")},
        [model] { return model ? model->discountRate : 0.0; },
        [model](double rate) {
            return model ? model->calculateNpvWithCashFlowsAndRate(model->cashArray, rate) : 0.0;
        },
        [model] { return !model.isNull(); }, this);
    NotificationCenter::defaultCenter().addObserver(
        this, QStringLiteral("ResultCalculatedNotification"),
        [this](const Notification&) { resultCalculatedNotificationReceived(); });
}

void NpvController::fieldChanged()
{
    // The edited field says which action this is.
    if (changedField() == periodField)
        periodChanged();
    else if (changedField() == financeRateField || changedField() == reinvestRateField)
        mirrRatesChanged();
    else
        discountRateChanged();
}

void NpvController::mirrRatesChanged()
{
    // A blank rate follows the discount rate; text that cannot be read is
    // marked and counts as 0, as in the other fields.
    const auto entry = [this](const QString& outlet) -> std::optional<double> {
        if (qvFunctionView()->text(outlet).trimmed().isEmpty())
            return std::nullopt;
        return fieldNumber(outlet);
    };
    npvModel()->financeRateEntry = entry(financeRateField);
    npvModel()->reinvestRateEntry = entry(reinvestRateField);
    npvModel()->calculateResult();
}

void NpvController::periodChanged()
{
    // Only 1 to 99 periods are taken; anything else leaves the period as it
    // is, but the table is told the period all the same.
    const double value = NumberFormat::numberFromText(qvFunctionView()->text(periodField));
    NpvModel* m = npvModel();
    if (value > 0 && value < 100)
        m->period = FinanceMath::saturatedInteger(value);
    NotificationCenter::defaultCenter().post(QStringLiteral("PeriodChangedNotification"), this,
                                             {{QStringLiteral("period"), m->period}});
    m->calculateResult();
}

void NpvController::discountRateChanged()
{
    npvModel()->discountRate = fieldNumber(discountRateField);
    npvModel()->calculateResult();
}

void NpvController::resultCalculatedNotificationReceived()
{
    showResult();
}

void NpvController::showResult()
{
    showResults();
    redrawChart(true);
}

QStringList NpvController::tableTexts(const QString& property) const
{
    if (property != QLatin1String("cashArray"))
        return {};
    const QList<double>& flows = m_table->cashArr();
    return withoutTrailingEmptyRows(RateTable::columnTexts(flows, int(flows.size())));
}

bool NpvController::setTableInput(const QString& property, const QStringList& values)
{
    if (property != QLatin1String("cashArray") || values.size() > npvModel()->cashArray.size())
        return false;
    for (int row = 0; row < values.size(); ++row)
        m_table->fieldChanged(row, values.at(row));
    // The cells were filled without typing: show them.
    emit m_table->reloaded();
    return true;
}
