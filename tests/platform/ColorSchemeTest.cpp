#include "gui/ColorScheme.h"

#include <QPalette>
#include <QSignalSpy>
#include <gtest/gtest.h>

using Preference = SystemColorScheme::Preference;

TEST(ColorSchemeTest, OverrideBeatsDesktopBeatsPalette)
{
    EXPECT_TRUE(SystemColorScheme::resolve(Preference::Dark, Preference::Light, false));
    EXPECT_FALSE(SystemColorScheme::resolve(Preference::Light, Preference::Dark, true));
    EXPECT_TRUE(SystemColorScheme::resolve(Preference::None, Preference::Dark, false));
    EXPECT_FALSE(SystemColorScheme::resolve(Preference::None, Preference::Light, true));
    EXPECT_TRUE(SystemColorScheme::resolve(Preference::None, Preference::None, true));
    EXPECT_FALSE(SystemColorScheme::resolve(Preference::None, Preference::None, false));
}

TEST(ColorSchemeTest, ReadsTheSettingsItIsGiven)
{
    EXPECT_EQ(SystemColorScheme::preferenceFromText(u"DARK"), Preference::Dark);
    EXPECT_EQ(SystemColorScheme::preferenceFromText(u"light"), Preference::Light);
    EXPECT_EQ(SystemColorScheme::preferenceFromText(u"dim"), Preference::None);
    EXPECT_EQ(SystemColorScheme::preferenceFromText(u""), Preference::None);
    EXPECT_EQ(SystemColorScheme::preferenceFromPortal(0), Preference::None);
    EXPECT_EQ(SystemColorScheme::preferenceFromPortal(1), Preference::Dark);
    EXPECT_EQ(SystemColorScheme::preferenceFromPortal(2), Preference::Light);
    EXPECT_EQ(SystemColorScheme::preferenceFromPortal(7), Preference::None);

    QPalette dark;
    dark.setColor(QPalette::Window, QColor("#202124"));
    dark.setColor(QPalette::WindowText, QColor("#E8EAED"));
    EXPECT_TRUE(SystemColorScheme::isDarkPalette(dark));
    QPalette light;
    light.setColor(QPalette::Window, QColor("#F5F5F5"));
    light.setColor(QPalette::WindowText, QColor("#202124"));
    EXPECT_FALSE(SystemColorScheme::isDarkPalette(light));
}

TEST(ColorSchemeTest, FollowsTheDesktopUnlessOverridden)
{
    qputenv("TALLYVANE_COLOR_SCHEME", "");
    SystemColorScheme scheme;
    QSignalSpy changed(&scheme, &SystemColorScheme::darkChanged);
    scheme.setDesktopPreference(Preference::Dark);
    EXPECT_TRUE(scheme.dark());
    scheme.setDesktopPreference(Preference::Light);
    EXPECT_FALSE(scheme.dark());
    EXPECT_EQ(changed.count(), 2);
    scheme.setDesktopPreference(Preference::Light);
    EXPECT_EQ(changed.count(), 2) << "no signal without a change";

    qputenv("TALLYVANE_COLOR_SCHEME", "dark");
    SystemColorScheme forced;
    forced.setDesktopPreference(Preference::Light);
    EXPECT_TRUE(forced.dark());
    qunsetenv("TALLYVANE_COLOR_SCHEME");
}
