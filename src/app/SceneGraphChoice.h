#pragma once

#include <QString>
#include <QStringList>

// Which scene graph Qt Quick draws with, decided before the first window
// without creating a graphics context: creating one only to read its
// renderer's name costs about as much as the rest of start-up together
// (loading the OpenGL driver, choosing a framebuffer configuration) and
// leaves the driver mapped for the life of the process.
namespace SceneGraphChoice {

// What the decision reads: the platform plugin's name, the environment
// variables that choose a renderer, and the device nodes of the graphics
// cards the kernel offers (DRI render nodes, NVIDIA's own device).
struct Environment {
    QString platform;
    QString quickBackend;        // QT_QUICK_BACKEND
    QString rhiBackend;          // QSG_RHI_BACKEND
    QString softwareGl;          // LIBGL_ALWAYS_SOFTWARE
    QString galliumDriver;       // GALLIUM_DRIVER
    QStringList graphicsDevices; // /dev/dri/renderD*, /dev/nvidia0

    // This process's environment and this machine's devices.
    static Environment current();
};

// Whether Qt Quick should draw with its software scene graph: on a machine
// without a graphics card, or where OpenGL is told to draw on the
// processor, Qt Quick's OpenGL path would draw the same screens through a
// software rasterizer with far more memory and a slower first frame.
// A non-empty QT_QUICK_BACKEND or QSG_RHI_BACKEND decides instead (an empty
// one counts as unset, as an empty value is no choice), and so do platforms
// without a window system (offscreen, minimal), which are left alone.
bool softwareIsBetter(const Environment& environment);
bool softwareIsBetter();

} // namespace SceneGraphChoice
