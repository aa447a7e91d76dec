#include "store/QVFileManager.h"

#include "platform/AppPaths.h"
#include "platform/SafeFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <QLoggingCategory>
#include <unistd.h>

Q_DECLARE_LOGGING_CATEGORY(lcReports)

QString QVFileManager::documentsDirectory()
{
    return AppPaths::documentsDirectory();
}

bool QVFileManager::isPlainFileName(const QString& name)
{
    return !name.isEmpty() && !name.contains(QLatin1Char('/')) && name != QLatin1String(".") &&
           name != QLatin1String("..") && !name.contains(QChar(0));
}

bool QVFileManager::saveFileToDocumentsDirectoryWithContents(const QString& name,
                                                             const QString& contents)
{
    if (!isPlainFileName(name))
        return false;
    for (QChar c : contents) {
        if (c.unicode() > 0x7f)
            return false;
    }
    const QString directory = documentsDirectory();
    if (!QDir().mkpath(directory))
        return false;
    QFile file(QStringLiteral("%1/%2").arg(directory, name));
    // Only ever a regular file is written over: never through a link, into
    // a pipe (which would wait for a reader) or a device.
    const SafeFiles::Kind kind = SafeFiles::kindOf(file.fileName());
    if (kind != SafeFiles::Kind::Missing && kind != SafeFiles::Kind::Regular)
        return false;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    const QByteArray bytes = contents.toLatin1();
    return file.write(bytes) == bytes.size();
}

namespace {

const QLatin1String reportSuffix("_report.txt");

// More copies of one name than anyone makes by hand: past this the write
// gives up instead of searching on.
constexpr int maxCopies = 999;

bool isAscii(const QString& text)
{
    for (QChar c : text) {
        if (c.unicode() > 0x7f)
            return false;
    }
    return true;
}

// The folder of `path` is the documents directory itself, also after
// links are followed.
bool liesInDocumentsDirectory(const QString& path)
{
    const QFileInfo info(path);
    if (!QVFileManager::isPlainFileName(info.fileName()))
        return false;
    const QString documents = QDir(QVFileManager::documentsDirectory()).canonicalPath();
    if (documents.isEmpty() || QDir(info.absolutePath()).canonicalPath() != documents)
        return false;
    const QString target = info.canonicalFilePath();
    return target.isEmpty() || QFileInfo(target).absolutePath() == documents;
}

} // namespace

QString QVFileManager::numberedName(const QString& name, int copy)
{
    if (copy <= 1)
        return name;
    const QString mark = QStringLiteral(" (%1)").arg(copy);
    if (name.endsWith(reportSuffix))
        return name.chopped(reportSuffix.size()) + mark + reportSuffix;
    return name + mark;
}

WriteResult QVFileManager::writeNewFileToDocumentsDirectory(QString& name, const QString& contents)
{
    if (!isPlainFileName(name))
        return WriteResult::failure(
            QStringLiteral("\"%1\" is not a file name in the documents folder.").arg(name));
    if (!isAscii(contents))
        return WriteResult::failure(QStringLiteral(
            "The report holds characters that a plain-text (ASCII) file cannot hold."));
    const QString directory = documentsDirectory();
    if (!QDir().mkpath(directory))
        return WriteResult::failure(
            QStringLiteral("The documents folder %1 could not be created.").arg(directory));
    const QByteArray bytes = contents.toLatin1();
    for (int copy = 1; copy <= maxCopies; ++copy) {
        const QString candidate = numberedName(name, copy);
        QFile file(QStringLiteral("%1/%2").arg(directory, candidate));
        // NewOnly fails on any existing entry, a dangling link included, so
        // nothing is ever written through a link or over another file.
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            if (QFileInfo::exists(file.fileName()) || QFileInfo(file.fileName()).isSymLink())
                continue;
            return WriteResult::failure(
                QStringLiteral("%1 could not be written: %2.").arg(candidate, file.errorString()));
        }
        const bool written =
            file.write(bytes) == bytes.size() && file.flush() && ::fsync(file.handle()) == 0;
        const QString reason = file.errorString();
        file.close();
        if (!written || file.error() != QFileDevice::NoError) {
            file.remove();
            return WriteResult::failure(
                QStringLiteral("%1 could not be written: %2.").arg(candidate, reason));
        }
        name = candidate;
        return WriteResult::success();
    }
    return WriteResult::failure(
        QStringLiteral("There are too many reports named %1 already.").arg(name));
}

QString QVFileManager::readFileInDocumentsDirectory(const QString& path, QByteArray* bytes,
                                                    const QString& what)
{
    bytes->clear();
    if (!liesInDocumentsDirectory(path))
        return QStringLiteral("%1 lies outside the documents folder; it is not read.").arg(what);
    // Links within the folder resolved, the file itself is opened without
    // following any further link.
    const QString target = QFileInfo(path).canonicalFilePath();
    const SafeFiles::ReadResult read =
        SafeFiles::readRegular(target.isEmpty() ? path : target, maxReadBytes, bytes);
    switch (read.status) {
    case SafeFiles::ReadStatus::Read:
        return QString();
    case SafeFiles::ReadStatus::NotRegular:
        return QStringLiteral("%1 is not a regular file.").arg(what);
    case SafeFiles::ReadStatus::TooLarge:
        return QStringLiteral("%1 is larger than %2 MB.").arg(what).arg(maxReadBytes >> 20);
    case SafeFiles::ReadStatus::Failed:
        break;
    }
    return QStringLiteral("%1 could not be read: %2.").arg(what, read.systemError);
}

QStringList QVFileManager::filesInDocumentsDirectory()
{
    QDir dir(documentsDirectory());
    if (!dir.exists() || !dir.isReadable())
        return {};
    return dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDir::Unsorted);
}

QStringList QVFileManager::listReportFilesFromDocumentsDirectory()
{
    QStringList paths;
    const QString directory = documentsDirectory();
    for (const QString& name : filesInDocumentsDirectory()) {
        if (name.contains(QLatin1String("report")))
            paths << directory + QLatin1Char('/') + name;
    }
    return paths;
}

void QVFileManager::clearDocumentsDirectory()
{
    const QString directory = documentsDirectory();
    for (const QString& name : filesInDocumentsDirectory()) {
        const QString path = directory + QLatin1Char('/') + name;
        const QFileInfo info(path);
        const bool removed = info.isDir() && !info.isSymLink() ? QDir(path).removeRecursively()
                                                               : QFile::remove(path);
        if (!removed)
            qCWarning(lcReports, "Error while removing file: %s", qUtf8Printable(path));
    }
}

bool QVFileManager::removeFileAtPath(const QString& path)
{
    const QFileInfo info(path);
    if (QDir::cleanPath(info.absolutePath()) !=
            QDir::cleanPath(QDir(documentsDirectory()).absolutePath()) ||
        !isPlainFileName(info.fileName()) || info.isDir())
        return false;
    return QFile::remove(path);
}

QString QVFileManager::writeNewCsvFile(const QString& stem, const QByteArray& bytes, QString* name)
{
    return SafeFiles::writeNewFile(
        documentsDirectory(),
        [&stem](int copy) {
            return copy == 1 ? stem + QStringLiteral(".csv")
                             : stem + QStringLiteral(" (%1).csv").arg(copy);
        },
        [&bytes](QIODevice* device, QString*) { return device->write(bytes) == bytes.size(); },
        name);
}
