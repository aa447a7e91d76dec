#include "app/SceneGraphChoice.h"

#include <gtest/gtest.h>

namespace {

using SceneGraphChoice::Environment;

Environment onX11(QStringList devices)
{
    Environment e;
    e.platform = QStringLiteral("xcb");
    e.graphicsDevices = std::move(devices);
    return e;
}

const QStringList card{QStringLiteral("/dev/dri/renderD128")};

TEST(SceneGraphChoice, SoftwareWithoutAGraphicsCardOrWhenOpenGlIsToldToDrawOnTheProcessor)
{
    EXPECT_TRUE(SceneGraphChoice::softwareIsBetter(onX11({})));
    EXPECT_FALSE(SceneGraphChoice::softwareIsBetter(onX11(card)));
    EXPECT_FALSE(SceneGraphChoice::softwareIsBetter(onX11({QStringLiteral("/dev/nvidia0")})));

    Environment e = onX11(card);
    e.softwareGl = QStringLiteral("1");
    EXPECT_TRUE(SceneGraphChoice::softwareIsBetter(e));
    e.softwareGl = QStringLiteral("0");
    EXPECT_FALSE(SceneGraphChoice::softwareIsBetter(e));
    e.softwareGl.clear();
    e.galliumDriver = QStringLiteral("llvmpipe");
    EXPECT_TRUE(SceneGraphChoice::softwareIsBetter(e));
    e.galliumDriver = QStringLiteral("radeonsi");
    EXPECT_FALSE(SceneGraphChoice::softwareIsBetter(e));

    Environment wayland = onX11({});
    wayland.platform = QStringLiteral("wayland");
    EXPECT_TRUE(SceneGraphChoice::softwareIsBetter(wayland));
}

TEST(SceneGraphChoice, TheUsersOwnChoiceAndWindowlessPlatformsAreLeftAlone)
{
    Environment e = onX11({});
    e.quickBackend = QStringLiteral("rhi");
    EXPECT_FALSE(SceneGraphChoice::softwareIsBetter(e));
    // An empty value chooses nothing: the machine still has no card.
    e.quickBackend = QString();
    EXPECT_TRUE(SceneGraphChoice::softwareIsBetter(e));
    e.quickBackend = QStringLiteral(" ");
    EXPECT_TRUE(SceneGraphChoice::softwareIsBetter(e));
    e.rhiBackend = QStringLiteral("opengl");
    EXPECT_FALSE(SceneGraphChoice::softwareIsBetter(e));

    for (const char* platform : {"offscreen", "minimal"}) {
        Environment windowless = onX11({});
        windowless.platform = QString::fromLatin1(platform);
        EXPECT_FALSE(SceneGraphChoice::softwareIsBetter(windowless)) << platform;
    }
}

} // namespace
