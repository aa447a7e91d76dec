#include "app/SceneGraphChoice.h"

#include <gtest/gtest.h>

namespace {

TEST(SceneGraphChoice, SoftwareRasterizersAreToldFromGraphicsCards)
{
    struct Case {
        const char* renderer;
        bool software;
    };
    const Case cases[] = {
        {"llvmpipe (LLVM 15.0.6, 256 bits)", true},
        {"softpipe", true},
        {"Software Rasterizer", true},
        {"Mesa X11 swrast", true},
        {"Microsoft Basic Render Driver", true},
        {"Mesa Intel(R) UHD Graphics 620 (KBL GT2)", false},
        {"NVIDIA GeForce RTX 3060/PCIe/SSE2", false},
        {"AMD Radeon RX 6600 (navi23, LLVM 15.0.6, DRM 3.49, 6.1.0-13-amd64)", false},
        {"virgl", false},
        {"", false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(SceneGraphChoice::isSoftwareRenderer(QString::fromLatin1(c.renderer)), c.software)
            << c.renderer;
}

} // namespace
