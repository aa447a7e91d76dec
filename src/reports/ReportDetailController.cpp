#include "ReportDetailController.h"

#include "framework/Presenter.h"
#include "platform/MailComposer.h"
#include "platform/Services.h"

#include <QFile>
#include <QFileInfo>

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
    QFile file(m_model.reportFilePath());
    m_fileFound = !m_model.reportFilePath().isEmpty() && file.open(QIODevice::ReadOnly);
    // The files are ASCII; anything else is shown as Latin-1 rather than lost.
    m_text = m_fileFound ? QString::fromLatin1(file.readAll()) : QString();
    emit textChanged();
}

void ReportDetailController::actionClicked()
{
    if (!presenter())
        return;
    AlertRequest sheet;
    sheet.kind = AlertRequest::Kind::ActionSheet;
    sheet.title = QStringLiteral("Export");
    sheet.actions = {{QStringLiteral("Cancel"), true}, {QStringLiteral("Send Email")}};
    presenter()->present(sheet, [this](const QString& action, const QString&) {
        if (action == QLatin1String("Send Email"))
            showEmail();
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
    // A file that is gone gives a mail without the attachment.
    QFile file(path);
    if (!path.isEmpty() && file.open(QIODevice::ReadOnly))
        message.attachments.append(
            {file.readAll(), QStringLiteral("text/plain"), attachmentNameForPath(path)});
    Services::mailComposer().compose(message, nullptr);
}

Presenter* ReportDetailController::presenter() const
{
    return m_presenter ? m_presenter : Presenter::defaultPresenter();
}
