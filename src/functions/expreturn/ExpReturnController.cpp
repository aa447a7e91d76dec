#include "ExpReturnController.h"

#include "framework/RateTable.h"
#include "numerics/FinanceMath.h"
#include "numerics/NumberFormat.h"
#include "platform/NotificationCenter.h"

namespace {
const QString periodField = QStringLiteral("periodField");
} // namespace

ExpReturnController::ExpReturnController(QObject* parent) : QVFunctionController(parent)
{
    load();
    // The table is the form's embedded child screen; it loads after the form.
    m_table = new ExpReturnTableController(this);
}

void ExpReturnController::connectMvc()
{
    setModel(QVFunctionModel::create<ExpReturnModel>());
    setView(new QVFunctionView(this));
    // The form starts by showing the period the table starts with.
    qvFunctionView()->setText(periodField, QString::number(expReturnModel()->period));
    NotificationCenter::defaultCenter().addObserver(
        this, QStringLiteral("ResultCalculatedNotification"),
        [this](const Notification&) { resultCalculatedNotificationReceived(); });
}

void ExpReturnController::fieldChanged()
{
    periodChanged();
}

void ExpReturnController::periodChanged()
{
    // Only 1 to 99 states are taken (2.9 counts as 2); anything else leaves
    // the period as it is, but the table is told the period all the same.
    const double value = NumberFormat::numberFromText(qvFunctionView()->text(periodField));
    ExpReturnModel* m = expReturnModel();
    if (value > 0 && value < 100)
        m->period = FinanceMath::saturatedInteger(value);
    NotificationCenter::defaultCenter().post(QStringLiteral("PeriodChangedNotification"), this,
                                             {{QStringLiteral("period"), m->period}});
    m->calculateResult();
}

void ExpReturnController::resultCalculatedNotificationReceived()
{
    // The four results, each with its "%" and its note; the deviations are
    // written like the returns, with every digit the results' format keeps.
    showResults();
}

QStringList ExpReturnController::tableTexts(const QString& property) const
{
    const QList<double>* column = nullptr;
    if (property == QLatin1String("probability"))
        column = &m_table->probArr();
    else if (property == QLatin1String("stock-a") || property == QLatin1String("stockA"))
        column = &m_table->stockAArr();
    else if (property == QLatin1String("stock-b") || property == QLatin1String("stockB"))
        column = &m_table->stockBArr();
    if (!column)
        return {};
    return withoutTrailingEmptyRows(RateTable::columnTexts(*column, int(column->size())));
}

bool ExpReturnController::setTableInput(const QString& property, const QStringList& values)
{
    void (ExpReturnTableController::*edit)(int, const QString&) = nullptr;
    if (property == QLatin1String("probability"))
        edit = &ExpReturnTableController::probabilityChanged;
    else if (property == QLatin1String("stock-a") || property == QLatin1String("stockA"))
        edit = &ExpReturnTableController::stockAChanged;
    else if (property == QLatin1String("stock-b") || property == QLatin1String("stockB"))
        edit = &ExpReturnTableController::stockBChanged;
    if (!edit || values.size() > expReturnModel()->rates.size())
        return false;
    for (int row = 0; row < values.size(); ++row)
        (m_table->*edit)(row, values.at(row));
    // The cells were filled without typing: show them.
    emit m_table->reloaded();
    return true;
}
