#include "SceneGraphChoice.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>

namespace SceneGraphChoice {

bool isSoftwareRenderer(const QString& renderer)
{
    static const char* const software[] = {"llvmpipe", "softpipe", "swrast", "software rasterizer",
                                           "microsoft basic render"};
    const QString lower = renderer.toLower();
    for (const char* name : software) {
        if (lower.contains(QLatin1String(name)))
            return true;
    }
    return false;
}

QString openGlRenderer()
{
    QOpenGLContext context;
    if (!context.create())
        return {};
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!surface.isValid() || !context.makeCurrent(&surface))
        return {};
    const auto* name = context.functions()->glGetString(GL_RENDERER);
    const QString renderer =
        name ? QString::fromLatin1(reinterpret_cast<const char*>(name)) : QString();
    context.doneCurrent();
    return renderer;
}

bool softwareIsBetter()
{
    if (qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        return false;
    const QString platform = QGuiApplication::platformName();
    if (platform == QLatin1String("offscreen") || platform == QLatin1String("minimal"))
        return false;
    return isSoftwareRenderer(openGlRenderer());
}

} // namespace SceneGraphChoice
