#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <optional>

// Reads the saved-report rows straight from the bytes of the reports
// database and its write-ahead log, without SQLite, for when SQLite cannot
// read them: a damaged file header, a damaged page of the table's tree, a
// damaged frame of the log.
//
// SQLite finds rows by walking the table's tree from its root page and
// reads the log only up to its first damaged frame, so one bad byte there
// hides every row (or every later change) behind it. Here every page is
// looked at on its own instead: each table leaf page's cells are decoded,
// and a cell counts as a saved report only when it has the report row's
// shape (no stored id, a blob, an integer) and the integer is the checksum
// of the blob. Nothing unverified is ever taken for a report.
//
// The log is laid over the file the way SQLite does (the newest committed
// copy of a page wins), with one difference: a frame whose own checksum
// fails is skipped, and the committed frames after it still count. Pages
// on the free list are left out (so deleted rows do not come back from
// them; the store also zeroes what it deletes).
class ReportSalvage {
public:
    // The list's bookkeeping row, when one was found.
    struct ListState {
        qint64 changes = 0; // changes ever committed to the list
        qint64 records = 0; // records in the list after the last one
    };

    struct Result {
        QMap<qint64, QByteArray> rows; // id -> archive, each one verified
        std::optional<ListState> state;
        int unverified = 0;    // cells shaped like a report whose checksum failed
        bool readable = false; // both files could be read at all
    };

    // Files larger than this are not salvaged (read whole into memory).
    static constexpr qint64 maxFileSize = qint64(512) * 1024 * 1024;

    static Result read(const QString& databasePath, const QString& walPath);

    // The checksum kept beside the list's bookkeeping numbers.
    static qint64 stateChecksum(qint64 changes, qint64 records);
};
