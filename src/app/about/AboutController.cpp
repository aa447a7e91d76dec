#include "AboutController.h"

#include "framework/FallbackNotices.h"
#include "framework/HtmlPages.h"
#include "framework/Presenter.h"
#include "platform/MailComposer.h"
#include "platform/Services.h"
#include "platform/UrlOpener.h"

namespace {

// Hands a web address to the system only when it is one the system can
// open: well formed and with a scheme. When no program takes it, the user
// is shown the address to copy.
void openIfPossible(const QUrl& url)
{
    if (!url.isValid() || url.scheme().isEmpty())
        return;
    FallbackNotices::openUrl(url, Presenter::defaultPresenter());
}

QString webAddress(const char* path)
{
    QString base = QStringLiteral(TALLYVANE_WEB_URL);
    while (base.endsWith(QLatin1Char('/')))
        base.chop(1);
    return base + QLatin1String(path);
}

} // namespace

AboutController::AboutController(QObject* parent) : QObject(parent) {}

QString AboutController::appVersion()
{
    return QStringLiteral(TALLYVANE_VERSION);
}

QUrl AboutController::privacyUrl()
{
    return QUrl(webAddress("/privacy"), QUrl::StrictMode);
}

QUrl AboutController::termsUrl()
{
    return QUrl(webAddress("/terms"), QUrl::StrictMode);
}

QUrl AboutController::storeUrl()
{
    return QUrl(QStringLiteral(TALLYVANE_STORE_URL), QUrl::StrictMode);
}

QString AboutController::supportEmail()
{
    return QStringLiteral(TALLYVANE_SUPPORT_EMAIL);
}

void AboutController::rowSelected(int section, int row)
{
    if (section == 0 && row == 1)
        openIfPossible(privacyUrl());
    if (section == 0 && row == 2)
        openIfPossible(termsUrl());
    if (section == 1 && row == 0)
        showEmail();
    if (section == 1 && row == 2)
        sendFeedback();
    if (section == 1 && row == 1)
        openIfPossible(storeUrl());
}

void AboutController::showEmail()
{
    MailMessage message;
    message.subject = QStringLiteral("Tallyvane Invitation");
    message.bodyIsHtml = true;
    message.body =
        QStringLiteral("<p>Hey, I've been using Tallyvane and thought you might like it.</p>\n");
    message.body += QStringLiteral("<a href=\"%1\">Download on the App Store</a>\n")
                        .arg(QStringLiteral(TALLYVANE_STORE_URL));
    // The composer goes away by itself; only a draft no program opened is
    // worth telling about.
    Services::mailComposer().compose(message, [](MailResult result) {
        FallbackNotices::mailFinished(result, Presenter::defaultPresenter());
    });
}

void AboutController::sendFeedback()
{
    MailMessage message;
    message.subject = QStringLiteral("Tallyvane");
    message.recipients = {supportEmail()};
    Services::mailComposer().compose(message, [](MailResult result) {
        FallbackNotices::mailFinished(result, Presenter::defaultPresenter());
    });
}

QString AboutController::pageHtml(const QString& source) const
{
    return HtmlPages::page(source);
}
