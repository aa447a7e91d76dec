#include "UrlOpener.h"

#include <QDesktopServices>
#include <QGuiApplication>

bool DesktopUrlOpener::openUrl(const QUrl& url)
{
    // Without a windowing system (command line, offscreen runs) there is no
    // desktop to hand the address to.
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()) ||
        QGuiApplication::platformName() == QLatin1String("offscreen") ||
        QGuiApplication::platformName() == QLatin1String("minimal"))
        return false;
    return QDesktopServices::openUrl(url);
}
