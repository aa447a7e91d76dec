#include "gui/DesktopServices.h"

#include "charts/ChartPicture.h"
#include "charts/MultiLineGraphRenderer.h"
#include "gui/ReportPdfLayout.h"
#include "platform/Clipboard.h"
#include "platform/Services.h"
#include "reports/ReportPdf.h"

#include <QBuffer>
#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>

namespace {

bool hasDesktop()
{
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) &&
           QGuiApplication::platformName() != QLatin1String("offscreen") &&
           QGuiApplication::platformName() != QLatin1String("minimal");
}

// The picture as an opaque image at its device pixel ratio.
QImage chartImage(const ChartPicture& picture)
{
    // Text needs fonts, and fonts need a GUI application.
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return QImage();
    GraphStyle style;
    style.gridLineColor = toQColor(picture.gridLineColor);
    style.gridLineWidth = picture.gridLineWidth;
    style.textFontSize = picture.textFontSize;
    style.legendViewType = picture.legendViewType;
    style.showCustomMarkerView = picture.showCustomMarkerView;
    return MultiLineGraphRenderer::renderImage(*picture.source, picture.delegate, picture.size,
                                               picture.devicePixelRatio, style);
}

// Installed as ChartPictures' encoder, which hands over only pictures with a
// source.
QByteArray encodeChart(const ChartPicture& picture, const char* format)
{
    const QImage image = chartImage(picture);
    if (image.isNull())
        return QByteArray();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    // JPEG at full quality, so the mailed picture keeps its thin lines
    // sharp; PNG at its default compression (it is lossless anyway).
    const int quality = qstricmp(format, "JPEG") == 0 ? 100 : -1;
    if (!image.save(&buffer, format, quality))
        return QByteArray();
    return bytes;
}

} // namespace

DesktopUrlOpener::DesktopUrlOpener(std::chrono::milliseconds timeLimit) : m_timeLimit(timeLimit) {}

void DesktopUrlOpener::openUrl(const QUrl& url, Done done)
{
    // Read at each use, so a test can point it at its script.
    const QString program = qEnvironmentVariable("TALLYVANE_URL_OPENER");
    if (!program.isEmpty()) {
        ProcessUrlOpener(program, m_timeLimit).openUrl(url, std::move(done));
        return;
    }
    if (!hasDesktop()) {
        if (done)
            done(Outcome::Failed);
        return;
    }
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    // QDesktopServices starts xdg-open detached and reports success even
    // when it then finds no program for the address: running it here tells
    // the user when nothing opened.
    ProcessUrlOpener(QStringLiteral("xdg-open"), m_timeLimit).openUrl(url, std::move(done));
#else
    const bool opened = QDesktopServices::openUrl(url);
    if (done)
        done(opened ? Outcome::Opened : Outcome::Failed);
#endif
}

void DesktopServices::install()
{
    Services::setUrlOpener(std::make_shared<DesktopUrlOpener>());
    Clipboard::setHandler([](const QString& text) {
        if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
            return;
        if (QClipboard* clipboard = QGuiApplication::clipboard())
            clipboard->setText(text);
    });
    Clipboard::setReader([]() -> QString {
        if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
            return {};
        if (QClipboard* clipboard = QGuiApplication::clipboard())
            return clipboard->text();
        return {};
    });
    ChartPictures::setEncoder(encodeChart);
    ReportPdf::setLayout(layOutReportPdf);
}
