#include "FallbackNotices.h"

#include "Presenter.h"
#include "platform/Clipboard.h"
#include "platform/Services.h"
#include "platform/UrlOpener.h"

#include <QFileInfo>

namespace FallbackNotices {

QString mailDraftTitle()
{
    return QStringLiteral("Mail draft saved");
}

QString unopenedAddressTitle()
{
    return QStringLiteral("Could not open the page");
}

void mailFinished(MailResult result, Presenter* presenter)
{
    if (result != MailResult::Unopened || !presenter)
        return;
    const QString path = Services::mailComposer().lastDraftPath();
    AlertRequest alert;
    alert.title = mailDraftTitle();
    alert.message = QStringLiteral("No mail program could open the message. Its draft was "
                                   "written to:\n%1")
                        .arg(path);
    alert.actions = {{QStringLiteral("Open Folder")}, {QStringLiteral("OK"), true}};
    presenter->present(alert, [path](const QString& action, const QString&) {
        if (action == QLatin1String("Open Folder"))
            Services::urlOpener().openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
    });
}

void openUrl(const QUrl& url, Presenter* presenter)
{
    if (Services::urlOpener().openUrl(url) || !presenter)
        return;
    const QString address = url.toString();
    AlertRequest alert;
    alert.title = unopenedAddressTitle();
    alert.message = QStringLiteral("No program could open this address:\n%1").arg(address);
    alert.actions = {{QStringLiteral("Copy")}, {QStringLiteral("OK"), true}};
    presenter->present(alert, [address](const QString& action, const QString&) {
        if (action == QLatin1String("Copy"))
            Clipboard::copyText(address);
    });
}

} // namespace FallbackNotices
