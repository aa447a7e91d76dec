#include "ReportDetailController.h"

#include "ReportPdf.h"
#include "framework/CalculatorRegistry.h"
#include "framework/FallbackNotices.h"
#include "framework/Presenter.h"
#include "framework/QVFunctionModel.h"
#include "platform/MailComposer.h"
#include "platform/SafeFiles.h"
#include "platform/Services.h"
#include "store/QVFileManager.h"
#include "store/ReportStore.h"

#include <QFile>
#include <QFileInfo>
#include <QPointer>

ReportDetailController::ReportDetailController(QObject* parent) : QObject(parent)
{
    connect(&m_model, &ReportDetailModel::reportFilePathChanged, this,
            &ReportDetailController::reportFilePathChanged);
}

void ReportDetailController::setReportFilePath(const QString& path)
{
    m_model.setReportFilePath(path);
    loadReport();
}

void ReportDetailController::loadReport()
{
    const QString path = m_model.reportFilePath();
    QByteArray bytes;
    const QString unread = path.isEmpty()
                               ? QStringLiteral("no file")
                               : QVFileManager::readFileInDocumentsDirectory(path, &bytes);
    m_fileFound = unread.isEmpty();
    m_problem = m_fileFound || path.isEmpty() || SafeFiles::kindOf(path) == SafeFiles::Kind::Missing
                    ? QString()
                    : unread;
    // The files are ASCII; anything else is shown as Latin-1 rather than lost.
    m_text = m_fileFound ? QString::fromLatin1(bytes) : QString();
    findRecord();
    emit textChanged();
}

void ReportDetailController::findRecord()
{
    m_record = QVReport();
    const QString name = QFileInfo(m_model.reportFilePath()).fileName();
    if (name.isEmpty())
        return;
    for (const QByteArray& archive : QVReport::storedReportList().value_or(QList<QByteArray>())) {
        QVReport record = QVReport::fromArchive(archive);
        if (record.fileName == name) {
            m_record = record;
            return;
        }
    }
}

QString ReportDetailController::calculatorScreen() const
{
    const CalculatorDescription* d = CalculatorRegistry::find(m_record.calculator);
    return d && !m_record.calculator.isEmpty() ? d->screen : QString();
}

void ReportDetailController::openInCalculator()
{
    if (!calculatorScreen().isEmpty())
        emit openInCalculatorRequested(calculatorScreen(), m_record.inputs);
}

void ReportDetailController::duplicate()
{
    if (!presenter() || m_record.fileName.isEmpty())
        return;
    AlertRequest ask;
    ask.title = QStringLiteral("Duplicate");
    ask.message = QStringLiteral("A title for the copy:");
    ask.hasTextField = true;
    ask.actions = {{QStringLiteral("Cancel"), true}, {QStringLiteral("OK")}};
    QPointer<ReportDetailController> self(this);
    const QString offered = m_record.title + QStringLiteral(" (copy)");
    presenter()->present(ask, [self, offered](const QString& action, const QString& text) {
        if (!self || action != QLatin1String("OK"))
            return;
        QString error;
        const QString title = text.trimmed().isEmpty() ? offered : text.trimmed();
        if (self->duplicateAs(title, &error))
            return;
        AlertRequest alert;
        alert.title = QStringLiteral("Could not duplicate the report");
        alert.message = error;
        alert.actions = {{QStringLiteral("OK")}};
        self->presenter()->present(alert, [](const QString&, const QString&) {});
    });
}

bool ReportDetailController::duplicateAs(const QString& title, QString* error)
{
    const auto fail = [error](const QString& reason) {
        if (error)
            *error = reason;
        return false;
    };
    if (m_record.fileName.isEmpty())
        return fail(QStringLiteral("This report is not in the saved list."));
    if (!m_fileFound)
        return fail(QStringLiteral("The report's text file cannot be read."));
    QVReport copy = m_record;
    copy.title = title;
    copy.date = Services::now();
    // The copy's text file is named as a save of its calculator names it
    // (its key, the new title and the date; made unique when written); the
    // text is the original's.
    const QString fileKey = m_record.fileName.section(QLatin1Char('_'), 0, 0);
    copy.fileName = QVFunctionModel::grownFileName(
        fileKey, fileKey, title, copy.date.toString(QStringLiteral("dd-MM-yyyy HH:mm")));
    ReportStore::reserveReportFile(copy.fileName);
    const QString reserved = copy.fileName;
    const WriteResult written =
        QVFileManager::writeNewFileToDocumentsDirectory(copy.fileName, m_text);
    if (reserved != copy.fileName)
        ReportStore::forgetReportFile(reserved);
    if (!written.ok()) {
        ReportStore::forgetReportFile(copy.fileName);
        return fail(written.error);
    }
    const WriteResult saved = QVReport::saveReport(copy);
    if (!saved.ok()) {
        QVFileManager::removeFileAtPath(QVFileManager::documentsDirectory() + QLatin1Char('/') +
                                        copy.fileName);
        ReportStore::forgetReportFile(copy.fileName);
        return fail(saved.error);
    }
    emit duplicated(copy.title);
    return true;
}

void ReportDetailController::actionClicked()
{
    if (!presenter())
        return;
    AlertRequest sheet;
    sheet.kind = AlertRequest::Kind::ActionSheet;
    sheet.title = QStringLiteral("Export");
    sheet.actions = {{QStringLiteral("Cancel"), true},
                     {QStringLiteral("Send Email")},
                     {QStringLiteral("Save as PDF")}};
    if (!calculatorScreen().isEmpty())
        sheet.actions << AlertAction{QStringLiteral("Open in Calculator")}
                      << AlertAction{QStringLiteral("Duplicate")};
    presenter()->present(sheet, [this](const QString& action, const QString&) {
        if (action == QLatin1String("Send Email"))
            showEmail();
        else if (action == QLatin1String("Save as PDF"))
            saveAsPdf();
        else if (action == QLatin1String("Open in Calculator"))
            openInCalculator();
        else if (action == QLatin1String("Duplicate"))
            duplicate();
    });
}

void ReportDetailController::saveAsPdf()
{
    if (!m_fileFound)
        return;
    QString name;
    QString chartProblem;
    const QByteArray chart = ReportPdf::readChart(m_model.reportFilePath(), &chartProblem);
    const WriteResult written =
        ReportPdf::saveToDocuments(QFileInfo(m_model.reportFilePath()).fileName(), m_text,
                                   ReportPdf::pageForLocale(), &name, chart);
    if (!presenter())
        return;
    AlertRequest alert;
    if (written.ok()) {
        alert.title = QStringLiteral("Saved as PDF");
        alert.message = QStringLiteral("The report was written to:\n%1")
                            .arg(QVFileManager::documentsDirectory() + QLatin1Char('/') + name);
        if (!chartProblem.isEmpty())
            alert.message += QStringLiteral("\n\n%1 The PDF has no chart.").arg(chartProblem);
        alert.actions = {{QStringLiteral("Open Folder")}, {QStringLiteral("OK"), true, true}};
    } else {
        alert.title = QStringLiteral("Could not save the PDF");
        alert.message = written.error;
        alert.actions = {{QStringLiteral("OK")}};
    }
    QPointer<ReportDetailController> self(this);
    presenter()->present(alert, [self](const QString& action, const QString&) {
        if (self && action == QLatin1String("Open Folder"))
            FallbackNotices::openFolder(QVFileManager::documentsDirectory(), self->presenter(),
                                        self);
    });
}

QString ReportDetailController::attachmentNameForPath(const QString& path)
{
    return QFileInfo(path).fileName() + QStringLiteral(".txt");
}

void ReportDetailController::showEmail()
{
    const QString path = m_model.reportFilePath();
    MailMessage message;
    message.subject = QStringLiteral("Quorvex - Financial Report");
    // A file that is gone (or lies outside the documents folder) gives a
    // mail without the attachment.
    QByteArray bytes;
    if (!path.isEmpty() && QVFileManager::readFileInDocumentsDirectory(path, &bytes).isEmpty())
        message.attachments.append(
            {bytes, QStringLiteral("text/plain"), attachmentNameForPath(path)});
    QPointer<ReportDetailController> self(this);
    Services::mailComposer().compose(message, [self](MailResult result) {
        if (self)
            FallbackNotices::mailFinished(result, self->presenter());
    });
}

Presenter* ReportDetailController::presenter() const
{
    return m_presenter ? m_presenter : Presenter::defaultPresenter();
}
