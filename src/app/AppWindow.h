#pragma once

#include <QObject>
#include <QSize>
#include <QString>
#include <QStringList>

class QQmlApplicationEngine;
class QQuickWindow;

// Start-up options of the app that serve automation rather than users.
struct AppOptions {
    bool quitAfterFirstFrame = false;
    QString screenshotDirectory; // render every screen into this folder, then quit
    bool seedDemoReports = false;
    QSize windowSize; // replaces the window's own size when valid
};

// Quits the app once the window has shown its first frame.
void quitAfterFirstFrame(QQuickWindow* window);

// Makes the screenshot walk (ScreenshotWalk.qml) for the window, shows each
// of its `steps` with `showStep(name)` and saves the window as
// DIR/<name>.png. Quits with exit code 0 when done, 1 on failure.
class ScreenshotDriver : public QObject {
    Q_OBJECT

public:
    ScreenshotDriver(QQuickWindow* window, const QString& directory, QObject* parent = nullptr);
    void start();

private:
    void next();
    void capture();
    void blockDocuments(bool block);

    QQuickWindow* m_window;
    QObject* m_walk = nullptr;
    QString m_directory;
    QStringList m_steps;
    int m_index = -1;
    bool m_failed = false;
    bool m_documentsBlocked = false;
};

// A few saved reports from different calculators, so the Reports screens
// have something to show in screenshots and demos.
void seedDemoReports();
