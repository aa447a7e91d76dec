#pragma once

#include "store/ReportStore.h"
#include "store/WriteResult.h"

#include <QAbstractListModel>
#include <QByteArray>
#include <QList>

class QVReport;

// The saved-reports list as rows, newest first, exactly in stored order.
class ReportTableModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    // Why the stored list could not be read or created; empty when it was.
    Q_PROPERTY(QString loadError READ loadError NOTIFY loadErrorChanged)
    // The last deleted report can still be put back (for a few seconds on
    // the screen), and its title.
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY undoChanged)
    Q_PROPERTY(QString undoTitle READ undoTitle NOTIFY undoChanged)

public:
    enum Role {
        TitleRole = Qt::UserRole + 1,
        DateStringRole,
        FunctionTitleRole,
        ColorTagRole,
        FileNameRole,
        FilePathRole,
        // The calculator's full name, as the catalogue lists it ("Net
        // Present Value Calculator"), found by the short label kept in the
        // record ("Npv") for a report saved before reports named their
        // calculator, or that label when no calculator has it.
        CalculatorTitleRole,
    };

    // Loads the list at once; that first load creates the empty stored list
    // when there is none, so saves made from then on are kept.
    explicit ReportTableModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
    int count() const { return int(m_reportArray.size()); }
    QString loadError() const { return m_loadError; }
    bool canUndo() const { return !m_undoRows.isEmpty(); }
    QString undoTitle() const { return m_undoTitle; }

    // Re-reads the stored list.
    Q_INVOKABLE void loadReportArray();
    // Removes the row's record from the stored list (by its date) and the
    // row itself; the report's text file stays. When the stored list cannot
    // be changed, the row stays too and the result says why.
    WriteResult deleteReport(int row);
    // The same for the screen, which tells a failure in an alert. Empty when
    // done, else the reason.
    Q_INVOKABLE QString removeRow(int row);
    // Puts the last deleted report back where it was, in the stored list and
    // on screen. Empty when done, else the reason (told in an alert).
    Q_INVOKABLE QString undoDelete();
    // The chance to undo has passed.
    Q_INVOKABLE void forgetUndo();
    // Tells, in an alert, what the check of the saved reports found that
    // the user has to know (a damaged list set aside, a missing one), once.
    void tellNotice();
    Q_INVOKABLE QString filePathAt(int row) const;

    QVReport reportAt(int row) const;
    const QList<QByteArray>& reportArray() const { return m_reportArray; }

signals:
    void countChanged();
    void loadErrorChanged();
    void undoChanged();

protected:
    // For a list that is read later, by a first loadReportArray().
    struct Unloaded {};
    ReportTableModel(Unloaded, QObject* parent) : QAbstractListModel(parent) {}

private:
    void setLoadError(const QString& error);

    void tell(const QString& title, const WriteResult& result);

    QList<QByteArray> m_reportArray;
    QString m_loadError;
    QList<ReportStore::Row> m_undoRows;
    QString m_undoTitle;
};
