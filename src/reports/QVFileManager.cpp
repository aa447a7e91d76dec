#include "QVFileManager.h"

#include "platform/AppPaths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

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
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    const QByteArray bytes = contents.toLatin1();
    return file.write(bytes) == bytes.size();
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
