#pragma once

#include <QString>

namespace SceneGraphChoice {

// Whether an OpenGL renderer string names a software rasterizer (Mesa's
// llvmpipe or softpipe, swrast, a "Software Rasterizer", the Windows basic
// render driver): OpenGL that the processor draws.
bool isSoftwareRenderer(const QString& renderer);

// The renderer of the default OpenGL context, or empty when there is none.
QString openGlRenderer();

// Whether Qt Quick should draw with its software scene graph: when the
// only OpenGL is a software rasterizer, where Qt Quick's OpenGL path draws
// the same screens with far more memory and a slower first frame.
// QT_QUICK_BACKEND, when set, decides instead, and so do platforms without
// a window system (offscreen), which are left alone.
bool softwareIsBetter();

} // namespace SceneGraphChoice
