#pragma once

#include "NpvModel.h"
#include "NpvTableController.h"
#include "framework/QVChartController.h"
#include "framework/RateSweepChart.h"

// The NPV screen: the period and discount-rate fields, the finance and
// reinvestment rates of the modified IRR, the results, the
// embedded cash-flow table and the chart of NPV against the rate. The form
// and the table share nothing but notifications: a period edit posts
// "PeriodChangedNotification" for the table, the table's edits reach the
// model as "CashChangedNotification", and the model's
// "ResultCalculatedNotification" brings the results back to the form. Its
// fields, table and results are those of its description
// (NpvDescription.cpp); each field is read by its own action.
class NpvController : public QVChartController {
    Q_OBJECT
    Q_PROPERTY(NpvTableController* table READ table CONSTANT)

public:
    // Ready to use: the model, the view and the table are made here.
    explicit NpvController(QObject* parent = nullptr);

    // The change action of the form's fields: the period's action for an
    // edit of the period field, the discount rate's for any other.
    void fieldChanged() override;

    // The actions of the fields: the period, the discount rate, and the two
    // rates of the modified IRR.
    Q_INVOKABLE void periodChanged();
    Q_INVOKABLE void discountRateChanged();
    Q_INVOKABLE void mirrRatesChanged();
    void resultCalculatedNotificationReceived();
    void showResult();

    // Types `values` into the first rows of the table "cashArray", one edit
    // per row; false for another table or more values than there are flows.
    bool setTableInput(const QString& property, const QStringList& values) override;
    // Every flow the table keeps, the hidden ones beyond the period too
    // (they count again when it grows).
    QStringList tableTexts(const QString& property) const override;

    NpvModel* npvModel() const { return static_cast<NpvModel*>(model()); }
    NpvTableController* table() const { return m_table; }
    QObject* chartDataSource() const override { return m_chartDataSource; }

protected:
    // An edit updates its own field's value only.
    bool readsEveryField() const override { return false; }

    void connectMvc() override;

private:
    NpvTableController* m_table = nullptr;
    RateSweepChart* m_chartDataSource = nullptr;
};
