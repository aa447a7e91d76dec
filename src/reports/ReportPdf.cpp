#include "ReportPdf.h"

#include "QVFileManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
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
    QString stem = textPath;
    if (!stem.endsWith(QLatin1String("_report.txt")))
        return {};
    stem.chop(int(qstrlen("_report.txt")));
    const QString chart = stem + QStringLiteral("_chart.png");
    return QFileInfo::exists(chart) ? chart : QString();
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

bool write(QIODevice* device, const QString& text, Page page, const QString& chartPath,
           QString* error)
{
    const Layout layout = installedLayout();
    if (layout && layout(device, text, page == Page::Letter, chartPath))
        return true;
    if (error)
        *error = layout ? QStringLiteral("the PDF could not be laid out")
                        : QStringLiteral("no PDF layout is available");
    return false;
}

WriteResult saveToDocuments(const QString& reportFileName, const QString& text, Page page,
                            QString* name, const QString& chartPath)
{
    QString base = reportFileName;
    if (base.endsWith(QLatin1String("_report.txt")))
        base.chop(4);
    base += QStringLiteral(".pdf");
    if (!QVFileManager::isPlainFileName(base))
        return WriteResult::failure(QStringLiteral("The report has no file name to follow."));
    const QString directory = QVFileManager::documentsDirectory();
    if (!QDir().mkpath(directory))
        return WriteResult::failure(
            QStringLiteral("The documents folder %1 could not be created.").arg(directory));
    for (int copy = 1; copy <= 999; ++copy) {
        const QString candidate =
            copy == 1 ? base : base.chopped(4) + QStringLiteral(" (%1).pdf").arg(copy);
        QFile file(directory + QLatin1Char('/') + candidate);
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            if (QFileInfo::exists(file.fileName()) || QFileInfo(file.fileName()).isSymLink())
                continue;
            return WriteResult::failure(
                QStringLiteral("%1 could not be written: %2.").arg(candidate, file.errorString()));
        }
        QString reason;
        const bool laidOut = write(&file, text, page, chartPath, &reason);
        const bool ok = laidOut && file.flush() && file.error() == QFileDevice::NoError;
        if (laidOut)
            reason = file.errorString();
        file.close();
        if (!ok || file.size() == 0) {
            file.remove();
            return WriteResult::failure(
                QStringLiteral("%1 could not be written: %2.").arg(candidate, reason));
        }
        *name = candidate;
        return WriteResult::success();
    }
    return WriteResult::failure(
        QStringLiteral("There are too many PDFs named %1 already.").arg(base));
}

} // namespace ReportPdf
