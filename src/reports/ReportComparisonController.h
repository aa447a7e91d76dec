#pragma once

#include "reports/ReportComparison.h"

#include <QObject>
#include <QVariantList>
#include <optional>

class Presenter;
class ReportTableModel;

// The Compare screen: two or three saved reports of one calculator side by
// side (see ReportComparison), one row an input or result with each
// report's value, the rows that differ marked and each result's difference
// from the first report; saved as CSV or PDF into the documents folder.
class ReportComparisonController : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY compared)
    Q_PROPERTY(QStringList reportTitles READ reportTitles NOTIFY compared)
    // The difference columns' titles: "B − A" for each report after the first.
    Q_PROPERTY(QStringList differenceTitles READ differenceTitles NOTIFY compared)
    // One map a row: "label", "values" (a text a report), "differences"
    // (results: a text a report after the first), "differs", "result".
    Q_PROPERTY(QVariantList rows READ rows NOTIFY compared)
    // Why the reports cannot be compared, or what could not be put back.
    Q_PROPERTY(QString problem READ problem NOTIFY compared)
    Q_PROPERTY(QStringList notes READ notes NOTIFY compared)

public:
    explicit ReportComparisonController(QObject* parent = nullptr);

    // Compares the reports at `rows` of the saved list (newest first).
    Q_INVOKABLE bool compare(const QList<int>& rows);
    bool compareReports(const QList<QVReport>& reports);

    QString title() const;
    QStringList reportTitles() const;
    QStringList differenceTitles() const;
    QVariantList rows() const;
    QString problem() const { return m_problem; }
    QStringList notes() const;

    // The "Export" sheet: "Cancel", "Save as CSV" or "Save as PDF".
    Q_INVOKABLE void exportClicked();
    // Writes the comparison as a new CSV or PDF file in the documents
    // folder and says where it went, or why it could not be written.
    Q_INVOKABLE void saveCsv();
    Q_INVOKABLE void saveAsPdf();

    void setPresenter(Presenter* presenter) { m_presenter = presenter; }
    Presenter* presenter() const;

signals:
    void compared();

private:
    // The file name both saves start from: "compare_<calculator>_<date>".
    QString baseName() const;
    void tell(const QString& title, const QString& message);

    std::optional<ReportComparison> m_comparison;
    QString m_problem;
    Presenter* m_presenter = nullptr;
};
