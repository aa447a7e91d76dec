#include "ReportPdf.h"

#include "QVFileManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QLocale>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextImageFormat>
#include <QUrl>

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

bool write(QIODevice* device, const QString& text, Page page, const QString& chartPath)
{
    // Laying out text needs fonts, and fonts need a GUI application.
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return false;
    QPdfWriter writer(device);
    writer.setCreator(QStringLiteral("Tallyvane"));
    writer.setTitle(text.section(QLatin1Char('\n'), 0, 0));
    writer.setPageLayout(
        QPageLayout(QPageSize(page == Page::Letter ? QPageSize::Letter : QPageSize::A4),
                    QPageLayout::Portrait, QMarginsF(20, 20, 20, 20), QPageLayout::Millimeter));
    writer.setResolution(300);

    QTextDocument document;
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(10);
    document.setDefaultFont(fixed);
    QTextCursor cursor(&document);
    const QStringList lines = text.split(QLatin1Char('\n'));
    QTextCharFormat heading;
    heading.setFontWeight(QFont::Bold);
    heading.setFontPointSize(14);
    cursor.insertText(lines.value(0), heading);
    cursor.insertText(QStringLiteral("\n"), QTextCharFormat());
    cursor.insertText(lines.mid(1).join(QLatin1Char('\n')), QTextCharFormat());
    const QImage chart = chartPath.isEmpty() ? QImage() : QImage(chartPath);
    if (!chart.isNull()) {
        document.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("chart")), chart);
        QTextImageFormat picture;
        picture.setName(QStringLiteral("chart"));
        picture.setWidth(400); // points wide: fits A4 and Letter within the margins
        picture.setHeight(400.0 * chart.height() / chart.width());
        cursor.insertBlock();
        cursor.insertImage(picture);
    }
    // Without a page size of its own the document is laid out on the
    // writer's pages, at the fonts' real sizes.
    document.print(&writer);
    return true;
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
        write(&file, text, page, chartPath);
        const bool ok = file.flush() && file.error() == QFileDevice::NoError;
        const QString reason = file.errorString();
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
