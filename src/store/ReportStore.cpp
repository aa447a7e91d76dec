#include "store/ReportStore.h"

#include "platform/AppPaths.h"
#include "platform/Services.h"
#include "platform/SettingsStore.h"
#include "store/QVFileManager.h"
#include "store/ReportSalvage.h"
#include "store/ReportStorePrivate.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSqlQuery>
#include <QStorageInfo>
#include <QThread>
#include <QUrl>
#include <QVariant>
#include <QtEndian>

Q_DECLARE_LOGGING_CATEGORY(lcReports)

using namespace ReportStorePrivate;

namespace {

// The connection the process's own reads and changes go through (on the
// thread that first used it: the main thread in the app).
const QString connectionName = QStringLiteral("tallyvane.reports");
QString connectionPath;
Access connectionAccess = Access::ReadWrite;
int busyTimeoutValue = ReportStore::defaultBusyTimeout;
const QString legacyKey = QStringLiteral("reports");

} // namespace

namespace ReportStorePrivate {

QString textOf(const QSqlError& error)
{
    return error.databaseText().isEmpty() ? error.text() : error.databaseText();
}

int codeOf(const QSqlError& error)
{
    bool ok = false;
    const int code = error.nativeErrorCode().toInt(&ok);
    return ok ? code & 0xff : 0;
}

bool isLocked(const QSqlError& error)
{
    const int code = codeOf(error);
    return code == SqliteBusy || code == SqliteLocked;
}

bool isAccessFailure(const QSqlError& error)
{
    switch (codeOf(error)) {
    case SqlitePerm:
    case SqliteNoMem:
    case SqliteReadOnly:
    case SqliteIoErr:
    case SqliteFull:
    case SqliteCantOpen:
        return true;
    default:
        return false;
    }
}

QString reasonOf(const QSqlError& error)
{
    if (isLocked(error))
        return QStringLiteral("The saved reports could not be updated: another program kept them "
                              "locked for more than %1 seconds.")
            .arg(busyTimeoutValue / 1000.0);
    return QStringLiteral("The saved reports could not be updated: %1.").arg(textOf(error));
}

QString refusalOf(const QSqlError& error)
{
    const QString folder = QFileInfo(ReportStore::databasePath()).absolutePath();
    const QStorageInfo storage(folder);
    if (codeOf(error) == SqliteFull ||
        (storage.isValid() && !storage.isReadOnly() && storage.bytesAvailable() < 64 * 1024))
        return QStringLiteral("The saved reports cannot be changed: the disk is full.");
    const bool folderReadOnly =
        (storage.isValid() && storage.isReadOnly()) || !QFileInfo(folder).isWritable();
    if (codeOf(error) == SqliteReadOnly || folderReadOnly)
        return QStringLiteral("The saved reports cannot be changed: %1 is read-only.")
            .arg(QDir::toNativeSeparators(folderReadOnly ? folder : ReportStore::databasePath()));
    if (isAccessFailure(error))
        return QStringLiteral("The saved reports cannot be changed: %1.").arg(textOf(error));
    return reasonOf(error);
}

std::optional<QSqlDatabase> openDatabase(const QString& name, const QString& path, Access access,
                                         QSqlError* error)
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE"))) {
        *error = QSqlError(
            QStringLiteral("The SQLite driver of Qt (package libqt6sql6-sqlite) is missing."));
        return std::nullopt;
    }
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(busyTimeoutValue);
        if (access == Access::ReadWrite) {
            db.setDatabaseName(path);
        } else if (access == Access::ReadOnly) {
            db.setDatabaseName(path);
            options += QStringLiteral(";QSQLITE_OPEN_READONLY");
        } else {
            db.setDatabaseName(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded) +
                               QStringLiteral("?immutable=1"));
            options += QStringLiteral(";QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI");
        }
        db.setConnectOptions(options);
        if (db.open()) {
            QSqlQuery pragma(db);
            bool ready = false;
            if (access == Access::ReadWrite) {
                // WAL lets readers go on while one process writes; FULL makes a
                // reported save survive a crash of the whole machine too;
                // secure_delete zeroes what a removal frees, so that no
                // removed record can come back from a salvaged file.
                QElapsedTimer waited;
                waited.start();
                ready = pragma.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
                while (!ready && isLocked(pragma.lastError()) &&
                       waited.elapsed() < busyTimeoutValue) {
                    QThread::msleep(5);
                    ready = pragma.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
                }
                ready = ready && pragma.exec(QStringLiteral("PRAGMA synchronous=FULL")) &&
                        pragma.exec(QStringLiteral("PRAGMA secure_delete=ON"));
            } else {
                // Opening is lazy: this first read shows whether it works.
                ready = pragma.exec(QStringLiteral("SELECT count(*) FROM sqlite_master"));
            }
            if (ready)
                return db;
            *error = pragma.lastError();
        } else {
            *error = db.lastError();
        }
    }
    removeConnection(name);
    return std::nullopt;
}

void removeConnection(const QString& name)
{
    if (!QSqlDatabase::contains(name))
        return;
    {
        QSqlDatabase db = QSqlDatabase::database(name, false);
        db.close();
    }
    QSqlDatabase::removeDatabase(name);
}

qint64 tallyChecksum(const Tally& tally)
{
    return ReportSalvage::stateChecksum(tally.changes, tally.records);
}

bool createSchema(QSqlDatabase db, const Tally& tally, QString* error)
{
    QSqlQuery create(db);
    if (!create.exec(QStringLiteral("CREATE TABLE reports (id INTEGER PRIMARY KEY AUTOINCREMENT, "
                                    "archive BLOB NOT NULL, checksum INTEGER NOT NULL)"))) {
        *error = reasonOf(create.lastError());
        return false;
    }
    return markSchemaVersion(db, error) && createBookkeeping(db, tally, error);
}

// The schema's version, in SQLite's user_version: 0 (never set) or 1 for a
// list whose records hold their six properties only, 2 for one whose
// records may also hold the calculator that made them and its inputs (two
// more keys of the same archive, under the same checksum, so a record and
// its inputs land, fail and are salvaged together). Moving a list to 2
// changes no row: a record without those keys reads as before, without
// inputs. A new list starts at 2; an older one moves to it in the
// transaction that adds its first record from then on.
bool markSchemaVersion(QSqlDatabase db, QString* error)
{
    QSqlQuery version(db);
    if (!version.exec(QStringLiteral("PRAGMA user_version")) || !version.next()) {
        *error = reasonOf(version.lastError());
        return false;
    }
    if (version.value(0).toInt() >= ReportStore::schemaVersion)
        return true;
    if (!version.exec(QStringLiteral("PRAGMA user_version = %1").arg(ReportStore::schemaVersion))) {
        *error = reasonOf(version.lastError());
        return false;
    }
    return true;
}

bool createBookkeeping(QSqlDatabase db, const Tally& tally, QString* error)
{
    QSqlQuery create(db);
    const bool created =
        create.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS list_state (id INTEGER PRIMARY KEY "
                                   "CHECK (id = 1), changes INTEGER NOT NULL, records INTEGER NOT "
                                   "NULL, checksum INTEGER NOT NULL)")) &&
        create.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS pending_files (name TEXT PRIMARY "
                                   "KEY, owner TEXT NOT NULL, since INTEGER NOT NULL)"));
    if (!created) {
        *error = reasonOf(create.lastError());
        return false;
    }
    return writeTally(db, tally, error);
}

std::optional<Tally> readTally(QSqlDatabase db, QString* error)
{
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral(
            "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = 'list_state'"))) {
        *error = reasonOf(query.lastError());
        return Tally{-1, -1, 0};
    }
    if (!query.next())
        return std::nullopt;
    if (!query.exec(
            QStringLiteral("SELECT changes, records, checksum FROM list_state WHERE id = 1"))) {
        *error = reasonOf(query.lastError());
        return Tally{-1, -1, 0};
    }
    if (!query.next())
        return Tally{-1, -1, 0};
    const Tally tally{query.value(0).toLongLong(), query.value(1).toLongLong(), 0};
    if (tallyChecksum(tally) != query.value(2).toLongLong())
        return Tally{-1, -1, 0};
    return tally;
}

bool writeTally(QSqlDatabase db, const Tally& tally, QString* error)
{
    QSqlQuery write(db);
    write.prepare(QStringLiteral(
        "INSERT OR REPLACE INTO list_state (id, changes, records, checksum) VALUES (1, ?, ?, ?)"));
    write.addBindValue(tally.changes);
    write.addBindValue(tally.records);
    write.addBindValue(tallyChecksum(tally));
    if (write.exec())
        return true;
    *error = reasonOf(write.lastError());
    return false;
}

bool tableExists(QSqlDatabase db, const QString& table, QString* error, bool* exists)
{
    QSqlQuery query(db);
    query.prepare(QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?"));
    query.addBindValue(table);
    if (!query.exec()) {
        *error = reasonOf(query.lastError());
        return false;
    }
    *exists = query.next();
    return true;
}

// Inserts an archive under a new id (the head of the list), or under `id`
// when it is given.
bool insertArchive(QSqlDatabase db, const QByteArray& archive, QString* error,
                   std::optional<qint64> id)
{
    QSqlQuery insert(db);
    insert.prepare(QStringLiteral("INSERT INTO reports (id, archive, checksum) VALUES (?, ?, ?)"));
    insert.addBindValue(id ? QVariant(*id) : QVariant(QMetaType::fromType<qint64>()));
    // A null array would bind as SQL NULL; an empty archive is still a row.
    insert.addBindValue(archive.isNull() ? QByteArray("") : archive);
    insert.addBindValue(ReportStore::checksumOf(archive));
    if (insert.exec())
        return true;
    *error = isAccessFailure(insert.lastError()) ? refusalOf(insert.lastError())
                                                 : reasonOf(insert.lastError());
    return false;
}

namespace {

ReportStore::Row rowOf(const QSqlQuery& query)
{
    ReportStore::Row row;
    row.id = query.value(0).toLongLong();
    const QVariant archive = query.value(1);
    const QVariant checksum = query.value(2);
    if (archive.typeId() == QMetaType::QByteArray &&
        checksum.toLongLong() == ReportStore::checksumOf(archive.toByteArray()))
        row.archive = archive.toByteArray();
    else
        qCDebug(lcReports) << "damaged report row" << row.id;
    return row;
}

} // namespace

// When the table cannot be read in one go (a damaged page), each row is
// read on its own so one bad row does not hide the others.
std::optional<QList<ReportStore::Row>> readRows(QSqlDatabase db, QString* error)
{
    QList<ReportStore::Row> rows;
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (query.exec(QStringLiteral("SELECT id, archive, checksum FROM reports ORDER BY id DESC"))) {
        while (query.next())
            rows.append(rowOf(query));
        if (!query.lastError().isValid())
            return rows;
    }
    qCInfo(lcReports) << "reading the reports row by row:" << query.lastError().text();
    QSqlQuery ids(db);
    ids.setForwardOnly(true);
    if (!ids.exec(QStringLiteral("SELECT id FROM reports ORDER BY id DESC"))) {
        *error = reasonOf(ids.lastError());
        return std::nullopt;
    }
    rows.clear();
    QSqlQuery one(db);
    one.prepare(QStringLiteral("SELECT id, archive, checksum FROM reports WHERE id = ?"));
    while (ids.next()) {
        one.bindValue(0, ids.value(0));
        if (one.exec() && one.next())
            rows.append(rowOf(one));
        else
            rows.append({ids.value(0).toLongLong(), QByteArray()});
        one.finish();
    }
    return rows;
}

} // namespace ReportStorePrivate

namespace {

void closeConnection()
{
    removeConnection(connectionName);
}

// A list made by an older version has no bookkeeping row and no table of
// files in the making: they are added, counting the rows it holds, the
// first time it is opened for writing.
void upgrade(QSqlDatabase db)
{
    QString error;
    bool hasList = false;
    bool hasTally = false;
    if (!tableExists(db, QStringLiteral("reports"), &error, &hasList) ||
        !tableExists(db, QStringLiteral("list_state"), &error, &hasTally) || !hasList || hasTally)
        return;
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("BEGIN IMMEDIATE")))
        return;
    bool done = false;
    Tally tally;
    {
        QMutexLocker lock(&shared().mutex);
        tally.changes = shared().changesBefore + 1;
    }
    if (query.exec(QStringLiteral("SELECT count(*) FROM reports")) && query.next()) {
        tally.records = query.value(0).toLongLong();
        done = tableExists(db, QStringLiteral("list_state"), &error, &hasTally) &&
               (hasTally || createBookkeeping(db, tally, &error));
    }
    if (done && query.exec(QStringLiteral("COMMIT"))) {
        QMutexLocker lock(&shared().mutex);
        StateFile::advance(tally);
    } else {
        query.exec(QStringLiteral("ROLLBACK"));
    }
}

// The open connection to the database at today's path: for reading, any
// connection that reads; for writing, one that writes.
std::optional<QSqlDatabase> connection(bool forWriting, QString* error)
{
    ensurePrepared();
    const QString path = ReportStore::databasePath();
    {
        QMutexLocker lock(&shared().mutex);
        if (!shared().refusal.isEmpty()) {
            *error = shared().refusal;
            return std::nullopt;
        }
    }
    if (QSqlDatabase::contains(connectionName)) {
        {
            // The home moved (tests use a fresh one each), or a change needs
            // writing where only reading worked: start again.
            QSqlDatabase db = QSqlDatabase::database(connectionName, false);
            if (db.isOpen() && connectionPath == path &&
                (connectionAccess == Access::ReadWrite || !forWriting))
                return db;
        }
        closeConnection();
    }
    connectionPath = path;
    const QString folder = QFileInfo(path).absolutePath();
    QDir().mkpath(folder);
    QSqlError failure;
    if (std::optional<QSqlDatabase> db =
            openDatabase(connectionName, path, Access::ReadWrite, &failure)) {
        connectionAccess = Access::ReadWrite;
        upgrade(*db);
        return db;
    }
    if (forWriting || !isAccessFailure(failure)) {
        *error = forWriting ? refusalOf(failure) : reasonOf(failure);
        return std::nullopt;
    }
    // Reading needs neither space nor permission to write: read-only, or,
    // when even SQLite's read-only mode needs a file it cannot make (the
    // journal's index on a full disk), the file as it stands, which is
    // exact while there is no journal left beside it.
    QSqlError readOnlyFailure;
    if (std::optional<QSqlDatabase> db =
            openDatabase(connectionName, path, Access::ReadOnly, &readOnlyFailure)) {
        connectionAccess = Access::ReadOnly;
        return db;
    }
    if (QFileInfo(path + QStringLiteral("-wal")).size() == 0 && QFileInfo::exists(path)) {
        if (std::optional<QSqlDatabase> db =
                openDatabase(connectionName, path, Access::Immutable, &readOnlyFailure)) {
            connectionAccess = Access::Immutable;
            return db;
        }
    }
    *error = QStringLiteral("The saved reports could not be read: %1.").arg(textOf(failure));
    return std::nullopt;
}

// One IMMEDIATE transaction: it takes the write lock at once (waiting for
// another writer up to the busy timeout), so what it reads is what it
// changes. Rolled back unless committed.
class WriteTransaction {
public:
    explicit WriteTransaction(QSqlDatabase db) : m_query(db)
    {
        m_open = m_query.exec(QStringLiteral("BEGIN IMMEDIATE"));
        if (!m_open)
            m_error = isAccessFailure(m_query.lastError()) ? refusalOf(m_query.lastError())
                                                           : reasonOf(m_query.lastError());
    }
    ~WriteTransaction()
    {
        if (m_open)
            m_query.exec(QStringLiteral("ROLLBACK"));
    }
    WriteTransaction(const WriteTransaction&) = delete;
    WriteTransaction& operator=(const WriteTransaction&) = delete;

    bool isOpen() const { return m_open; }
    QString error() const { return m_error; }
    WriteResult commit()
    {
        if (!m_query.exec(QStringLiteral("COMMIT")))
            return WriteResult::failure(isAccessFailure(m_query.lastError())
                                            ? refusalOf(m_query.lastError())
                                            : reasonOf(m_query.lastError()));
        m_open = false;
        return WriteResult::success();
    }

private:
    QSqlQuery m_query;
    bool m_open = false;
    QString m_error;
};

// A change of the list: it returns how many records it added (negative:
// removed) or a failure.
struct Change {
    WriteResult result;
    qint64 added = 0;
};

// Runs `change` inside one write transaction on the open database, told
// whether the list exists; counts the change in the bookkeeping row in the
// same transaction; commits when it succeeds, and then records the new
// numbers in the state file.
WriteResult inTransaction(const std::function<Change(QSqlDatabase, bool)>& change)
{
    QString reason;
    std::optional<QSqlDatabase> db = connection(true, &reason);
    if (!db)
        return WriteResult::failure(reason);
    WriteTransaction transaction(*db);
    if (!transaction.isOpen())
        return WriteResult::failure(transaction.error());
    bool exists = false;
    if (!tableExists(*db, QStringLiteral("reports"), &reason, &exists))
        return WriteResult::failure(reason);
    const Change changed = change(*db, exists);
    if (!changed.result.ok())
        return changed.result;
    std::optional<Tally> tally = readTally(*db, &reason);
    if (!tally)
        tally = Tally{0, 0, 0}; // a list without bookkeeping yet: counted from here
    if (tally->changes < 0)
        return WriteResult::failure(QStringLiteral(
            "The saved reports could not be updated: their bookkeeping row is damaged."));
    const Tally after{tally->changes + 1, tally->records + changed.added, 0};
    if (!writeTally(*db, after, &reason))
        return WriteResult::failure(reason);
    const WriteResult committed = transaction.commit();
    if (committed.ok()) {
        QMutexLocker lock(&shared().mutex);
        StateFile::advance(after);
    }
    return committed;
}

} // namespace

int ReportStore::busyTimeout()
{
    return busyTimeoutValue;
}

void ReportStore::setBusyTimeout(int milliseconds)
{
    busyTimeoutValue = milliseconds;
}

QString ReportStore::databasePath()
{
    return AppPaths::reportsDatabase();
}

QString ReportStore::statePath()
{
    return databasePath() + QStringLiteral(".state");
}

qint64 ReportStore::checksumOf(const QByteArray& archive)
{
    const QByteArray digest = QCryptographicHash::hash(archive, QCryptographicHash::Sha256);
    return qFromBigEndian<qint64>(digest.constData());
}

void ReportStore::close()
{
    closeConnection();
    QMutexLocker lock(&shared().mutex);
    StateFile::detach();
    shared().preparedFor.clear();
    shared().notice.clear();
    shared().salvaged.reset();
    shared().refusal.clear();
    shared().changesBefore = 0;
}

QString ReportStore::takeNotice()
{
    QMutexLocker lock(&shared().mutex);
    return std::exchange(shared().notice, QString());
}

std::optional<QList<ReportStore::Row>> ReportStore::rows(QString* error)
{
    ensurePrepared();
    {
        QMutexLocker lock(&shared().mutex);
        if (shared().salvaged) {
            if (error)
                error->clear();
            return shared().salvaged;
        }
    }
    QString reason;
    std::optional<QList<Row>> result;
    const bool exists = QFileInfo::exists(databasePath());
    if (std::optional<QSqlDatabase> db = connection(false, &reason)) {
        bool hasList = false;
        if (tableExists(*db, QStringLiteral("reports"), &reason, &hasList) && hasList)
            result = readRows(*db, &reason);
    } else if (!exists) {
        reason.clear(); // nothing saved yet, and nowhere to make the list: no list
    }
    if (error)
        *error = reason;
    return result;
}

WriteResult ReportStore::createList()
{
    return inTransaction([](QSqlDatabase db, bool exists) -> Change {
        if (exists)
            return {WriteResult::success(), 0};
        QString reason;
        Tally tally;
        {
            QMutexLocker lock(&shared().mutex);
            tally.changes = shared().changesBefore;
        }
        if (!createSchema(db, tally, &reason))
            return {WriteResult::failure(reason), 0};
        // The list an older version kept in the settings file, newest
        // first: inserted oldest first so that the ids keep its order.
        const QVariant legacy = Services::settings().value(legacyKey);
        if (legacy.typeId() != QMetaType::QVariantList)
            return {WriteResult::success(), 0};
        const QVariantList items = legacy.toList();
        for (auto item = items.crbegin(); item != items.crend(); ++item) {
            if (!insertArchive(db, item->toByteArray(), &reason))
                return {WriteResult::failure(reason), 0};
        }
        return {WriteResult::success(), qint64(items.size())};
    });
}

QByteArray ReportStore::screenState(const QString& name)
{
    ensurePrepared();
    QString reason;
    std::optional<QSqlDatabase> db = connection(false, &reason);
    bool exists = false;
    if (!db || !tableExists(*db, QStringLiteral("screens"), &reason, &exists) || !exists)
        return {};
    QSqlQuery query(*db);
    query.prepare(QStringLiteral("SELECT state, checksum FROM screens WHERE name = ?"));
    query.addBindValue(name);
    if (!query.exec() || !query.next())
        return {};
    const QByteArray state = query.value(0).toByteArray();
    return checksumOf(state) == query.value(1).toLongLong() ? state : QByteArray();
}

WriteResult ReportStore::keepScreenState(const QString& name, const QByteArray& state)
{
    // The screens' table lives beside the list: without a list yet, the
    // list is made first, as the reports screen makes it.
    bool listMissing = false;
    const auto keep = [&](QSqlDatabase db, bool exists) -> Change {
        listMissing = !exists;
        if (!exists)
            return {WriteResult::failure(
                        QStringLiteral("The saved reports list has not been created yet.")),
                    0};
        QSqlQuery query(db);
        if (!query.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS screens (name TEXT PRIMARY "
                                       "KEY, state BLOB NOT NULL, checksum INTEGER NOT NULL)")))
            return {WriteResult::failure(reasonOf(query.lastError())), 0};
        if (state.isEmpty()) {
            query.prepare(QStringLiteral("DELETE FROM screens WHERE name = ?"));
            query.addBindValue(name);
        } else {
            query.prepare(QStringLiteral(
                "INSERT OR REPLACE INTO screens (name, state, checksum) VALUES (?, ?, ?)"));
            query.addBindValue(name);
            query.addBindValue(state);
            query.addBindValue(checksumOf(state));
        }
        if (!query.exec())
            return {WriteResult::failure(reasonOf(query.lastError())), 0};
        return {WriteResult::success(), 0};
    };
    const WriteResult kept = inTransaction(keep);
    if (kept.ok() || !listMissing)
        return kept;
    const WriteResult created = createList();
    return created.ok() ? inTransaction(keep) : created;
}

WriteResult ReportStore::forgetScreenStates()
{
    return inTransaction([](QSqlDatabase db, bool exists) -> Change {
        bool screens = false;
        QString reason;
        if (!exists || !tableExists(db, QStringLiteral("screens"), &reason, &screens) || !screens)
            return {WriteResult::success(), 0};
        QSqlQuery query(db);
        if (!query.exec(QStringLiteral("DELETE FROM screens")))
            return {WriteResult::failure(reasonOf(query.lastError())), 0};
        return {WriteResult::success(), 0};
    });
}

WriteResult ReportStore::insertAtHead(const QByteArray& archive, const QString& fileName)
{
    return inTransaction([&](QSqlDatabase db, bool exists) -> Change {
        if (!exists)
            return {WriteResult::failure(
                        QStringLiteral("The saved reports list has not been created yet.")),
                    0};
        QString reason;
        // A list of an older version is moved to this one with the first
        // record that may carry inputs.
        if (!markSchemaVersion(db, &reason) || !insertArchive(db, archive, &reason))
            return {WriteResult::failure(reason), 0};
        if (!fileName.isEmpty()) {
            QSqlQuery settle(db);
            settle.prepare(QStringLiteral("DELETE FROM pending_files WHERE name = ?"));
            settle.addBindValue(fileName);
            settle.exec(); // a list without the table has nothing to settle
        }
        return {WriteResult::success(), 1};
    });
}

WriteResult ReportStore::removeRows(const Chooser& choose, int* removed)
{
    if (removed)
        *removed = 0;
    QList<qint64> ids;
    const WriteResult result = inTransaction([&](QSqlDatabase db, bool exists) -> Change {
        if (!exists)
            return {WriteResult::success(), 0};
        QString reason;
        const std::optional<QList<Row>> rows = readRows(db, &reason);
        if (!rows)
            return {WriteResult::failure(reason), 0};
        ids = choose(*rows);
        QSqlQuery remove(db);
        remove.prepare(QStringLiteral("DELETE FROM reports WHERE id = ?"));
        qint64 count = 0;
        for (qint64 id : std::as_const(ids)) {
            remove.bindValue(0, id);
            if (!remove.exec())
                return {WriteResult::failure(reasonOf(remove.lastError())), 0};
            count += remove.numRowsAffected();
        }
        return {WriteResult::success(), -count};
    });
    if (result.ok() && removed)
        *removed = int(ids.size());
    return result;
}

WriteResult ReportStore::restoreRows(const QList<Row>& rows)
{
    return inTransaction([&rows](QSqlDatabase db, bool exists) -> Change {
        if (!exists)
            return {WriteResult::failure(
                        QStringLiteral("The saved reports list has not been created yet.")),
                    0};
        QString reason;
        for (const Row& row : rows) {
            if (!insertArchive(db, row.archive, &reason, row.id))
                return {WriteResult::failure(reason), 0};
        }
        return {WriteResult::success(), qint64(rows.size())};
    });
}

void ReportStore::reserveReportFile(QString& name)
{
    // Only where a list is kept: a report made for e-mail in a home without
    // one does not create the database.
    if (!QVFileManager::isPlainFileName(name) || !QFileInfo::exists(databasePath()))
        return;
    QString reason;
    std::optional<QSqlDatabase> db = connection(true, &reason);
    if (!db)
        return;
    WriteTransaction transaction(*db);
    bool marks = false;
    if (!transaction.isOpen() ||
        !tableExists(*db, QStringLiteral("pending_files"), &reason, &marks) || !marks)
        return;
    const QString folder = QVFileManager::documentsDirectory();
    QSqlQuery taken(*db);
    taken.prepare(QStringLiteral("SELECT 1 FROM pending_files WHERE name = ?"));
    // As many tries as the file write itself makes before it gives up.
    for (int copy = 1; copy <= 999; ++copy) {
        const QString candidate = QVFileManager::numberedName(name, copy);
        const QFileInfo file(folder + QLatin1Char('/') + candidate);
        taken.bindValue(0, candidate);
        if (file.exists() || file.isSymLink() || !taken.exec() || taken.next())
            continue;
        taken.finish();
        QSqlQuery mark(*db);
        mark.prepare(
            QStringLiteral("INSERT INTO pending_files (name, owner, since) VALUES (?, ?, ?)"));
        mark.addBindValue(candidate);
        mark.addBindValue(ownerId());
        mark.addBindValue(QDateTime::currentMSecsSinceEpoch());
        if (mark.exec() && transaction.commit().ok())
            name = candidate;
        return;
    }
}

void ReportStore::forgetReportFile(const QString& name)
{
    if (!QFileInfo::exists(databasePath()))
        return;
    QString reason;
    std::optional<QSqlDatabase> db = connection(true, &reason);
    if (!db)
        return;
    QSqlQuery forget(*db);
    forget.prepare(QStringLiteral("DELETE FROM pending_files WHERE name = ?"));
    forget.addBindValue(name);
    forget.exec(); // nothing to forget in a list without the table
}
