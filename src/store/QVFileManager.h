#pragma once

#include "store/WriteResult.h"

#include <QByteArray>
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

    // Writes a report's text as a new file named `name` in the documents
    // directory, never replacing a file that is there: when the name is
    // taken (by another record's file, or by another process a moment
    // ago) the text goes to "<stem> (2)_report.txt", " (3)", ... and
    // `name` is changed to the name used. The file lands whole or not at
    // all: a failed write (disk full, no permission, not ASCII) leaves no
    // file behind and says why.
    static WriteResult writeNewFileToDocumentsDirectory(QString& name, const QString& contents);

    // Writes `bytes` as a new file "<stem>.csv" in the documents directory
    // (" (2)", " (3)", ... when the name is taken), never over another file;
    // `name` gets the name used. Empty when written, else why not.
    static QString writeNewCsvFile(const QString& stem, const QByteArray& bytes, QString* name);

    // The name with " (copy)" put before its "_report.txt" (or at its end).
    static QString numberedName(const QString& name, int copy);

    // The most a report's text or chart picture may hold: a larger file is
    // refused rather than read into memory.
    static constexpr qint64 maxReadBytes = 16 * 1024 * 1024;

    // Reads a file of the documents directory: a regular file of at most
    // maxReadBytes only, never waiting on a pipe. A path that leads anywhere
    // else (a "/" or ".." in a stored name, a link pointing out) is refused.
    // Empty when read, else the reason, a sentence about `what` ("The
    // report's text is not a regular file.").
    static QString readFileInDocumentsDirectory(const QString& path, QByteArray* bytes,
                                                const QString& what = reportText());
    static QString reportText() { return QStringLiteral("The report's text"); }

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
