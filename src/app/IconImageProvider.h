#pragma once

#include <QQuickImageProvider>

// The app's own icons (resources/icons, in the resources under :/icons) as
// "image://icons/NAME", read as PNG by name. An Image with a file address
// lets Qt find the reader by asking every image format plugin installed
// (SVG, JPEG, GIF, ICO, ...), which loads each of them, a cost the first
// frame would pay for icons that are all PNG.
class IconImageProvider : public QQuickImageProvider {
public:
    IconImageProvider();

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

    // The PNG file at `path` (a resource or a file), scaled to `size` when
    // that is valid; a null image when it cannot be read.
    static QImage readPng(const QString& path, const QSize& size = {});

    // Adds the provider to `engine` under "icons".
    static void installInto(class QQmlEngine& engine);
};
