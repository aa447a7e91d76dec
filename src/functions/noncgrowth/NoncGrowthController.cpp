#include "NoncGrowthController.h"

#include "framework/RateTable.h"
#include "numerics/FinanceMath.h"
#include "numerics/NumberFormat.h"
#include "platform/NotificationCenter.h"

namespace {
const QString dividendField = QStringLiteral("dividendField");
const QString periodField = QStringLiteral("periodField");
} // namespace

NoncGrowthController::NoncGrowthController(QObject* parent) : QVFunctionController(parent)
{
    load();
    // The table is the form's embedded child screen; it loads after the form.
    m_table = new GrowthTableController(this);
}

void NoncGrowthController::connectMvc()
{
    setModel(QVFunctionModel::create<NoncGrowthModel>());
    setView(new QVFunctionView(this));
    // The form starts by showing the period the table starts with.
    qvFunctionView()->setText(periodField, QString::number(noncGrowthModel()->period));
    NotificationCenter::defaultCenter().addObserver(
        this, QStringLiteral("ResultCalculatedNotification"),
        [this](const Notification&) { resultCalculatedNotificationReceived(); });
}

void NoncGrowthController::fieldChanged()
{
    // The edited field says which action this is.
    if (changedField() == periodField)
        periodChanged();
    else
        dividendChanged();
}

void NoncGrowthController::setInputValues()
{
    noncGrowthModel()->dividend = fieldNumber(dividendField);
}

void NoncGrowthController::dividendChanged()
{
    setInputValues();
    // The price label follows through the model's notification.
    noncGrowthModel()->calculateResult();
}

void NoncGrowthController::periodChanged()
{
    // Only periods strictly between 0 and 100 are taken, fractions included
    // (2.5 values three dividends and no perpetuity); anything else leaves
    // the period as it is, but the table is told the period all the same.
    const double value = NumberFormat::numberFromText(qvFunctionView()->text(periodField));
    NoncGrowthModel* m = noncGrowthModel();
    if (value > 0 && value < 100)
        m->period = value;
    NotificationCenter::defaultCenter().post(
        QStringLiteral("PeriodChangedNotification"), this,
        {{QStringLiteral("period"), FinanceMath::saturatedInteger(m->period)}});
    m->calculateResult();
}

void NoncGrowthController::resultCalculatedNotificationReceived()
{
    showResults();
}

QStringList NoncGrowthController::tableTexts(const QString& property) const
{
    const QList<double>* column = nullptr;
    if (property == QLatin1String("return-rate") || property == QLatin1String("returnRate"))
        column = &m_table->returnRateArr();
    else if (property == QLatin1String("growth-rate") || property == QLatin1String("growthRate"))
        column = &m_table->growthArr();
    if (!column)
        return {};
    return withoutTrailingEmptyRows(RateTable::columnTexts(*column, int(column->size())));
}

bool NoncGrowthController::setTableInput(const QString& property, const QStringList& values)
{
    void (GrowthTableController::*edit)(int, const QString&) = nullptr;
    if (property == QLatin1String("return-rate") || property == QLatin1String("returnRate"))
        edit = &GrowthTableController::returnRateChanged;
    else if (property == QLatin1String("growth-rate") || property == QLatin1String("growthRate"))
        edit = &GrowthTableController::growthRateChanged;
    if (!edit || values.size() > noncGrowthModel()->rates.size())
        return false;
    for (int row = 0; row < values.size(); ++row)
        (m_table->*edit)(row, values.at(row));
    // The cells were filled without typing: show them.
    emit m_table->reloaded();
    return true;
}
