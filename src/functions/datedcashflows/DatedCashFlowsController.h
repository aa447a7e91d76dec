#pragma once

#include "DatedCashFlowsModel.h"
#include "DatedCashFlowsView.h"
#include "framework/QVFunctionController.h"

#include <QStringList>

// The dated-cash-flows screen: the number of rows (2 to 100), each a date
// (YYYY-MM-DD) and an amount, and the rate for XNPV; XNPV and XIRR follow
// every edit. Hidden rows keep what was typed in them.
class DatedCashFlowsController : public QVFunctionController {
    Q_OBJECT
    Q_PROPERTY(int rowCount READ rowCount NOTIFY rowsChanged)
    Q_PROPERTY(QStringList dateTexts READ dateTexts NOTIFY rowsChanged)
    Q_PROPERTY(QStringList amountTexts READ amountTexts NOTIFY rowsChanged)

public:
    // Ready to use: the model and view are made here.
    explicit DatedCashFlowsController(QObject* parent = nullptr);

    QList<FunctionInput> inputs() const override;
    QList<TableInput> tableInputs() const override;
    bool setTableInput(const QString& property, const QStringList& values) override;
    void fieldChanged() override;

    int rowCount() const { return m_rowCount; }
    QStringList dateTexts() const { return m_dates; }
    QStringList amountTexts() const { return m_amounts; }
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
    void compute();

    int m_rowCount = 4;
    QStringList m_dates;
    QStringList m_amounts;
};
