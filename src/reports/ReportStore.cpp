#include "ReportStore.h"

#include "platform/AppPaths.h"
#include "platform/Services.h"
#include "platform/SettingsStore.h"

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QThread>
#include <QVariant>
#include <QtEndian>

Q_DECLARE_LOGGING_CATEGORY(lcReports)

namespace {

const QString connectionName = QStringLiteral("tallyvane.reports");
int busyTimeoutValue = ReportStore::defaultBusyTimeout;
const QString legacyKey = QStringLiteral("reports");

QString reasonOf(const QSqlError& error)
{
    QString text = error.databaseText();
    if (text.isEmpty())
        text = error.text();
    return QStringLiteral("The saved reports could not be updated: %1.").arg(text);
}

// The open connection to the database at today's path, opened (with WAL
// and the busy timeout) when needed.
std::optional<QSqlDatabase> connection(QString* error)
{
    const QString path = ReportStore::databasePath();
    if (QSqlDatabase::contains(connectionName)) {
        {
            QSqlDatabase db = QSqlDatabase::database(connectionName, false);
            if (db.isOpen() && db.databaseName() == path)
                return db;
        }
        // The home moved (tests use a fresh one each): start again.
        ReportStore::close();
    }
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE"))) {
        *error = QStringLiteral("The SQLite driver of Qt (package libqt6sql6-sqlite) is missing.");
        return std::nullopt;
    }
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(folder)) {
        *error = QStringLiteral("The folder %1 could not be created.").arg(folder);
        return std::nullopt;
    }
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
        db.setDatabaseName(path);
        db.setConnectOptions(
            QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(ReportStore::busyTimeout()));
        if (db.open()) {
            QSqlQuery pragma(db);
            // WAL lets readers go on while one process writes; FULL makes a
            // reported save survive a crash of the whole machine too. Turning
            // a new database to WAL needs it to itself for a moment, and
            // SQLite answers "locked" at once rather than waiting when
            // another process does the same: so it is tried again, within
            // the busy timeout.
            QElapsedTimer waited;
            waited.start();
            bool wal = pragma.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
            while (!wal && waited.elapsed() < ReportStore::busyTimeout()) {
                QThread::msleep(5);
                wal = pragma.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
            }
            if (wal && pragma.exec(QStringLiteral("PRAGMA synchronous=FULL")))
                return db;
            *error = reasonOf(pragma.lastError());
        } else {
            *error = reasonOf(db.lastError());
        }
    }
    ReportStore::close();
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
            m_error = reasonOf(m_query.lastError());
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
            return WriteResult::failure(reasonOf(m_query.lastError()));
        m_open = false;
        return WriteResult::success();
    }

private:
    QSqlQuery m_query;
    bool m_open = false;
    QString m_error;
};

std::optional<bool> listExists(QSqlDatabase db, QString* error)
{
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral(
            "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = 'reports'"))) {
        *error = reasonOf(query.lastError());
        return std::nullopt;
    }
    return query.next();
}

// Inserts an archive under a new id (the head of the list), or under `id`
// when it is given.
bool insertArchive(QSqlDatabase db, const QByteArray& archive, QString* error,
                   std::optional<qint64> id = std::nullopt)
{
    QSqlQuery insert(db);
    insert.prepare(QStringLiteral("INSERT INTO reports (id, archive, checksum) VALUES (?, ?, ?)"));
    insert.addBindValue(id ? QVariant(*id) : QVariant(QMetaType::fromType<qint64>()));
    // A null array would bind as SQL NULL; an empty archive is still a row.
    insert.addBindValue(archive.isNull() ? QByteArray("") : archive);
    insert.addBindValue(ReportStore::checksumOf(archive));
    if (insert.exec())
        return true;
    *error = reasonOf(insert.lastError());
    return false;
}

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

// Every row, newest first. When the table cannot be read in one go (a
// damaged page), each row is read on its own so one bad row does not hide
// the others.
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

qint64 ReportStore::checksumOf(const QByteArray& archive)
{
    const QByteArray digest = QCryptographicHash::hash(archive, QCryptographicHash::Sha256);
    return qFromBigEndian<qint64>(digest.constData());
}

void ReportStore::close()
{
    if (!QSqlDatabase::contains(connectionName))
        return;
    {
        QSqlDatabase db = QSqlDatabase::database(connectionName, false);
        db.close();
    }
    QSqlDatabase::removeDatabase(connectionName);
}

std::optional<QList<ReportStore::Row>> ReportStore::rows(QString* error)
{
    QString reason;
    std::optional<QList<Row>> result;
    if (std::optional<QSqlDatabase> db = connection(&reason)) {
        const std::optional<bool> exists = listExists(*db, &reason);
        if (exists && *exists)
            result = readRows(*db, &reason);
    }
    if (error)
        *error = reason;
    return result;
}

namespace {

// Runs `change` inside one write transaction on the open database, told
// whether the list exists; commits when it succeeds.
WriteResult inTransaction(const std::function<WriteResult(QSqlDatabase, bool)>& change)
{
    QString reason;
    std::optional<QSqlDatabase> db = connection(&reason);
    if (!db)
        return WriteResult::failure(reason);
    WriteTransaction transaction(*db);
    if (!transaction.isOpen())
        return WriteResult::failure(transaction.error());
    const std::optional<bool> exists = listExists(*db, &reason);
    if (!exists)
        return WriteResult::failure(reason);
    const WriteResult changed = change(*db, *exists);
    return changed.ok() ? transaction.commit() : changed;
}

} // namespace

WriteResult ReportStore::createList()
{
    return inTransaction([](QSqlDatabase db, bool exists) {
        if (exists)
            return WriteResult::success();
        QSqlQuery create(db);
        if (!create.exec(QStringLiteral("CREATE TABLE reports (id INTEGER PRIMARY KEY "
                                        "AUTOINCREMENT, archive BLOB NOT NULL, checksum INTEGER "
                                        "NOT NULL)")))
            return WriteResult::failure(reasonOf(create.lastError()));
        // The list an older version kept in the settings file, newest
        // first: inserted oldest first so that the ids keep its order.
        const QVariant legacy = Services::settings().value(legacyKey);
        if (legacy.typeId() != QMetaType::QVariantList)
            return WriteResult::success();
        const QVariantList items = legacy.toList();
        QString reason;
        for (auto item = items.crbegin(); item != items.crend(); ++item) {
            if (!insertArchive(db, item->toByteArray(), &reason))
                return WriteResult::failure(reason);
        }
        return WriteResult::success();
    });
}

WriteResult ReportStore::insertAtHead(const QByteArray& archive)
{
    return inTransaction([&archive](QSqlDatabase db, bool exists) {
        if (!exists)
            return WriteResult::failure(
                QStringLiteral("The saved reports list has not been created yet."));
        QString reason;
        return insertArchive(db, archive, &reason) ? WriteResult::success()
                                                   : WriteResult::failure(reason);
    });
}

WriteResult ReportStore::removeRows(const Chooser& choose, int* removed)
{
    if (removed)
        *removed = 0;
    QList<qint64> ids;
    const WriteResult result = inTransaction([&](QSqlDatabase db, bool exists) {
        if (!exists)
            return WriteResult::success();
        QString reason;
        const std::optional<QList<Row>> rows = readRows(db, &reason);
        if (!rows)
            return WriteResult::failure(reason);
        ids = choose(*rows);
        QSqlQuery remove(db);
        remove.prepare(QStringLiteral("DELETE FROM reports WHERE id = ?"));
        for (qint64 id : std::as_const(ids)) {
            remove.bindValue(0, id);
            if (!remove.exec())
                return WriteResult::failure(reasonOf(remove.lastError()));
        }
        return WriteResult::success();
    });
    if (result.ok() && removed)
        *removed = int(ids.size());
    return result;
}

WriteResult ReportStore::restoreRows(const QList<Row>& rows)
{
    return inTransaction([&rows](QSqlDatabase db, bool exists) {
        if (!exists)
            return WriteResult::failure(
                QStringLiteral("The saved reports list has not been created yet."));
        QString reason;
        for (const Row& row : rows) {
            if (!insertArchive(db, row.archive, &reason, row.id))
                return WriteResult::failure(reason);
        }
        return WriteResult::success();
    });
}
