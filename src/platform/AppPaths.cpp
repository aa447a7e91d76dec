#include "AppPaths.h"

#include <QStandardPaths>

namespace AppPaths {

namespace {

// $TALLYVANE_HOME when set, else the user's writable `location`.
QString homeOr(QStandardPaths::StandardLocation location)
{
    const QString home = qEnvironmentVariable("TALLYVANE_HOME");
    return home.isEmpty() ? QStandardPaths::writableLocation(location) : home;
}

} // namespace

QString appHome()
{
    return homeOr(QStandardPaths::AppDataLocation);
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
    return homeOr(QStandardPaths::AppConfigLocation);
}

QString reportsDatabase()
{
    return configDirectory() + QStringLiteral("/reports.sqlite");
}

} // namespace AppPaths
