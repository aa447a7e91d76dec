#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QQuickWindow;

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
