// The yardstick of the app's start-up: the smallest Qt Quick Controls window
// of the app's size and style, a button and a text field, started the way
// main.cpp starts the app and quitting after its first frame the way the
// app's --quit-after-first-frame does. What the app takes beyond this is
// the app's own cost.
#include "app/FirstFrame.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>

namespace {

const char* const windowQml = R"qml(
import QtQuick
import QtQuick.Controls

ApplicationWindow {
    width: 412
    height: 892
    visible: true
    title: "Bare window"

    Column {
        anchors.centerIn: parent
        spacing: 12
        TextField { width: 300; placeholderText: "Amount" }
        Button { text: "Compute" }
    }
}
)qml";

} // namespace

int main(int argc, char* argv[])
{
    QGuiApplication app(argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QUICK_CONTROLS_STYLE"))
        QQuickStyle::setStyle(QStringLiteral("Basic"));

    QQmlApplicationEngine engine;
    engine.loadData(windowQml, QUrl(QStringLiteral("qrc:/BareWindow.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    if (!window)
        return 1;
    quitAfterFirstFrame(window); // as the app's --quit-after-first-frame
    return app.exec();
}
