#pragma once

#include <QCommandLineOption>
#include <QObject>
#include <QSize>
#include <optional>

class QCommandLineParser;
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

// The --window-size <width>x<height> option both programs take, and the
// size it asks for: an empty size when it is not given; nothing, after a
// line on stderr saying so, when its value is no such size (the program
// then stops).
QCommandLineOption windowSizeOption();
std::optional<QSize> windowSizeOf(const QCommandLineParser& parser,
                                  const QCommandLineOption& option);
