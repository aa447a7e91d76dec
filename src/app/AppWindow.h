#pragma once

#include <QObject>
#include <QSize>

class QQmlApplicationEngine;
class QQuickWindow;

// The app's start, shared by the app and the screenshot tool
// (tools/screenshots): the application's names and services, the
// calculators, the scene graph, the presenter; then the main window.

// Sets the application up; call once, right after making the
// QGuiApplication.
void prepareApplication();

// Loads Main.qml into `engine` and sizes its window: `size` when valid,
// else at most as high as the screen's free area. Null when it failed.
QQuickWindow* loadMainWindow(QQmlApplicationEngine& engine, QSize size);

// Quits the app once the window has shown its first frame.
void quitAfterFirstFrame(QQuickWindow* window);

