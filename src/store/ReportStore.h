#pragma once

#include "store/WriteResult.h"

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
//   all, and a concurrent writer waits (up to a busy timeout of a few
//   seconds) instead of overwriting what the other one wrote. Only "the
//   database is locked" is waited for; any other failure is told at once.
// - A row whose bytes no longer match their checksum reads as an empty
//   archive (an empty record); the other rows and later saves are not
//   affected by it.
// - "The list exists" means the table exists: the report list creates it
//   on its first load, importing an older settings-file list once.
//
// Damage is looked for once per process, before the first use (see
// prepare()): the database's header, SQLite's quick check of its pages,
// and the number of records and of changes it should hold. Those numbers
// are kept twice: in a bookkeeping row of the database, changed in the
// same transaction as the records, and in a small state file beside it
// (reports.sqlite.state), written after each change lands. A damaged page
// that hides rows shows as fewer rows than the bookkeeping row counts; a
// damaged journal frame, after which SQLite silently drops every later
// change, shows as fewer changes in the database than the state file has
// seen. A damaged database is set aside under a new name beside it (with
// its journal), never deleted, and the records that can still be read are
// copied, each verified by its checksum, into a new database in its place;
// the user is told once, with how many records could not be read.
//
// Reading needs no free space and no write permission: when the database
// cannot be opened for writing (a full disk, a read-only home), it is
// opened read-only; only changes then fail, saying why.
class ReportStore {
public:
    struct Row {
        qint64 id = 0;
        QByteArray archive; // empty when the stored bytes are damaged
    };

    static QString databasePath();
    // The state file beside the database (see above).
    static QString statePath();

    // Checks the store of the current home, and repairs it when it is
    // damaged, unless that was done already in this process. Every other
    // call does this first; the app calls it off its main thread, so that
    // the window never waits for a check. Safe to call from any thread.
    static void prepare();

    // What the check found that the user has to be told, once: a damaged
    // database set aside, a missing one, one that could not be repaired.
    // Empty when there is nothing (left) to tell.
    static QString takeNotice();

    // The list, newest first, or nothing when it has not been created yet.
    // An unreadable database gives nothing and sets `error`.
    static std::optional<QList<Row>> rows(QString* error = nullptr);

    // Creates the empty list when there is none. The first creation takes
    // over the records of an older settings-file "reports" list, in order,
    // and leaves that list as it was.
    static WriteResult createList();

    // Puts an archive at the head of the list. Fails (and stores nothing)
    // when the list does not exist yet. `fileName`, the record's text file,
    // stops being a file in the making (see reserveReportFile()) in the same
    // transaction.
    static WriteResult insertAtHead(const QByteArray& archive, const QString& fileName = {});

    // Hands the rows, newest first, to `choose` inside one write
    // transaction and deletes the rows whose ids it returns. `removed` gets
    // their number.
    using Chooser = std::function<QList<qint64>(const QList<Row>&)>;
    static WriteResult removeRows(const Chooser& choose, int* removed = nullptr);

    // Puts removed rows back under their own ids, so each returns to the
    // place in the list it was taken from.
    static WriteResult restoreRows(const QList<Row>& rows);

    // Files in the making. A report's text file is written before its
    // record is stored; a save killed in between would leave a file that no
    // record names. So the name is first entered in the database as a file
    // in the making, owned by this process, and the entry goes in the same
    // transaction that stores the record (or when the file is kept without
    // a record: forgetReportFile()). At the next start, the files of
    // entries whose process has ended are removed (see prepare()).
    //
    // reserveReportFile() changes `name` to the first of name, "name (2)",
    // ... that is neither a file in the documents folder nor in the making,
    // and enters it. Does nothing when the list does not exist or cannot be
    // changed: the file is then written unmarked, as before.
    static void reserveReportFile(QString& name);
    static void forgetReportFile(const QString& name);

    // What a calculator screen last held (the texts of its inputs), kept
    // beside the list in the same database under the calculator's name, so
    // that a screen opens as it was left, after Back and after a restart.
    // One row a calculator with a checksum, in a table of its own: a state
    // that does not match its checksum reads as none. Not part of the
    // records' count, and not copied when a damaged database is repaired
    // (the screens then start afresh). Empty when none is kept.
    static QByteArray screenState(const QString& name);
    // Keeps `state` for `name` (an empty state forgets it), making the list
    // first when there is none; fails, saying why, when it cannot be
    // changed.
    static WriteResult keepScreenState(const QString& name, const QByteArray& state);
    // Forgets every screen's state.
    static WriteResult forgetScreenStates();

    // Closes the connection; the next use checks and opens the database
    // again at the path of that moment.
    static void close();

    // The checksum kept beside each archive.
    static qint64 checksumOf(const QByteArray& archive);

    // How long a change waits for another process's change to finish
    // before it fails; applies to connections opened from then on.
    static int busyTimeout();
    static void setBusyTimeout(int milliseconds);
    static constexpr int defaultBusyTimeout = 5000;

    // The version of the list's schema (see markSchemaVersion in the
    // source): 2, records that may carry their calculator and inputs.
    static constexpr int schemaVersion = 2;
};
