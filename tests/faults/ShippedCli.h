#pragma once

// What the fault tests share: the shipped tallyvane-cli run as a process on
// a home, and whole files read and written.
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

// One run of the shipped command line.
struct CliRun {
    int exitCode = -1; // -1: killed by a signal, or hung
    QString out;
    QString err;
    qint64 ms = 0;
};

// Runs the shipped program on `home` with a fresh signal state: SIGXFSZ at
// its default action (which ends a process), so that only the program's own
// handling keeps it alive past a file-size limit of `fileSizeLimit` bytes
// (none when 0).
inline CliRun runShippedCli(const QString& home, const QStringList& args, rlim_t fileSizeLimit = 0)
{
    // The PDF layout starts a GUI application, which warns without one.
    static const QTemporaryDir runtime;
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TALLYVANE_HOME"), home);
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
    process.setProcessEnvironment(environment);
    process.setChildProcessModifier([fileSizeLimit] {
        ::signal(SIGXFSZ, SIG_DFL);
        if (fileSizeLimit > 0) {
            const rlimit cap{fileSizeLimit, fileSizeLimit};
            ::setrlimit(RLIMIT_FSIZE, &cap);
        }
    });
    QElapsedTimer clock;
    clock.start();
    process.start(QStringLiteral(CLI_PATH), args);
    CliRun run;
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished(5000);
        ADD_FAILURE() << "tallyvane-cli " << args.join(' ').toStdString() << " hung";
    } else if (process.exitStatus() == QProcess::NormalExit) {
        run.exitCode = process.exitCode();
    } else {
        ADD_FAILURE() << "tallyvane-cli " << args.join(' ').toStdString()
                      << " was killed by signal " << process.exitCode();
    }
    run.ms = clock.elapsed();
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

inline QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

inline bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size();
}
