// Renders SVG icons into PNG files of one size: render-icons SIZE IN.svg
// OUT.png [IN.svg OUT.png ...]. The catalogue shows the PNGs, which need no
// SVG renderer at start-up; the SVGs stay the icons' source.
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <cstdio>

int main(int argc, char* argv[])
{
    QGuiApplication app(argc, argv);
    const int size = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 0;
    if (size <= 0 || argc < 4 || argc % 2 != 0) {
        std::fprintf(stderr, "usage: render-icons SIZE IN.svg OUT.png [IN.svg OUT.png ...]\n");
        return 2;
    }
    for (int i = 2; i + 1 < argc; i += 2) {
        QImageReader reader(QString::fromLocal8Bit(argv[i]));
        reader.setScaledSize(QSize(size, size));
        const QImage image = reader.read();
        if (image.isNull() || !image.save(QString::fromLocal8Bit(argv[i + 1]), "PNG")) {
            std::fprintf(stderr, "%s: %s\n", argv[i], qPrintable(reader.errorString()));
            return 1;
        }
    }
    return 0;
}
