#include "DepreciationController.h"

DepreciationController::DepreciationController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void DepreciationController::connectMvc()
{
    setModel(QVFunctionModel::create<DepreciationModel>());
    auto* view = new QVFunctionView(this);
    setView(view);
    // As the model starts: straight line, a whole first year, double
    // declining balance.
    view->setText(QStringLiteral("methodButton"), QStringLiteral("SL"));
    view->setText(QStringLiteral("firstYearMonthsField"), QStringLiteral("12"));
    view->setText(QStringLiteral("factorField"), QStringLiteral("200"));
}

void DepreciationController::methodClicked()
{
    presentChoice(QStringLiteral("method"), QStringLiteral("Method"),
                  QStringLiteral("Please choose a depreciation method."),
                  [this](const QString& word) { depreciationModel()->method = word; });
}

void DepreciationController::fieldChanged()
{
    QVFunctionController::fieldChanged();
    emit scheduleChanged();
}

QByteArray DepreciationController::scheduleCsv() const
{
    return depreciationModel()->scheduleCsv();
}

QVariantList DepreciationController::scheduleRows() const
{
    QVariantList rows;
    for (const DepreciationModel::Year& y : depreciationModel()->schedule)
        rows.append(QVariantMap{{QStringLiteral("year"), y.year},
                                {QStringLiteral("depreciation"), stringFromDouble(y.depreciation)},
                                {QStringLiteral("accumulated"), stringFromDouble(y.accumulated)},
                                {QStringLiteral("bookValue"), stringFromDouble(y.bookValue)}});
    return rows;
}
