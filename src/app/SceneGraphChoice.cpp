#include "SceneGraphChoice.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>

namespace SceneGraphChoice {

namespace {

// "1", "true", "yes": Mesa reads any value but "0" and "false" as set.
bool isOn(const QString& value)
{
    const QString v = value.trimmed().toLower();
    return !v.isEmpty() && v != QLatin1String("0") && v != QLatin1String("false");
}

bool namesSoftwareDriver(const QString& driver)
{
    const QString d = driver.trimmed().toLower();
    return d == QLatin1String("llvmpipe") || d == QLatin1String("softpipe") ||
           d == QLatin1String("swrast");
}

} // namespace

Environment Environment::current()
{
    Environment e;
    e.platform = QGuiApplication::platformName();
    e.quickBackend = qEnvironmentVariable("QT_QUICK_BACKEND");
    e.rhiBackend = qEnvironmentVariable("QSG_RHI_BACKEND");
    e.softwareGl = qEnvironmentVariable("LIBGL_ALWAYS_SOFTWARE");
    e.galliumDriver = qEnvironmentVariable("GALLIUM_DRIVER");
    // Listing one small directory and testing one file: no driver is
    // loaded, no device opened.
    const QDir dri(QStringLiteral("/dev/dri"));
    for (const QString& node : dri.entryList({QStringLiteral("renderD*")},
                                             QDir::System | QDir::Files | QDir::NoDotAndDotDot))
        e.graphicsDevices << dri.filePath(node);
    if (QFileInfo::exists(QStringLiteral("/dev/nvidia0")))
        e.graphicsDevices << QStringLiteral("/dev/nvidia0");
    return e;
}

bool softwareIsBetter(const Environment& e)
{
    if (!e.quickBackend.trimmed().isEmpty() || !e.rhiBackend.trimmed().isEmpty())
        return false;
    if (e.platform == QLatin1String("offscreen") || e.platform == QLatin1String("minimal"))
        return false;
    if (isOn(e.softwareGl) || namesSoftwareDriver(e.galliumDriver))
        return true;
    return e.graphicsDevices.isEmpty();
}

bool softwareIsBetter()
{
    return softwareIsBetter(Environment::current());
}

} // namespace SceneGraphChoice
