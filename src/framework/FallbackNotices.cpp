#include "FallbackNotices.h"

#include "Presenter.h"
#include "platform/Clipboard.h"
#include "platform/Services.h"
#include "platform/UrlOpener.h"
#include "store/ReportStore.h"

#include <QFileInfo>
#include <QPointer>

namespace {

using Outcome = UrlOpener::Outcome;

// Opens `url` and calls `notOpened` with the outcome when it did not open
// (or may not have), unless `context` was given and is gone by then. An
// opener that has not answered in time is told as such, not as a failure:
// it may be the program showing the address, waiting for its window to
// close, so "may not have opened" is all that is known; the alert still
// offers the way round it.
void openThen(const QUrl& url, QObject* context, std::function<void(Outcome)> notOpened)
{
    const bool guarded = context != nullptr;
    QPointer<QObject> guard(context);
    Services::urlOpener().openUrl(url, [guarded, guard, notOpened](Outcome outcome) {
        if (outcome != Outcome::Opened && !(guarded && !guard))
            notOpened(outcome);
    });
}

} // namespace

namespace FallbackNotices {

QString mailDraftTitle()
{
    return QStringLiteral("Mail draft saved");
}

QString unopenedAddressTitle()
{
    return QStringLiteral("Could not open the page");
}

QString unopenedFolderTitle()
{
    return QStringLiteral("Could not open the folder");
}

void mailFinished(MailResult result, Presenter* presenter)
{
    if (result == MailResult::Failed && presenter) {
        // Nothing was handed to a mail program: say so, and why.
        AlertRequest alert;
        alert.title = QStringLiteral("Could not write the mail");
        alert.message = Services::mailComposer().lastError();
        alert.actions = {{QStringLiteral("OK")}};
        presenter->present(alert, [](const QString&, const QString&) {});
        return;
    }
    if ((result != MailResult::Unopened && result != MailResult::Unanswered) || !presenter)
        return;
    const QString path = Services::mailComposer().lastDraftPath();
    AlertRequest alert;
    alert.title = mailDraftTitle();
    alert.message = (result == MailResult::Unopened
                         ? QStringLiteral("No mail program could open the message.")
                         : QStringLiteral("The mail program has not answered, so the message "
                                          "may not have opened.")) +
                    QStringLiteral(" Its draft was written to:\n%1").arg(path);
    alert.actions = {{QStringLiteral("Open Folder")}, {QStringLiteral("OK"), true, true}};
    presenter->present(alert, [path, presenter](const QString& action, const QString&) {
        if (action == QLatin1String("Open Folder"))
            openFolder(QFileInfo(path).absolutePath(), presenter);
    });
}

void openUrl(const QUrl& url, Presenter* presenter, QObject* context)
{
    openThen(url, context, [url, presenter](Outcome outcome) {
        if (!presenter)
            return;
        const QString address = url.toString();
        AlertRequest alert;
        alert.title = outcome == Outcome::Failed ? unopenedAddressTitle()
                                                 : QStringLiteral("The page may not have opened");
        alert.message = (outcome == Outcome::Failed
                             ? QStringLiteral("No program could open this address:")
                             : QStringLiteral("The program for web pages has not answered, so "
                                              "this address may not have opened:")) +
                        QLatin1Char('\n') + address;
        alert.actions = {{QStringLiteral("Copy")}, {QStringLiteral("OK"), true, true}};
        presenter->present(alert, [address](const QString& action, const QString&) {
            if (action == QLatin1String("Copy"))
                Clipboard::copyText(address);
        });
    });
}

void keepingFailed(const QString& error, Presenter* presenter)
{
    static bool told = false;
    if (told || !presenter)
        return;
    told = true;
    AlertRequest alert;
    alert.title = QStringLiteral("Inputs not kept");
    alert.message =
        QStringLiteral("What you entered could not be kept for the next start:\n%1").arg(error);
    alert.actions = {{QStringLiteral("OK"), true, true}};
    presenter->present(alert, [](const QString&, const QString&) {});
}

void keepScreen(const QString& name, const QByteArray& now, QByteArray& kept, Presenter* presenter)
{
    if (now == kept)
        return;
    if (const WriteResult result = ReportStore::keepScreenState(name, now); result.ok())
        kept = now;
    else
        keepingFailed(result.error, presenter);
}

void openFolder(const QString& path, Presenter* presenter, QObject* context)
{
    openThen(QUrl::fromLocalFile(path), context, [path, presenter](Outcome outcome) {
        if (!presenter)
            return;
        AlertRequest alert;
        alert.title = outcome == Outcome::Failed ? unopenedFolderTitle()
                                                 : QStringLiteral("The folder may not have opened");
        alert.message = (outcome == Outcome::Failed
                             ? QStringLiteral("No program could open the folder:")
                             : QStringLiteral("The file manager has not answered, so the folder "
                                              "may not have opened:")) +
                        QLatin1Char('\n') + path;
        alert.actions = {{QStringLiteral("OK"), true, true}};
        presenter->present(alert, [](const QString&, const QString&) {});
    });
}

} // namespace FallbackNotices
