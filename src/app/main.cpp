#include "AppWindow.h"
#include "FirstFrame.h"
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
                                  QStringLiteral("Exit once the first frame is shown, writing the "
                                                 "moment to standard output."));
    const QCommandLineOption size = windowSizeOption();
    parser.addOptions({quit, size});
    parser.process(app);
    const std::optional<QSize> windowSize = windowSizeOf(parser, size);
    if (!windowSize)
        return 1;

    QQmlApplicationEngine engine;
    QQuickWindow* window = loadMainWindow(engine, *windowSize);
    if (!window)
        return 1;
    if (parser.isSet(quit))
        quitAfterFirstFrame(window);
    return app.exec();
}
