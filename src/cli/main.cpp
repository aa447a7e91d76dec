#include "Cli.h"
#include "reports/ReportPdf.h"
#include "store/ReportStore.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibrary>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

// Only laying out a PDF needs fonts, and so QtGui: that comes in a module
// loaded for "reports pdf" alone, so every other command starts with QtCore.
bool needsFonts(int argc, char* argv[])
{
    return argc >= 3 && std::strcmp(argv[1], "reports") == 0 && std::strcmp(argv[2], "pdf") == 0;
}

using MakeApplication = QCoreApplication* (*)(int* argc, char** argv);

// The module sits beside the program in a build tree, and in the library
// folder it was installed to otherwise.
std::unique_ptr<QCoreApplication> loadPdfModule(int* argc, char** argv, QString* error)
{
    const QString here = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
    const QStringList candidates = {
        QFileInfo(here).absolutePath() + QStringLiteral("/libtallyvane_pdf.so"),
        QStringLiteral(TALLYVANE_PDF_MODULE_DIR "/libtallyvane_pdf.so")};
    for (const QString& path : candidates) {
        if (!QFileInfo::exists(path))
            continue;
        QLibrary module(path); // stays loaded: the application lives in it
        const auto make =
            reinterpret_cast<MakeApplication>(module.resolve("tallyvanePdfApplication"));
        const auto layout =
            reinterpret_cast<ReportPdf::Layout>(module.resolve("tallyvaneLayOutReportPdf"));
        if (!make || !layout) {
            *error = module.errorString();
            return nullptr;
        }
        ReportPdf::setLayout(layout);
        return std::unique_ptr<QCoreApplication>(make(argc, argv));
    }
    *error = QStringLiteral("libtallyvane_pdf.so was not found");
    return nullptr;
}

} // namespace

int main(int argc, char* argv[])
{
    // Past a file-size limit (ulimit -f) a write fails with EFBIG and is told
    // like any other failed write, rather than the signal ending the program
    // in the middle of it.
    std::signal(SIGXFSZ, SIG_IGN);
    std::unique_ptr<QCoreApplication> app;
    QString moduleError;
    if (needsFonts(argc, argv))
        app = loadPdfModule(&argc, argv, &moduleError);
    // Without the module "reports pdf" still runs, and says it cannot write.
    if (!app)
        app = std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvex"));
    QCoreApplication::setApplicationName(QStringLiteral("Tallyvane"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    if (!moduleError.isEmpty())
        err << "tallyvane-cli: PDFs cannot be laid out: " << moduleError << '\n';
    const int code = runCli(QCoreApplication::arguments().mid(1), out, err);
    // A save can be the first use of the store: what its check found is told
    // too (the reports command has told it already).
    if (const QString notice = ReportStore::takeNotice(); !notice.isEmpty())
        err << "tallyvane-cli: " << notice << '\n';
    ReportStore::close();
    out.flush();
    err.flush();
    return code;
}
