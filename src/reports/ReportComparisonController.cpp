#include "reports/ReportComparisonController.h"

#include "framework/Presenter.h"
#include "platform/Services.h"
#include "reports/ReportPdf.h"
#include "reports/ReportTableModel.h"
#include "store/QVFileManager.h"

#include <QPointer>

ReportComparisonController::ReportComparisonController(QObject* parent) : QObject(parent) {}

bool ReportComparisonController::compare(const QList<int>& rows)
{
    ReportTableModel list;
    QList<QVReport> reports;
    for (int row : rows) {
        if (row < 0 || row >= list.count()) {
            m_comparison.reset();
            m_problem = QStringLiteral("There is no report %1.").arg(row);
            emit compared();
            return false;
        }
        reports << list.reportAt(row);
    }
    return compareReports(reports);
}

bool ReportComparisonController::compareReports(const QList<QVReport>& reports)
{
    m_problem.clear();
    m_comparison = ReportComparison::of(reports, &m_problem);
    emit compared();
    return m_comparison.has_value();
}

QString ReportComparisonController::title() const
{
    return m_comparison ? m_comparison->title : QString();
}

QStringList ReportComparisonController::reportTitles() const
{
    return m_comparison ? m_comparison->titles : QStringList();
}

QStringList ReportComparisonController::differenceTitles() const
{
    QStringList titles;
    const QStringList reports = reportTitles();
    for (qsizetype k = 1; k < reports.size(); ++k)
        titles << QStringLiteral("%1 \u2212 %2").arg(reports.at(k), reports.first());
    return titles;
}

QStringList ReportComparisonController::notes() const
{
    return m_comparison ? m_comparison->notes : QStringList();
}

QVariantList ReportComparisonController::rows() const
{
    QVariantList list;
    if (!m_comparison)
        return list;
    for (const ReportComparison::Line& line : m_comparison->lines)
        list << QVariantMap{{QStringLiteral("label"), line.label},
                            {QStringLiteral("values"), line.values},
                            {QStringLiteral("differences"), line.differences.mid(1)},
                            {QStringLiteral("differs"), line.differs},
                            {QStringLiteral("result"), line.result}};
    return list;
}

QString ReportComparisonController::baseName() const
{
    return QStringLiteral("compare_%1_%2")
        .arg(m_comparison ? m_comparison->calculator : QString(),
             Services::now().toString(QStringLiteral("dd-MM-yyyy HH-mm")));
}

void ReportComparisonController::exportClicked()
{
    if (!presenter() || !m_comparison)
        return;
    AlertRequest sheet;
    sheet.kind = AlertRequest::Kind::ActionSheet;
    sheet.title = QStringLiteral("Export");
    sheet.actions = {{QStringLiteral("Cancel"), true},
                     {QStringLiteral("Save as CSV")},
                     {QStringLiteral("Save as PDF")}};
    QPointer<ReportComparisonController> self(this);
    presenter()->present(sheet, [self](const QString& action, const QString&) {
        if (self && action == QLatin1String("Save as CSV"))
            self->saveCsv();
        else if (self && action == QLatin1String("Save as PDF"))
            self->saveAsPdf();
    });
}

void ReportComparisonController::saveCsv()
{
    if (!m_comparison)
        return;
    QString name;
    const QString error = QVFileManager::writeNewCsvFile(baseName(), m_comparison->csv(), &name);
    if (!error.isEmpty())
        return tell(QStringLiteral("Could not save the comparison"), error);
    tell(QStringLiteral("Comparison Saved"),
         QStringLiteral("The comparison was written to:\n%1")
             .arg(QVFileManager::documentsDirectory() + QLatin1Char('/') + name));
}

void ReportComparisonController::saveAsPdf()
{
    if (!m_comparison)
        return;
    QString name;
    const WriteResult written =
        ReportPdf::saveToDocuments(baseName() + QStringLiteral("_report.txt"), m_comparison->text(),
                                   ReportPdf::pageForLocale(), &name);
    if (!written.ok())
        return tell(QStringLiteral("Could not save the PDF"), written.error);
    tell(QStringLiteral("Saved as PDF"),
         QStringLiteral("The comparison was written to:\n%1")
             .arg(QVFileManager::documentsDirectory() + QLatin1Char('/') + name));
}

void ReportComparisonController::tell(const QString& title, const QString& message)
{
    if (!presenter())
        return;
    AlertRequest alert;
    alert.title = title;
    alert.message = message;
    alert.actions = {{QStringLiteral("OK"), true}};
    presenter()->present(alert, [](const QString&, const QString&) {});
}

Presenter* ReportComparisonController::presenter() const
{
    return m_presenter ? m_presenter : Presenter::defaultPresenter();
}
