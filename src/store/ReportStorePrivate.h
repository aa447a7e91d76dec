#pragma once

// What ReportStore.cpp (connections and changes) and ReportStoreCheck.cpp
// (the check at opening, repair and files in the making) share.

#include "store/ReportStore.h"

#include <QList>
#include <QMutex>
#include <QSqlDatabase>
#include <QSqlError>
#include <functional>
#include <optional>

namespace ReportStorePrivate {

// SQLite's primary result codes; the driver may hand an extended code,
// whose low byte is the primary one.
enum SqliteCode {
    SqliteError = 1,
    SqlitePerm = 3,
    SqliteBusy = 5,
    SqliteLocked = 6,
    SqliteNoMem = 7,
    SqliteReadOnly = 8,
    SqliteIoErr = 10,
    SqliteCorrupt = 11,
    SqliteFull = 13,
    SqliteCantOpen = 14,
    SqliteNotADatabase = 26,
};

int codeOf(const QSqlError& error);
// Another connection holds the lock: the one failure worth waiting for.
bool isLocked(const QSqlError& error);
// The file could not be opened or written (full disk, read-only folder or
// file system, no permission): not damage, and reading read-only may work.
bool isAccessFailure(const QSqlError& error);

// "The saved reports could not be updated: <why>."
QString reasonOf(const QSqlError& error);
// Why a change cannot be made, in words: a full disk, a read-only folder.
QString refusalOf(const QSqlError& error);

enum class Access {
    ReadWrite, // WAL, full sync, deleted bytes zeroed
    ReadOnly,  // SQLite's read-only mode: needs the journal's index file
    Immutable, // the file as it is, without locks or journal: only sound
               // when there is no journal to read
};

// Opens (and tries) a connection named `name`; on failure removes it again
// and sets `error`. A write-ahead journal is turned on for a new database;
// SQLite answers "locked" at once when another process does the same, so
// that alone is tried again, within the busy timeout.
std::optional<QSqlDatabase> openDatabase(const QString& name, const QString& path, Access access,
                                         QSqlError* error);
void removeConnection(const QString& name);

// The numbers that tell a whole list from a damaged one.
struct Tally {
    qint64 changes = 0;    // changes ever committed to the list
    qint64 records = 0;    // records in it after the last one
    qint64 generation = 0; // repairs so far (state file only)
};

// The state file of the current home: the tally as last seen committed,
// and the locks that keep a repair from replacing the database under
// another process. Every process holds a shared lock on it while it has
// the store open; a repair holds it exclusively. One open descriptor per
// process; callers hold the store's mutex.
namespace StateFile {
bool attach(const QString& path); // false when it can be neither opened nor created
void detach();
bool lockShared(int waitMs);
// Exclusively, giving up after `waitMs` or as soon as `stop` says so.
bool lockExclusive(int waitMs, const std::function<bool()>& stop);
std::optional<Tally> read();
// Writes the tally unless the file already holds a later one.
void advance(const Tally& tally);
} // namespace StateFile

// What the process knows about the store; guarded by `mutex`, which every
// check, repair and change of these fields holds.
struct Shared {
    QMutex mutex;
    QString preparedFor;                             // the database the check ran for
    QString notice;                                  // to be told once
    std::optional<QList<ReportStore::Row>> salvaged; // rows read without SQLite
    QString refusal;                                 // why changes are refused, if they are
    qint64 changesBefore = 0;                        // a new list continues from here
};
Shared& shared();

// Runs the check (and repair) for the current path unless done; holds the
// mutex while it does.
void ensurePrepared();

// The tables of a new list, in an open transaction: the records, the
// bookkeeping row and the files in the making. createBookkeeping() adds the
// last two alone, to a list made by an older version.
bool createSchema(QSqlDatabase db, const Tally& tally, QString* error);
bool createBookkeeping(QSqlDatabase db, const Tally& tally, QString* error);
// Raises the schema's version to ReportStore::schemaVersion when it is lower.
bool markSchemaVersion(QSqlDatabase db, QString* error);
bool tableExists(QSqlDatabase db, const QString& table, QString* error, bool* exists);

// Inserts an archive under a new id (the head of the list), or under `id`
// when it is given.
bool insertArchive(QSqlDatabase db, const QByteArray& archive, QString* error,
                   std::optional<qint64> id = std::nullopt);

// SQLite's own words for a failure.
QString textOf(const QSqlError& error);

// The bookkeeping row: nothing when there is none (a list made by an older
// version), an invalid tally (changes -1) when it is damaged.
std::optional<Tally> readTally(QSqlDatabase db, QString* error);
bool writeTally(QSqlDatabase db, const Tally& tally, QString* error);

// Every row, newest first; a damaged row gives an empty archive.
std::optional<QList<ReportStore::Row>> readRows(QSqlDatabase db, QString* error);

// The record's checksum over the bookkeeping numbers.
qint64 tallyChecksum(const Tally& tally);

// The process's identity as an owner of files in the making, and whether
// the process an identity names is still running.
QString ownerId();
bool ownerRunning(const QString& owner);

} // namespace ReportStorePrivate
