// How long a tab switch takes to show: the app's own window (Main.qml, with
// its services) is started as the app starts it, and right after its first
// frame each other tab is shown for the first time, before the window makes
// it in the background; then every tab is shown again, round after round.
// A switch lasts from setting the tab until the next frame is on screen.
// Prints the figures and writes them as one JSON line to --json FILE.
#include "app/AppWindow.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>
#include <algorithm>
#include <cstdio>
#include <vector>

Q_IMPORT_QML_PLUGIN(TallyvanePlugin)

namespace {

// Waits for the window's next frame, at most two seconds; false on timeout.
bool waitForFrame(QQuickWindow* window)
{
    QEventLoop loop;
    bool shown = false;
    QObject::connect(window, &QQuickWindow::frameSwapped, &loop, [&] {
        shown = true;
        loop.quit();
    });
    QTimer::singleShot(2000, &loop, &QEventLoop::quit);
    loop.exec();
    return shown;
}

double showTab(QQuickWindow* window, int index)
{
    QElapsedTimer timer;
    timer.start();
    QMetaObject::invokeMethod(window, "showTab", Q_ARG(QVariant, QVariant(index)));
    if (!waitForFrame(window))
        return -1;
    return double(timer.nsecsElapsed()) / 1e6;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

} // namespace

int main(int argc, char* argv[])
{
    QGuiApplication app(argc, argv);
    prepareApplication(); // as the app starts: services, style, scene graph
    const QStringList args = app.arguments();
    const qsizetype jsonAt = args.indexOf(QStringLiteral("--json"));
    const int rounds = 10;

    QQmlApplicationEngine engine;
    QQuickWindow* window = loadMainWindow(engine, QSize(412, 892));
    if (!window || !waitForFrame(window)) {
        std::fprintf(stderr, "tab_switch_bench: the window showed no frame\n");
        return 1;
    }

    std::vector<double> first;
    for (int index : {1, 2, 3})
        first.push_back(showTab(window, index));
    std::vector<double> again;
    for (int round = 0; round < rounds; ++round)
        for (int index : {0, 1, 2, 3})
            again.push_back(showTab(window, index));
    if (std::count(first.begin(), first.end(), -1.0) ||
        std::count(again.begin(), again.end(), -1.0)) {
        std::fprintf(stderr, "tab_switch_bench: a tab switch showed no frame\n");
        return 1;
    }

    const double firstMax = *std::max_element(first.begin(), first.end());
    const double againMedian = median(again);
    const double againMax = *std::max_element(again.begin(), again.end());
    std::printf("first visits (Calculator, Reports, About): %.1f, %.1f, %.1f ms\n", first[0],
                first[1], first[2]);
    std::printf("switches after that: median %.1f ms, longest %.1f ms over %zu\n", againMedian,
                againMax, again.size());
    if (jsonAt >= 0 && jsonAt + 1 < args.size()) {
        QFile out(args.at(jsonAt + 1));
        if (!out.open(QIODevice::WriteOnly))
            return 1;
        out.write(QStringLiteral("{\"first_visit_max_ms\": %1, \"switch_median_ms\": %2, "
                                 "\"switch_max_ms\": %3}\n")
                      .arg(firstMax)
                      .arg(againMedian)
                      .arg(againMax)
                      .toUtf8());
    }
    return 0;
}
