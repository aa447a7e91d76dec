// tallyvane-screenshots: the app, walked through every screen, each saved as
// a picture (scripts/screenshots, scripts/perf). Not part of the product:
// it links the app's own start and screens, and adds the walk and a few
// sample reports.
//
//   tallyvane-screenshots DIR [--seed-demo-reports] [--window-size WxH]
#include "ScreenshotDriver.h"
#include "app/AppWindow.h"
#include "app/InputDirection.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(TallyvanePlugin)

int main(int argc, char* argv[])
{
    InputDirection::useLeftToRight();
    QGuiApplication app(argc, argv);
    prepareApplication();

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Renders every screen of Tallyvane."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("dir"), QStringLiteral("Where the pictures go."));
    const QCommandLineOption demo(QStringLiteral("seed-demo-reports"),
                                  QStringLiteral("Save a few sample reports first."));
    const QCommandLineOption size = windowSizeOption();
    parser.addOptions({demo, size});
    parser.process(app);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(1);
    if (parser.isSet(demo))
        seedDemoReports();
    const std::optional<QSize> windowSize = windowSizeOf(parser, size);
    if (!windowSize)
        return 1;

    QQmlApplicationEngine engine;
    QQuickWindow* window = loadMainWindow(engine, *windowSize);
    if (!window)
        return 1;
    auto* driver = new ScreenshotDriver(window, parser.positionalArguments().constFirst(), &app);
    driver->start();
    return app.exec();
}
