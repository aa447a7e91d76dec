#include "charts/ChartPicture.h"

namespace {

ChartPictures::Encoder& installedEncoder()
{
    static ChartPictures::Encoder encoder;
    return encoder;
}

} // namespace

void ChartPictures::setEncoder(Encoder encoder)
{
    installedEncoder() = std::move(encoder);
}

bool ChartPictures::canDraw()
{
    return bool(installedEncoder());
}

QByteArray ChartPictures::encode(const ChartPicture& picture, const char* format)
{
    if (picture.isEmpty() || !installedEncoder())
        return QByteArray();
    return installedEncoder()(picture, format);
}
