// A process that saves reports as fast as it can, the way the command
// line's "calc roi ... --save Plan" does, for the fault-injection tests.
//
//   tallyvane_report_saver TAG COUNT
//
// Saves COUNT reports titled "Plan" into $TALLYVANE_HOME, report i with the
// investment TAG * 100000 + i, and prints "saved <investment>" after each
// save that landed (flushed at once, so a killed process has told exactly
// what it saved). On the first failed save it prints
// "failed <investment>\t<reason>" and exits with 1.
//
// FAULT_FSIZE_LIMIT=<bytes> caps the size of every file the process writes
// (RLIMIT_FSIZE), playing a full disk.
#include "cli/Cli.h"

#include <QCoreApplication>
#include <QTextStream>
#include <csignal>
#include <cstdio>
#include <sys/resource.h>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc != 3)
        return 2;
    const qint64 tag = QByteArray(argv[1]).toLongLong();
    const int count = QByteArray(argv[2]).toInt();
    const QByteArray limit = qgetenv("FAULT_FSIZE_LIMIT");
    if (!limit.isEmpty()) {
        // Past the limit a write fails with EFBIG instead of killing us.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlim_t bytes = limit.toULongLong();
        const rlimit cap{bytes, bytes};
        if (setrlimit(RLIMIT_FSIZE, &cap) != 0)
            return 2;
    }
    QTextStream out(stdout);
    for (int i = 0; i < count; ++i) {
        const qint64 investment = tag * 100000 + i;
        QString ignored;
        QString reason;
        QTextStream quiet(&ignored);
        QTextStream errors(&reason);
        const int code = runCli({QStringLiteral("calc"), QStringLiteral("roi"),
                                 QStringLiteral("investmentAmount=%1").arg(investment),
                                 QStringLiteral("futureValue=5"), QStringLiteral("--save"),
                                 QStringLiteral("Plan")},
                                quiet, errors);
        errors.flush();
        if (code != 0) {
            out << "failed " << investment << '\t' << reason.trimmed() << Qt::endl;
            return 1;
        }
        out << "saved " << investment << Qt::endl;
    }
    return 0;
}
