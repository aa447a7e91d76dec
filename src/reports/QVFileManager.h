#pragma once

#include <QString>
#include <QStringList>

// The documents directory, where report text files live.
class QVFileManager {
public:
    static QString documentsDirectory();

    // Writes `contents` as ASCII to documentsDirectory/name. Nothing is
    // written when the text is not pure ASCII, or when the name is not a
    // plain file name (it holds "/", or is "." or ".."): a file can only ever
    // land directly in the documents directory. Failures are silent.
    static bool saveFileToDocumentsDirectoryWithContents(const QString& name,
                                                         const QString& contents);

    // The entry names, as the file system lists them; an unreadable
    // directory gives an empty list.
    static QStringList filesInDocumentsDirectory();
    // Full paths of the entries whose name contains "report".
    static QStringList listReportFilesFromDocumentsDirectory();
    // Deletes every entry, logging the ones that cannot be removed.
    static void clearDocumentsDirectory();

    // Removes a file that lies directly in the documents directory.
    static bool removeFileAtPath(const QString& path);

    static bool isPlainFileName(const QString& name);
};
