#include "Cli.h"
#include "reports/ReportStore.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

// Only laying out a PDF needs fonts, and so a GUI application (drawn
// offscreen: the command line never opens a window).
bool needsFonts(int argc, char* argv[])
{
    return argc >= 3 && std::strcmp(argv[1], "reports") == 0 && std::strcmp(argv[2], "pdf") == 0;
}

} // namespace

int main(int argc, char* argv[])
{
    std::unique_ptr<QCoreApplication> app;
    if (needsFonts(argc, argv)) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        app = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        app = std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvex"));
    QCoreApplication::setApplicationName(QStringLiteral("Tallyvane"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    const int code = runCli(QCoreApplication::arguments().mid(1), out, err);
    ReportStore::close();
    out.flush();
    err.flush();
    return code;
}
