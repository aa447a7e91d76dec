#include "ReportPdf.h"

#include "platform/SafeFiles.h"
#include "store/QVFileManager.h"

#include <QIODevice>
#include <QLocale>

namespace ReportPdf {

Page pageForLocale()
{
    return QLocale().measurementSystem() == QLocale::ImperialUSSystem ? Page::Letter : Page::A4;
}

Page pageNamed(const QString& name, bool* known)
{
    const bool letter = name.compare(QLatin1String("Letter"), Qt::CaseInsensitive) == 0;
    if (known)
        *known = letter || name.compare(QLatin1String("A4"), Qt::CaseInsensitive) == 0;
    return letter ? Page::Letter : Page::A4;
}

QString chartPathFor(const QString& textPath)
{
    if (!textPath.endsWith(QLatin1String("_report.txt")))
        return {};
    return textPath.chopped(int(qstrlen("_report.txt"))) + QStringLiteral("_chart.png");
}

QByteArray readChart(const QString& textPath, QString* problem)
{
    problem->clear();
    const QString path = chartPathFor(textPath);
    // Nothing there, not even a link: the report has no chart.
    if (path.isEmpty() || SafeFiles::kindOf(path) == SafeFiles::Kind::Missing)
        return {};
    QByteArray chart;
    *problem = QVFileManager::readFileInDocumentsDirectory(path, &chart,
                                                           QStringLiteral("The report's chart"));
    return chart;
}

namespace {

Layout& installedLayout()
{
    static Layout layout = nullptr;
    return layout;
}

} // namespace

void setLayout(Layout layout)
{
    installedLayout() = layout;
}

bool write(QIODevice* device, const QString& text, Page page, const QByteArray& chart,
           QString* error)
{
    const Layout layout = installedLayout();
    if (layout && layout(device, text, page == Page::Letter, chart))
        return true;
    if (error)
        *error = layout ? QStringLiteral("the PDF could not be laid out")
                        : QStringLiteral("no PDF layout is available");
    return false;
}

WriteResult saveToDocuments(const QString& reportFileName, const QString& text, Page page,
                            QString* name, const QByteArray& chart)
{
    QString base = reportFileName;
    if (base.endsWith(QLatin1String("_report.txt")))
        base.chop(4);
    base += QStringLiteral(".pdf");
    if (!QVFileManager::isPlainFileName(base))
        return WriteResult::failure(QStringLiteral("The report has no file name to follow."));
    const QString failed = SafeFiles::writeNewFile(
        QVFileManager::documentsDirectory(),
        [&base](int copy) {
            return copy == 1 ? base : base.chopped(4) + QStringLiteral(" (%1).pdf").arg(copy);
        },
        [&](QIODevice* device, QString* error) {
            return write(device, text, page, chart, error) && device->pos() > 0;
        },
        name);
    return failed.isEmpty() ? WriteResult::success() : WriteResult::failure(failed);
}

} // namespace ReportPdf
