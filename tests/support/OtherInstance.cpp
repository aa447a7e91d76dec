// Plays a second running copy of the app: saves one report with the given
// title into the shared TALLYVANE_HOME and exits.
#include "platform/Services.h"
#include "store/QVReport.h"

#include <QCoreApplication>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc < 2)
        return 2;
    QVReport report;
    report.title = QString::fromUtf8(argv[1]);
    report.functionTitle = QStringLiteral("Tip");
    report.date = QDateTime::currentDateTime();
    report.fileName = QStringLiteral("tip_%1_report.txt").arg(report.title);
    QVReport::saveReport(report);
    return 0;
}
