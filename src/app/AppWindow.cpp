#include "AppWindow.h"

#include "InputDirection.h"
#include "QmlPresenter.h"
#include "SceneGraphChoice.h"
#include "functions/Calculators.h"
#include "gui/DesktopServices.h"
#include "store/ReportStore.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScreen>
#include <algorithm>

namespace {

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

void prepareApplication()
{
    DesktopServices::install();
    installCalculators();
    QGuiApplication::setOrganizationName(QStringLiteral("Quorvex"));
    QGuiApplication::setApplicationName(QStringLiteral("Tallyvane"));
    QGuiApplication::setApplicationVersion(QStringLiteral(TALLYVANE_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.quorvex.Tallyvane"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/window-icon.png")));
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
    if (size.isValid() && !size.isEmpty())
        window->resize(size);
    else
        fitToScreen(window);
    return window;
}

void quitAfterFirstFrame(QQuickWindow* window)
{
    QObject::connect(
        window, &QQuickWindow::frameSwapped, qApp, [] { QCoreApplication::exit(0); },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}
