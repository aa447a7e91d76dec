#pragma once

#include "GrowthTableController.h"
#include "NoncGrowthModel.h"
#include "framework/QVFunctionController.h"

// The nonconstant-growth screen: the current dividend, the number of
// periods, the price, and the embedded rate table. The form and the table
// share nothing but notifications: a period edit posts
// "PeriodChangedNotification" for the table, the table's edits reach the
// model as "RateChangedNotification", and the model's
// "ResultCalculatedNotification" brings the price back to the form. Those
// names are shared with other table screens, and every listener hears every
// sender.
class NoncGrowthController : public QVFunctionController {
    Q_OBJECT
    Q_PROPERTY(GrowthTableController* table READ table CONSTANT)

public:
    // Ready to use: the model, the view and the table are made here.
    explicit NoncGrowthController(QObject* parent = nullptr);

    // The change action of the form: the period's action for an edit of the
    // period field, the dividend's for any other.
    void fieldChanged() override;

    // Reads the dividend field into the model.
    void setInputValues();
    // The actions of the dividend and period fields.
    Q_INVOKABLE void dividendChanged();
    Q_INVOKABLE void periodChanged();
    // Shows the price the model has just worked out.
    void resultCalculatedNotificationReceived();

    // Types `values` into the first rows of the table column `property`
    // ("return-rate" or "growth-rate"; "returnRate" and "growthRate" too),
    // one edit per row; false for another column or more values than rows.
    bool setTableInput(const QString& property, const QStringList& values) override;
    // Every rate the column keeps, the hidden rows too: those beyond the
    // period count again when it grows, and a fractional period (2.5) takes
    // the rates of a row its table does not show.
    QStringList tableTexts(const QString& property) const override;

    NoncGrowthModel* noncGrowthModel() const { return static_cast<NoncGrowthModel*>(model()); }
    GrowthTableController* table() const { return m_table; }

protected:
    // An edit updates its own field's value only.
    bool readsEveryField() const override { return false; }

    void connectMvc() override;

private:
    GrowthTableController* m_table = nullptr;
};
