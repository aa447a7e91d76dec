#include "AppWindow.h"
#include "functions/Calculators.h"
#include "InputDirection.h"
#include "QmlPresenter.h"
#include "SceneGraphChoice.h"
#include "gui/DesktopServices.h"
#include "reports/ReportStore.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScreen>
#include <QtQml/qqmlextensionplugin.h>
#include <algorithm>
#include <csignal>

Q_IMPORT_QML_PLUGIN(TallyvanePlugin)

namespace {

AppOptions parseOptions(const QCoreApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Tallyvane finance calculator"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption quit(QStringLiteral("quit-after-first-frame"),
                                  QStringLiteral("Exit once the first frame is shown."));
    const QCommandLineOption shots(QStringLiteral("screenshots"),
                                   QStringLiteral("Render every screen into <dir> and exit."),
                                   QStringLiteral("dir"));
    const QCommandLineOption demo(QStringLiteral("seed-demo-reports"),
                                  QStringLiteral("Save a few sample reports first."));
    const QCommandLineOption size(QStringLiteral("window-size"),
                                  QStringLiteral("Open the window at <width>x<height> pixels."),
                                  QStringLiteral("size"));
    parser.addOptions({quit, shots, demo, size});
    parser.process(app);
    QSize windowSize;
    const QStringList parts = parser.value(size).split(QLatin1Char('x'));
    if (parts.size() == 2)
        windowSize = QSize(parts[0].toInt(), parts[1].toInt());
    return {parser.isSet(quit), parser.value(shots), parser.isSet(demo), windowSize};
}

// A phone-shaped window is taller than many laptop screens: it opens at most
// as high as the screen's free area, less room for the window frame.
void fitToScreen(QQuickWindow* window)
{
    const QScreen* screen = window->screen();
    if (!screen)
        return;
    constexpr int frameAllowance = 48;
    const int available = screen->availableGeometry().height() - frameAllowance;
    if (window->height() > available)
        window->resize(window->width(), std::max(window->minimumHeight(), available));
}

} // namespace

int main(int argc, char* argv[])
{
    // Past a file-size limit (ulimit -f) a write fails with EFBIG and is told
    // like any other failed write, rather than the signal ending the app in
    // the middle of it.
    std::signal(SIGXFSZ, SIG_IGN);
    InputDirection::useLeftToRight();
    QGuiApplication app(argc, argv);
    DesktopServices::install();
    installCalculators();
    QGuiApplication::setOrganizationName(QStringLiteral("Quorvex"));
    QGuiApplication::setApplicationName(QStringLiteral("Tallyvane"));
    QGuiApplication::setApplicationVersion(QStringLiteral(TALLYVANE_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.quorvex.Tallyvane"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/window-icon.png")));
    if (qEnvironmentVariableIsEmpty("QT_QUICK_CONTROLS_STYLE"))
        QQuickStyle::setStyle(QStringLiteral("Basic"));

    const AppOptions options = parseOptions(app);
    if (SceneGraphChoice::softwareIsBetter())
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QmlPresenter::instance(); // the screens' dialogs go through it
    // Closing the reports database folds its journal back into it.
    QObject::connect(&app, &QCoreApplication::aboutToQuit, [] { ReportStore::close(); });
    if (options.seedDemoReports)
        seedDemoReports();

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/"));
    QObject::connect(
        &engine, &QQmlApplicationEngine::objectCreated, &app,
        [](QObject* object, const QUrl&) {
            if (!object)
                QCoreApplication::exit(1);
        },
        Qt::QueuedConnection);
    engine.load(QUrl(QStringLiteral("qrc:/Tallyvane/app/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;

    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    if (!window)
        return 1;
    if (options.windowSize.isValid() && !options.windowSize.isEmpty())
        window->resize(options.windowSize);
    else
        fitToScreen(window);
    if (options.quitAfterFirstFrame)
        quitAfterFirstFrame(window);
    ScreenshotDriver* driver = nullptr;
    if (!options.screenshotDirectory.isEmpty()) {
        driver = new ScreenshotDriver(window, options.screenshotDirectory, &app);
        driver->start();
    }
    return app.exec();
}
