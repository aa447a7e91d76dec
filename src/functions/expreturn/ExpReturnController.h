#pragma once

#include "ExpReturnModel.h"
#include "ExpReturnTableController.h"
#include "framework/QVFunctionController.h"

// The expected-return screen: the number of states, the four results and
// the embedded state table. The form and the table share nothing but
// notifications: a period edit posts "PeriodChangedNotification" for the
// table, the table's edits reach the model as "RateChangedNotification",
// and the model's "ResultCalculatedNotification" brings the results back to
// the form. Those names are shared with other table screens, and every
// listener hears every sender.
class ExpReturnController : public QVFunctionController {
    Q_OBJECT
    Q_PROPERTY(ExpReturnTableController* table READ table CONSTANT)

public:
    // Ready to use: the model, the view and the table are made here.
    explicit ExpReturnController(QObject* parent = nullptr);

    // The change action of the form: its one field is the period.
    void fieldChanged() override;

    // The action of the period field.
    Q_INVOKABLE void periodChanged();
    // Shows the results the model has just worked out.
    void resultCalculatedNotificationReceived();

    // Types `values` into the first rows of the table column `property`
    // ("probability", "stock-a" or "stock-b"; "stockA" and "stockB" too),
    // one edit per row; false for another column or more values than rows.
    bool setTableInput(const QString& property, const QStringList& values) override;
    // Every value the column keeps, the hidden rows beyond the period too
    // (they count again when it grows).
    QStringList tableTexts(const QString& property) const override;

    ExpReturnModel* expReturnModel() const { return static_cast<ExpReturnModel*>(model()); }
    ExpReturnTableController* table() const { return m_table; }

protected:
    // An edit updates its own field's value only.
    bool readsEveryField() const override { return false; }

    void connectMvc() override;

private:
    ExpReturnTableController* m_table = nullptr;
};
