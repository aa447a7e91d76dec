#include "AppPaths.h"

#include <QStandardPaths>

namespace AppPaths {

QString appHome()
{
    const QString home = qEnvironmentVariable("TALLYVANE_HOME");
    if (!home.isEmpty())
        return home;
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

QString documentsDirectory()
{
    return appHome() + QStringLiteral("/Documents");
}

QString outboxDirectory()
{
    return appHome() + QStringLiteral("/Outbox");
}

QString settingsFile()
{
    const QString home = qEnvironmentVariable("TALLYVANE_HOME");
    return home.isEmpty() ? QString() : home + QStringLiteral("/Tallyvane.conf");
}

QString configDirectory()
{
    const QString home = qEnvironmentVariable("TALLYVANE_HOME");
    if (!home.isEmpty())
        return home;
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
}

QString reportsDatabase()
{
    return configDirectory() + QStringLiteral("/reports.sqlite");
}

} // namespace AppPaths
