#pragma once

#include <QSettings>
#include <QString>
#include <QVariant>
#include <memory>

// The per-user key-value store.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual QVariant value(const QString& key) const = 0;
    virtual void setValue(const QString& key, const QVariant& value) = 0;
    // Writes pending changes and picks up what other processes wrote since.
    virtual void sync() = 0;
};

// QSettings under organisation "Quorvex", application "Tallyvane", or the
// INI file below TALLYVANE_HOME when that is set.
class QSettingsStore final : public SettingsStore {
public:
    QSettingsStore();
    QVariant value(const QString& key) const override;
    void setValue(const QString& key, const QVariant& value) override;
    void sync() override;

private:
    std::unique_ptr<QSettings> m_settings;
};
