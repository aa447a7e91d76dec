#pragma once

#include "AmortizationModel.h"
#include "LoanEventList.h"
#include "framework/QVChartController.h"

#include <QVariantMap>

// The amortization screen: the loan, its rate and term, the payment and
// compounding frequencies, BEG/END, an extra payment, the first payment's
// date, rounding to cents and the P1–P2 range; recomputed on every edit.
// Events (extra payments, rate changes) are rows of a list of their own;
// the interest-only payments, the balloon, what an extra payment does and
// the fees are fields. It works out the payment from the term, or the term
// from a given payment (solve "payment" or "term"). The schedule is shown
// row by row with each year's subtotals (scheduleRow) and can be saved as
// CSV.
// Its fields, choices and results are those of its description
// (AmortizationDescription.cpp); a choice sets the model in its action.
class AmortizationController : public QVChartController {
    Q_OBJECT
    Q_PROPERTY(int scheduleRowCount READ scheduleRowCount NOTIFY scheduleChanged)
    Q_PROPERTY(bool scheduleHasDates READ scheduleHasDates NOTIFY scheduleChanged)
    Q_PROPERTY(QAbstractListModel* events READ events CONSTANT)
    Q_PROPERTY(bool solvingTerm READ solvingTerm NOTIFY solvingTermChanged)

public:
    // Ready to use: the model and view are made here.
    explicit AmortizationController(QObject* parent = nullptr);

    void fieldChanged() override;
    QByteArray scheduleCsv() const override;
    QObject* chartDataSource() const override { return model(); }

    // The schedule's payments and, after each year's last one, that year's
    // subtotal.
    int scheduleRowCount() const;
    // Row `index` of that list: "kind" ("payment" or "year"), "number" (the
    // payment's, or "Year 3"), "date", "payment", "interest", "principal",
    // "extra", "balance" (amounts with two decimals when kept in cents) and
    // "event".
    Q_INVOKABLE QVariantMap scheduleRow(int index) const;
    // Whether the payments have dates (a first payment date was given).
    bool scheduleHasDates() const
    {
        const QList<AmortizationModel::Row>& rows = amortizationModel()->schedule;
        return !rows.isEmpty() && rows.first().date.isValid();
    }

    bool solvingTerm() const { return amortizationModel()->solveTerm; }

    LoanEventList* events() { return &m_events; }
    // Fills the extra payments or the rate changes from "13:5000" texts.
    bool setTableInput(const QString& property, const QStringList& values) override;
    // The extra payments or the rate changes as "13:5000" texts, in the
    // list's order (the two kinds come back each after the other, not
    // interleaved as the list may hold them).
    QStringList tableTexts(const QString& property) const override;
    Q_INVOKABLE static QStringList eventKinds() { return LoanEventList::kinds(); }
    // The event list's edits, each recomputing the schedule.
    Q_INVOKABLE void addEvent(const QString& kind);
    Q_INVOKABLE void removeEvent(int row);
    Q_INVOKABLE void eventAtEdited(int row, const QString& text);
    Q_INVOKABLE void eventKindChosen(int row, const QString& kind);
    Q_INVOKABLE void eventValueEdited(int row, const QString& text);

    // The choices' sheets, offering the description's words.
    Q_INVOKABLE void paymentsPerYearClicked();
    Q_INVOKABLE void compoundingPerYearClicked();
    Q_INVOKABLE void paymentModeClicked();
    Q_INVOKABLE void afterExtraClicked();

    AmortizationModel* amortizationModel() const
    {
        return static_cast<AmortizationModel*>(model());
    }

    // The chart of the balance and the interest, when there is a schedule.
    ChartPicture reportChart() const override;

signals:
    void scheduleChanged();
    void solvingTermChanged();

protected:
    // "payment" works out the payment from the term, "term" the term from
    // the payment given.
    void solveFor(const QString& name) override;
    void connectMvc() override;

private:
    // Compounding follows the payments until it is chosen on its own.
    bool m_compoundingChosen = false;
    LoanEventList m_events;
};
