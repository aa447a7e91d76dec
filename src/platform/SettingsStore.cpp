#include "SettingsStore.h"

#include "AppPaths.h"

QSettingsStore::QSettingsStore()
{
    const QString file = AppPaths::settingsFile();
    if (file.isEmpty())
        m_settings =
            std::make_unique<QSettings>(QStringLiteral("Quorvex"), QStringLiteral("Tallyvane"));
    else
        m_settings = std::make_unique<QSettings>(file, QSettings::IniFormat);
}

QVariant QSettingsStore::value(const QString& key) const
{
    return m_settings->value(key);
}

void QSettingsStore::setValue(const QString& key, const QVariant& value)
{
    m_settings->setValue(key, value);
}

void QSettingsStore::sync()
{
    m_settings->sync();
}
