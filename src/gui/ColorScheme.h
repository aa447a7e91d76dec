#pragma once

#include <QObject>
#include <QStringView>

class QDBusVariant;
class QPalette;

// Whether the app is drawn light or dark. Follows, in this order: the
// TALLYVANE_COLOR_SCHEME environment variable ("dark" or "light"), the
// desktop's colour-scheme setting (the freedesktop settings portal, read
// without blocking and followed when it changes), and the lightness of the
// platform's palette (dark desktop themes give a dark window colour).
class SystemColorScheme : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool dark READ dark NOTIFY darkChanged)

public:
    enum class Preference { None, Dark, Light };

    explicit SystemColorScheme(QObject* parent = nullptr);

    bool dark() const { return m_dark; }

    // "dark" and "light", in any case; anything else is no preference.
    static Preference preferenceFromText(QStringView text);
    // The portal's org.freedesktop.appearance color-scheme: 1 dark, 2 light.
    static Preference preferenceFromPortal(uint value);
    static bool isDarkPalette(const QPalette& palette);
    static bool resolve(Preference override, Preference desktop, bool paletteDark);

    // What the desktop asks for; normally set from the portal.
    void setDesktopPreference(Preference preference);

signals:
    void darkChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void portalSettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void watchPortal();
    void update();

    Preference m_override = Preference::None;
    Preference m_desktop = Preference::None;
    bool m_dark = false;
};
