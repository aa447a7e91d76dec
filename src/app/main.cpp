#include "AppWindow.h"
#include "InputDirection.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QtQml/qqmlextensionplugin.h>
#include <csignal>

Q_IMPORT_QML_PLUGIN(TallyvanePlugin)

int main(int argc, char* argv[])
{
    // Past a file-size limit (ulimit -f) a write fails with EFBIG and is told
    // like any other failed write, rather than the signal ending the app in
    // the middle of it.
    std::signal(SIGXFSZ, SIG_IGN);
    InputDirection::useLeftToRight();
    QGuiApplication app(argc, argv);
    prepareApplication();

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Tallyvane finance calculator"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption quit(QStringLiteral("quit-after-first-frame"),
                                  QStringLiteral("Exit once the first frame is shown."));
    const QCommandLineOption size(QStringLiteral("window-size"),
                                  QStringLiteral("Open the window at <width>x<height> pixels."),
                                  QStringLiteral("size"));
    parser.addOptions({quit, size});
    parser.process(app);
    const QStringList parts = parser.value(size).split(QLatin1Char('x'));
    const QSize windowSize =
        parts.size() == 2 ? QSize(parts[0].toInt(), parts[1].toInt()) : QSize();

    QQmlApplicationEngine engine;
    QQuickWindow* window = loadMainWindow(engine, windowSize);
    if (!window)
        return 1;
    if (parser.isSet(quit))
        quitAfterFirstFrame(window);
    return app.exec();
}
