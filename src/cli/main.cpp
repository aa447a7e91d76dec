#include "Cli.h"
#include "reports/ReportStore.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvex"));
    QCoreApplication::setApplicationName(QStringLiteral("Tallyvane"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    const int code = runCli(app.arguments().mid(1), out, err);
    ReportStore::close();
    out.flush();
    err.flush();
    return code;
}
