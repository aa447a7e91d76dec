#pragma once

#include <QCoreApplication>
#include <QQuickWindow>
#include <cstdio>
#include <ctime>

// Quits the program once `window` has shown its first frame: the app's
// --quit-after-first-frame, and the bare window the start-up benchmark
// measures the app against, which quits the same way.
//
// The moment is written to standard output as "first-frame-monotonic-ns N
// cpu-ns C" (the monotonic clock, and the processor time of all threads so
// far), for the start-up benchmark (bench/ProcessBench.cpp), which knows
// when it started the process on the same clock. It is written where it
// happens (frameSwapped may come from the render thread); the quit goes
// through the event loop.
inline void quitAfterFirstFrame(QQuickWindow* window)
{
    QObject::connect(
        window, &QQuickWindow::frameSwapped, window,
        [] {
            timespec now{};
            timespec cpu{};
            clock_gettime(CLOCK_MONOTONIC, &now);
            clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &cpu);
            std::printf("first-frame-monotonic-ns %lld cpu-ns %lld\n",
                        static_cast<long long>(now.tv_sec) * 1000000000LL + now.tv_nsec,
                        static_cast<long long>(cpu.tv_sec) * 1000000000LL + cpu.tv_nsec);
            std::fflush(stdout);
        },
        static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
    QObject::connect(
        window, &QQuickWindow::frameSwapped, QCoreApplication::instance(),
        [] { QCoreApplication::exit(0); },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}
