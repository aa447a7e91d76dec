#include "ConstGrowthController.h"

#include "framework/Presenter.h"

#include <QPointer>

const QString ConstGrowthController::unchosenTitle = QStringLiteral("Choose");

ConstGrowthController::ConstGrowthController(QObject* parent) : QVFunctionController(parent)
{
    load();
}

const FieldDescription& ConstGrowthController::dividendTypeField() const
{
    return *description()->field(QStringLiteral("dividendType"));
}

void ConstGrowthController::connectMvc()
{
    setModel(QVFunctionModel::create<ConstGrowthModel>());
    setView(new QVFunctionView(this));
    qvFunctionView()->setText(dividendTypeField().outlet, unchosenTitle);
}

void ConstGrowthController::fieldChanged()
{
    // The type is the button's title as it stands: a title that is neither
    // type (before the first choice) leaves the price as it was.
    constGrowthModel()->dividendType = qvFunctionView()->text(dividendTypeField().outlet);
    QVFunctionController::fieldChanged();
}

void ConstGrowthController::dividendTypeClicked()
{
    // Built here rather than with presentChoices(): this sheet offers the
    // two types only, with no "Cancel" button.
    Presenter* sheetPresenter = presenter();
    if (!sheetPresenter)
        return;
    const FieldDescription& field = dividendTypeField();
    AlertRequest sheet;
    sheet.kind = AlertRequest::Kind::ActionSheet;
    sheet.title = QStringLiteral("Dividend Type");
    sheet.message = QStringLiteral("Please choose a type for dividends.");
    for (const QString& word : field.words)
        sheet.actions.append({word});
    sheet.anchor = field.outlet;
    QPointer<ConstGrowthController> self(this);
    sheetPresenter->present(sheet, [self, field](const QString& action, const QString&) {
        if (!self || !field.words.contains(action))
            return;
        self->qvFunctionView()->setText(field.outlet, action);
        self->fieldChanged();
    });
}
