#include "AppWindow.h"

#include "IconImageProvider.h"
#include "InputDirection.h"
#include "QmlPresenter.h"
#include "SceneGraphChoice.h"
#include "WindowPlacement.h"
#include "functions/Calculators.h"
#include "gui/DesktopServices.h"
#include "platform/Services.h"
#include "platform/SettingsStore.h"
#include "store/ReportStore.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <cstdio>

namespace {

const QString geometryKey = QStringLiteral("window/geometry");

// The window opens sized for the screen, or where it was left, and keeps
// its place when it closes (WindowPlacement). The frame takes some room
// from the screen's free area.
void placeOnScreen(QQuickWindow* window)
{
    const QScreen* screen = window->screen();
    if (!screen)
        return;
    constexpr int frameAllowance = 48;
    const QRect available = screen->availableGeometry().adjusted(0, 0, 0, -frameAllowance);
    window->setGeometry(
        WindowPlacement::placed(available, Services::settings().value(geometryKey)));
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, window, [window] {
        if (window->windowState() == Qt::WindowNoState)
            Services::settings().setValue(geometryKey, WindowPlacement::keep(window->geometry()));
    });
}

} // namespace

void prepareApplication()
{
    DesktopServices::install();
    installCalculators();
    QGuiApplication::setOrganizationName(QStringLiteral("Quorvex"));
    QGuiApplication::setApplicationName(QStringLiteral("Tallyvane"));
    QGuiApplication::setApplicationVersion(QStringLiteral(TALLYVANE_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.quorvex.Tallyvane"));
    if (qEnvironmentVariableIsEmpty("QT_QUICK_CONTROLS_STYLE"))
        QQuickStyle::setStyle(QStringLiteral("Basic"));
    if (SceneGraphChoice::softwareIsBetter())
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QmlPresenter::instance(); // the screens' dialogs go through it
    // Closing the reports database folds its journal back into it.
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, [] { ReportStore::close(); });
}

QQuickWindow* loadMainWindow(QQmlApplicationEngine& engine, QSize size)
{
    engine.addImportPath(QStringLiteral("qrc:/"));
    IconImageProvider::installInto(engine);
    QObject::connect(
        &engine, &QQmlApplicationEngine::objectCreated, qApp,
        [](QObject* object, const QUrl&) {
            if (!object)
                QCoreApplication::exit(1);
        },
        Qt::QueuedConnection);
    engine.load(QUrl(QStringLiteral("qrc:/Tallyvane/app/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return nullptr;
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    if (!window)
        return nullptr;
    // The window icon (256 px, decoded in some 6 M instructions) is given
    // once the first frame is on screen, after what else that frame set
    // going: the first frame does not wait for it.
    QObject::connect(
        window, &QQuickWindow::frameSwapped, qApp,
        [] {
            QTimer::singleShot(0, qApp, [] {
                QGuiApplication::setWindowIcon(QIcon(QPixmap::fromImage(
                    IconImageProvider::readPng(QStringLiteral(":/icons/window-icon.png")))));
            });
        },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    if (size.isValid() && !size.isEmpty())
        window->resize(size);
    else
        placeOnScreen(window);
    return window;
}

QCommandLineOption windowSizeOption()
{
    return {QStringLiteral("window-size"),
            QStringLiteral("Open the window at <width>x<height> pixels."), QStringLiteral("size")};
}

std::optional<QSize> windowSizeOf(const QCommandLineParser& parser,
                                  const QCommandLineOption& option)
{
    if (!parser.isSet(option))
        return QSize();
    const QStringList parts = parser.value(option).split(QLatin1Char('x'));
    bool wide = false;
    bool high = false;
    const QSize size =
        parts.size() == 2 ? QSize(parts[0].toInt(&wide), parts[1].toInt(&high)) : QSize();
    if (!wide || !high || size.isEmpty()) {
        std::fprintf(stderr, "--window-size takes <width>x<height>, such as 412x892 (not \"%s\")\n",
                     qUtf8Printable(parser.value(option)));
        return std::nullopt;
    }
    return size;
}
