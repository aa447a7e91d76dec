#include "ReportDetailController.h"

#include "ReportPdf.h"
#include "framework/FallbackNotices.h"
#include "framework/Presenter.h"
#include "platform/MailComposer.h"
#include "platform/SafeFiles.h"
#include "platform/Services.h"
#include "store/QVFileManager.h"

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
    emit textChanged();
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
    presenter()->present(sheet, [this](const QString& action, const QString&) {
        if (action == QLatin1String("Send Email"))
            showEmail();
        else if (action == QLatin1String("Save as PDF"))
            saveAsPdf();
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
        alert.actions = {{QStringLiteral("Open Folder")}, {QStringLiteral("OK"), true}};
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
