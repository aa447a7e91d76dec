#include "ColorScheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");

// Read() wraps the value in one more variant than SettingChanged does.
uint unwrapUInt(QVariant value)
{
    for (int depth = 0; depth < 3 && value.canConvert<QDBusVariant>(); ++depth)
        value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

} // namespace

SystemColorScheme::SystemColorScheme(QObject* parent)
    : QObject(parent),
      m_override(preferenceFromText(qEnvironmentVariable("TALLYVANE_COLOR_SCHEME")))
{
    if (QCoreApplication::instance())
        QCoreApplication::instance()->installEventFilter(this);
    if (m_override == Preference::None)
        watchPortal();
    update();
}

SystemColorScheme::Preference SystemColorScheme::preferenceFromText(QStringView text)
{
    if (text.compare(QLatin1String("dark"), Qt::CaseInsensitive) == 0)
        return Preference::Dark;
    if (text.compare(QLatin1String("light"), Qt::CaseInsensitive) == 0)
        return Preference::Light;
    return Preference::None;
}

SystemColorScheme::Preference SystemColorScheme::preferenceFromPortal(uint value)
{
    switch (value) {
    case 1:
        return Preference::Dark;
    case 2:
        return Preference::Light;
    default:
        return Preference::None;
    }
}

bool SystemColorScheme::isDarkPalette(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

bool SystemColorScheme::resolve(Preference override, Preference desktop, bool paletteDark)
{
    for (Preference preference : {override, desktop}) {
        if (preference != Preference::None)
            return preference == Preference::Dark;
    }
    return paletteDark;
}

void SystemColorScheme::setDesktopPreference(Preference preference)
{
    m_desktop = preference;
    update();
}

bool SystemColorScheme::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == QCoreApplication::instance() &&
        event->type() == QEvent::ApplicationPaletteChange)
        update();
    return QObject::eventFilter(watched, event);
}

void SystemColorScheme::portalSettingChanged(const QString& group, const QString& key,
                                             const QDBusVariant& value)
{
    if (group == appearanceGroup && key == colorSchemeKey)
        setDesktopPreference(preferenceFromPortal(unwrapUInt(value.variant())));
}

void SystemColorScheme::watchPortal()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(portalService, portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
                SLOT(portalSettingChanged(QString, QString, QDBusVariant)));
    QDBusMessage read =
        QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, "Read");
    read << appearanceGroup << colorSchemeKey;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(read, 2000), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* w) {
        const QDBusPendingReply<QVariant> reply = *w;
        if (!reply.isError())
            setDesktopPreference(preferenceFromPortal(unwrapUInt(reply.value())));
        w->deleteLater();
    });
}

void SystemColorScheme::update()
{
    const bool dark = resolve(m_override, m_desktop, isDarkPalette(QGuiApplication::palette()));
    if (dark != m_dark) {
        m_dark = dark;
        emit darkChanged();
    }
}
