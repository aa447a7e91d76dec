#include "ExpReturnController.h"

#include "ExpReturnView.h"
#include "framework/FinanceMath.h"
#include "framework/NumberFormat.h"
#include "platform/NotificationCenter.h"

namespace {
const QString periodField = QStringLiteral("periodField");
const QString expReturnAResultLabel = QStringLiteral("expReturnAResultLabel");
const QString expReturnBResultLabel = QStringLiteral("expReturnBResultLabel");
const QString standardDeviationAResultLabel = QStringLiteral("standardDeviationAResultLabel");
const QString standardDeviationBResultLabel = QStringLiteral("standardDeviationBResultLabel");
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
    setView(new ExpReturnView(this));
    // The form starts by showing the period the table starts with.
    qvFunctionView()->setText(periodField, QString::number(expReturnModel()->period));
    NotificationCenter::defaultCenter().addObserver(
        this, QStringLiteral("ResultCalculatedNotification"),
        [this](const Notification&) { resultCalculatedNotificationReceived(); });
}

QList<FunctionInput> ExpReturnController::inputs() const
{
    return {{QStringLiteral("period"), periodField}};
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
    showResult();
}

void ExpReturnController::showResult()
{
    const ExpReturnModel* m = expReturnModel();
    QVFunctionView* v = qvFunctionView();
    v->setText(expReturnAResultLabel,
               stringWithFormat(QStringLiteral("%@%%"), stringFromDouble(m->expectedReturnA)));
    v->setText(standardDeviationAResultLabel,
               stringWithFormat(QStringLiteral("%.@%%"), stringFromDouble(m->standardDeviationA)));
    v->setText(expReturnBResultLabel,
               stringWithFormat(QStringLiteral("%@%%"), stringFromDouble(m->expectedReturnB)));
    v->setText(standardDeviationBResultLabel,
               stringWithFormat(QStringLiteral("%@%%"), stringFromDouble(m->standardDeviationB)));
    // The results keep their own format; their notes go under them as on
    // every other screen.
    v->setNote(expReturnAResultLabel, m->note(QStringLiteral("expectedReturnA")));
    v->setNote(standardDeviationAResultLabel, m->note(QStringLiteral("standardDeviationA")));
    v->setNote(expReturnBResultLabel, m->note(QStringLiteral("expectedReturnB")));
    v->setNote(standardDeviationBResultLabel, m->note(QStringLiteral("standardDeviationB")));
}

QString ExpReturnController::stringWithFormat(const QString& format, const QString& object)
{
    QString result;
    const qsizetype size = format.size();
    for (qsizetype i = 0; i < size; ++i) {
        if (format.at(i) != u'%' || i + 1 >= size) {
            result += format.at(i);
            continue;
        }
        if (format.at(i + 1) == u'%') {
            result += u'%';
            ++i;
            continue;
        }
        // "%@" with an optional precision: "." and digits before the "@".
        qsizetype j = i + 1;
        if (format.at(j) == u'.') {
            ++j;
            while (j < size && format.at(j).isDigit())
                ++j;
        }
        if (j < size && format.at(j) == u'@') {
            result += object;
            i = j;
        } else {
            result += format.at(i);
        }
    }
    return result;
}

QList<TableInput> ExpReturnController::tableInputs() const
{
    const int rows = int(expReturnModel()->rates.size());
    return {{QStringLiteral("probability"), rows},
            {QStringLiteral("stock-a"), rows},
            {QStringLiteral("stock-b"), rows}};
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
