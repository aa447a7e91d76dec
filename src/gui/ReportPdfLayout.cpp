#include "gui/ReportPdfLayout.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextImageFormat>
#include <QUrl>

bool layOutReportPdf(QIODevice* device, const QString& text, bool letter, const QByteArray& chart)
{
    // Laying out text needs fonts, and fonts need a GUI application.
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return false;
    QPdfWriter writer(device);
    writer.setCreator(QStringLiteral("Tallyvane"));
    writer.setTitle(text.section(QLatin1Char('\n'), 0, 0));
    writer.setPageLayout(QPageLayout(QPageSize(letter ? QPageSize::Letter : QPageSize::A4),
                                     QPageLayout::Portrait, QMarginsF(20, 20, 20, 20),
                                     QPageLayout::Millimeter));
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
    const QImage picture = chart.isEmpty() ? QImage() : QImage::fromData(chart);
    if (!picture.isNull()) {
        document.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("chart")), picture);
        QTextImageFormat format;
        format.setName(QStringLiteral("chart"));
        format.setWidth(400); // points wide: fits A4 and Letter within the margins
        format.setHeight(400.0 * picture.height() / picture.width());
        cursor.insertBlock();
        cursor.insertImage(format);
    }
    // Without a page size of its own the document is laid out on the
    // writer's pages, at the fonts' real sizes.
    document.print(&writer);
    return true;
}
