#include "ScreenshotDriver.h"

#include "TextOverlaps.h"
#include "platform/AppPaths.h"
#include "platform/Services.h"
#include "reports/ReportTableModel.h"
#include "store/QVFileManager.h"
#include "store/QVReport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>
#include <cstdio>

ScreenshotDriver::ScreenshotDriver(QQuickWindow* window, const QString& directory, QObject* parent)
    : QObject(parent), m_window(window), m_directory(directory)
{}

void ScreenshotDriver::start()
{
    QDir().mkpath(m_directory);
    QQmlEngine* engine = qmlEngine(m_window);
    QQmlComponent component(engine, QUrl(QStringLiteral("qrc:/screenshots/ScreenshotWalk.qml")));
    m_walk = component.createWithInitialProperties(
        {{QStringLiteral("window"), QVariant::fromValue<QObject*>(m_window)}});
    if (!m_walk) {
        qWarning("the screenshot walk could not be made: %s",
                 qUtf8Printable(component.errorString()));
        QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(1); });
        return;
    }
    m_walk->setParent(this);
    m_steps = m_walk->property("steps").toStringList();
    QTimer::singleShot(300, this, &ScreenshotDriver::next);
}

void ScreenshotDriver::next()
{
    ++m_index;
    if (m_index >= m_steps.size()) {
        QCoreApplication::exit(m_failed || m_steps.isEmpty() ? 1 : 0);
        return;
    }
    // The failed-save screen needs a real failure: the documents folder is
    // put aside and a plain file takes its place until the picture is taken.
    if (m_steps.at(m_index) == QLatin1String("roi-save-failed"))
        blockDocuments(true);
    QMetaObject::invokeMethod(m_walk, "showStep", Q_ARG(QVariant, QVariant(m_steps.at(m_index))));
    // Let transitions, popups and chart animations settle first.
    QVariant settle;
    QMetaObject::invokeMethod(m_walk, "settleMilliseconds", Q_RETURN_ARG(QVariant, settle),
                              Q_ARG(QVariant, QVariant(m_steps.at(m_index))));
    QTimer::singleShot(settle.toInt(), this, &ScreenshotDriver::capture);
}

void ScreenshotDriver::capture()
{
    // Texts that run into each other fail the walk, each pair named.
    for (const QString& pair : textOverlaps(m_window)) {
        std::fprintf(stderr, "overlap on %s at %dx%d: %s\n", qUtf8Printable(m_steps.at(m_index)),
                     m_window->width(), m_window->height(), qUtf8Printable(pair));
        m_failed = true;
    }
    const QImage image = m_window->grabWindow();
    const QString path = QDir(m_directory).filePath(m_steps.at(m_index) + QStringLiteral(".png"));
    if (image.isNull() || !image.save(path)) {
        qWarning("screenshot %s could not be written", qUtf8Printable(path));
        m_failed = true;
    }
    blockDocuments(false);
    next();
}

void ScreenshotDriver::blockDocuments(bool block)
{
    const QString documents = AppPaths::documentsDirectory();
    const QString aside = documents + QStringLiteral(".aside");
    if (block && !m_documentsBlocked) {
        QDir().mkpath(documents);
        QDir().rename(documents, aside);
        QFile blocker(documents);
        m_documentsBlocked = blocker.open(QIODevice::WriteOnly);
    } else if (!block && m_documentsBlocked) {
        QFile::remove(documents);
        QDir().rename(aside, documents);
        m_documentsBlocked = false;
    }
}

void seedDemoReports()
{
    ReportTableModel list; // makes sure the stored list exists
    struct Demo {
        const char* title;
        const char* functionTitle;
        const char* color;
        const char* function;
        const char* body;
        int minutesAgo;
    };
    const Demo demos[] = {
        {"House deposit", "Tvm", "#E85B4F", "Time Value of Money",
         "Present Value: 0\nFuture Value: 50000\nAnnual Rate: 4.5%\n", 60 * 27},
        {"Dinner at Lina's", "Tip", "#F2A93B", "Tip Calculator",
         "Bill: 86.4\nTip: 15%\nPeople: 3\nTotal per Person: 33.12\n", 95},
        {"Solar panels", "Roi", "#1FDA9A", "Return on Investment",
         "Investment: 12000\nReturn: 15900\nRoi: 32.5%\n", 4},
    };
    for (const Demo& demo : demos) {
        QVReport report;
        report.title = QString::fromUtf8(demo.title);
        report.functionTitle = QString::fromUtf8(demo.functionTitle);
        report.date = Services::now().addSecs(-60 * demo.minutesAgo);
        report.colorTag = QVReport::colorFromHexString(QString::fromLatin1(demo.color));
        const QString stamp = report.date.toString(QStringLiteral("dd-MM-yyyy HH:mm"));
        report.contents =
            QStringLiteral("Financial Report - %1\nDate: %2\n\n-----------------------------\n\n%3")
                .arg(QString::fromUtf8(demo.function), stamp, QString::fromUtf8(demo.body));
        report.fileName = QStringLiteral("%1_%2_%3_report.txt")
                              .arg(report.functionTitle.toLower(), report.title, stamp);
        // A new file, " (2)" and on when the name is taken: never over a file
        // another report keeps.
        if (QVFileManager::writeNewFileToDocumentsDirectory(report.fileName, report.contents).ok())
            QVReport::saveReport(report);
    }
}
