// The entry points of libtallyvane_pdf.so, which the command line loads for
// "reports pdf" only: a GUI application (drawn offscreen, the command line
// never opens a window), which laying out text needs for its fonts, and the
// layout itself.
#include "gui/ReportPdfLayout.h"

#include <QGuiApplication>

extern "C" Q_DECL_EXPORT QCoreApplication* tallyvanePdfApplication(int* argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return new QGuiApplication(*argc, argv);
}

extern "C" Q_DECL_EXPORT bool tallyvaneLayOutReportPdf(QIODevice* device, const QString& text,
                                                       bool letter, const QByteArray& chart)
{
    return layOutReportPdf(device, text, letter, chart);
}
