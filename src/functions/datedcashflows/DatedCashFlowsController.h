#pragma once

#include "DatedCashFlowsModel.h"
#include "framework/PairedRows.h"
#include "framework/QVFunctionController.h"

#include <QDate>
#include <QLocale>
#include <QStringList>
#include <vector>

// The dated-cash-flows screen: the number of rows (2 to 10,000), each a date
// (YYYY-MM-DD) and an amount, and the rate for XNPV; XNPV and XIRR follow
// every edit. Hidden rows keep what was typed in them. A row with both
// cells empty is no flow; a row with a text that cannot be read (or an
// amount without a date) is marked and blanks the results, with a note
// naming it. Its fields, tables and results are those of its description
// (DatedCashFlowsDescription.cpp).
class DatedCashFlowsController : public QVFunctionController {
    Q_OBJECT
    Q_PROPERTY(int rowCount READ rowCount NOTIFY rowsChanged)
    Q_PROPERTY(QAbstractListModel* rows READ rows CONSTANT)

public:
    // Ready to use: the model and view are made here.
    explicit DatedCashFlowsController(QObject* parent = nullptr);

    // Fills the first rows of "dates" or "amounts" with `values`, showing
    // at least as many rows; false for another table or too many values.
    bool setTableInput(const QString& property, const QStringList& values) override;
    // The dates or amounts as typed, the hidden rows beyond the number of
    // rows too (they come back when it grows).
    QStringList tableTexts(const QString& property) const override;
    void fieldChanged() override;
    // The day-count basis's sheet; the results follow the word chosen.
    Q_INVOKABLE void basisClicked();

    int rowCount() const { return m_rows.shown(); }
    QAbstractListModel* rows() { return &m_rows; }
    Q_INVOKABLE QString dateText(int row) const { return m_rows.text(0, row); }
    Q_INVOKABLE QString amountText(int row) const { return m_rows.text(1, row); }
    // Why a row's date or amount cannot be read; empty when it can.
    Q_INVOKABLE QString dateProblem(int row) const;
    Q_INVOKABLE QString amountProblem(int row) const;
    // One edit of a row's date or amount, as its field sends it.
    Q_INVOKABLE void dateChanged(int row, const QString& text);
    Q_INVOKABLE void amountChanged(int row, const QString& text);

    DatedCashFlowsModel* datedCashFlowsModel() const
    {
        return static_cast<DatedCashFlowsModel*>(model());
    }

signals:
    void rowsChanged();

protected:
    void connectMvc() override;

private:
    // What the two texts of a row read as, kept with those texts: an edit
    // changes one row, and reading all 10,000 again after each would take
    // longer than all the rest of the work.
    struct ReadRow {
        QString dateText, amountText; // as read; null before the first reading
        QString dateProblem, amountProblem;
        QDate date;
        double amount = 0;
    };
    const ReadRow& readRow(int row) const;
    void compute();

    // The dates and amounts as typed, 4 rows shown at first.
    PairedRows m_rows;
    mutable std::vector<ReadRow> m_read;
    // The locale the amounts were read in: another one reads them again.
    QLocale m_readLocale;
};
