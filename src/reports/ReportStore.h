#pragma once

#include "WriteResult.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <functional>
#include <optional>

// The saved-reports list, kept in an SQLite database so that it survives
// two processes saving at once, a full disk, a process killed in the middle
// of a save and damaged bytes.
//
// - One row per record, holding the record's archive as it is (the six-key
//   CBOR map) and a checksum of it. Rows are kept in list order through
//   their ever-growing ids: the newest record has the highest id and is
//   index 0 of the list.
// - Every change is one IMMEDIATE transaction: it lands whole or not at
//   all, and a concurrent writer waits (up to a busy timeout of several
//   seconds) instead of overwriting what the other one wrote.
// - A row whose bytes no longer match their checksum reads as an empty
//   archive (an empty record); the other rows and later saves are not
//   affected by it.
// - "The list exists" means the table exists: the report list creates it
//   on its first load, importing an older settings-file list once.
class ReportStore {
public:
    struct Row {
        qint64 id = 0;
        QByteArray archive; // empty when the stored bytes are damaged
    };

    static QString databasePath();

    // The list, newest first, or nothing when it has not been created yet.
    // An unreadable database gives nothing and sets `error`.
    static std::optional<QList<Row>> rows(QString* error = nullptr);

    // Creates the empty list when there is none. The first creation takes
    // over the records of an older settings-file "reports" list, in order,
    // and leaves that list as it was.
    static WriteResult createList();

    // Puts an archive at the head of the list. Fails (and stores nothing)
    // when the list does not exist yet.
    static WriteResult insertAtHead(const QByteArray& archive);

    // Hands the rows, newest first, to `choose` inside one write
    // transaction and deletes the rows whose ids it returns. `removed` gets
    // their number.
    using Chooser = std::function<QList<qint64>(const QList<Row>&)>;
    static WriteResult removeRows(const Chooser& choose, int* removed = nullptr);

    // Puts removed rows back under their own ids, so each returns to the
    // place in the list it was taken from.
    static WriteResult restoreRows(const QList<Row>& rows);

    // Closes the connection; the next use opens the database again at the
    // path of that moment.
    static void close();

    // The checksum kept beside each archive.
    static qint64 checksumOf(const QByteArray& archive);

    // How long a change waits for another process's change to finish
    // before it fails; applies to connections opened from then on.
    static int busyTimeout();
    static void setBusyTimeout(int milliseconds);
    static constexpr int defaultBusyTimeout = 10000;
};
