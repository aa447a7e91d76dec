#include "IconImageProvider.h"

#include <QFile>
#include <QImageReader>
#include <QQmlEngine>
#include <algorithm>

IconImageProvider::IconImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage IconImageProvider::readPng(const QString& path, const QSize& size)
{
    if (!QFile::exists(path))
        return {};
    QImageReader reader(path, "png");
    // Named formats only: no plugin is asked whether it reads the file.
    reader.setAutoDetectImageFormat(false);
    if (size.isValid() && !size.isEmpty() && reader.size() != size)
        reader.setScaledSize(reader.size().scaled(size, Qt::KeepAspectRatio));
    return reader.read();
}

QImage IconImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    // An icon's name is a plain word ("tvm", "window-icon"): anything else
    // names no icon.
    const bool word = !id.isEmpty() && std::all_of(id.begin(), id.end(), [](QChar c) {
        return (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9') || c == u'-';
    });
    QImage image;
    if (word) {
        // Each icon comes at 88 px and at its 44 px on-screen size, for
        // screens of one pixel a point: the smaller file when it is enough.
        const QString smallFile = QStringLiteral(":/icons/small/%1.png").arg(id);
        const bool small = requestedSize.isValid() && requestedSize.width() <= 44 &&
                           requestedSize.height() <= 44 && QFile::exists(smallFile);
        image =
            readPng(small ? smallFile : QStringLiteral(":/icons/%1.png").arg(id), requestedSize);
    }
    if (size)
        *size = image.size();
    return image;
}

void IconImageProvider::installInto(QQmlEngine& engine)
{
    engine.addImageProvider(QStringLiteral("icons"), new IconImageProvider);
}
