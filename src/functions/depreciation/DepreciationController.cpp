#include "DepreciationController.h"

namespace {
const QString costField = QStringLiteral("costField");
const QString salvageField = QStringLiteral("salvageField");
const QString lifeField = QStringLiteral("lifeField");
const QString firstYearMonthsField = QStringLiteral("firstYearMonthsField");
const QString methodButton = QStringLiteral("methodButton");
const QString factorField = QStringLiteral("factorField");
} // namespace

DepreciationController::DepreciationController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

void DepreciationController::connectMvc()
{
    setModel(QVFunctionModel::create<DepreciationModel>());
    auto* view = new DepreciationView(this);
    setView(view);
    view->setText(methodButton, QStringLiteral("SL"));
    view->setText(firstYearMonthsField, QStringLiteral("12"));
    view->setText(factorField, QStringLiteral("200"));
}

const QStringList& DepreciationController::methods()
{
    static const QStringList words = {QStringLiteral("SL"), QStringLiteral("SYD"),
                                      QStringLiteral("DDB"), QStringLiteral("DB")};
    return words;
}

QList<FunctionInput> DepreciationController::inputs() const
{
    return {{QStringLiteral("cost"), costField},
            {QStringLiteral("salvage"), salvageField},
            {QStringLiteral("life"), lifeField},
            {QStringLiteral("firstYearMonths"), firstYearMonthsField},
            {QStringLiteral("method"), methodButton, FunctionInput::Kind::Choice,
             QStringLiteral("methodClicked")},
            {QStringLiteral("factor"), factorField}};
}

void DepreciationController::methodClicked()
{
    presentChoices(QStringLiteral("Method"), QStringLiteral("Please choose a depreciation method."),
                   methods(), methodButton, [this](const QString& word) {
                       qvFunctionView()->setText(methodButton, word);
                       fieldChanged();
                   });
}

void DepreciationController::fieldChanged()
{
    DepreciationModel* m = depreciationModel();
    m->cost = fieldNumber(costField);
    m->salvage = fieldNumber(salvageField);
    m->life = fieldNumber(lifeField);
    m->firstYearMonths = fieldNumber(firstYearMonthsField);
    m->method = qvFunctionView()->text(methodButton);
    m->factor = fieldNumber(factorField);
    m->calculateResult();
    showResultOf(QStringLiteral("firstYearDepreciationLabel"), "firstYearDepreciation");
    showResultOf(QStringLiteral("totalDepreciationLabel"), "totalDepreciation");
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
