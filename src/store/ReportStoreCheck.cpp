// The check of the saved reports when they are first used in a process,
// the repair of a damaged database, the state file, and the removal of
// files left in the making by a killed save.

#include "store/QVFileManager.h"
#include "store/ReportSalvage.h"
#include "store/ReportStore.h"
#include "store/ReportStorePrivate.h"

#include <QCborMap>
#include <QCborValue>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QSet>
#include <QSqlQuery>
#include <QStorageInfo>
#include <QThread>
#include <QVariant>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

Q_DECLARE_LOGGING_CATEGORY(lcReports)

using namespace ReportStorePrivate;

namespace ReportStorePrivate {

Shared& shared()
{
    static Shared instance;
    return instance;
}

namespace StateFile {

namespace {

int descriptor = -1;
QString attachedPath;

// The record is one line of text, padded to a fixed length so that it is
// always written over itself in one piece.
constexpr int recordSize = 128;
const QByteArray recordTag("tallyvane-reports-state");

qint64 recordChecksum(const Tally& tally)
{
    return ReportStore::checksumOf(QByteArray::number(tally.changes) + ':' +
                                   QByteArray::number(tally.records) + ':' +
                                   QByteArray::number(tally.generation));
}

// Reading and writing the record take a lock on its first byte (an open
// file description lock, apart from the whole-file locks below), so that a
// reader never sees half of a write and two writers keep the later tally.
class RecordLock {
public:
    explicit RecordLock(short type)
    {
        struct flock lock = {};
        lock.l_type = type;
        lock.l_whence = SEEK_SET;
        lock.l_len = 1;
        // Held only for a read or a write of 128 bytes by its holder, and
        // given up when that process ends.
        m_held = ::fcntl(descriptor, F_OFD_SETLKW, &lock) == 0;
    }
    ~RecordLock()
    {
        if (!m_held)
            return;
        struct flock lock = {};
        lock.l_type = F_UNLCK;
        lock.l_whence = SEEK_SET;
        lock.l_len = 1;
        ::fcntl(descriptor, F_OFD_SETLK, &lock);
    }
    RecordLock(const RecordLock&) = delete;
    RecordLock& operator=(const RecordLock&) = delete;

private:
    bool m_held = false;
};

std::optional<Tally> readRecord()
{
    char buffer[recordSize];
    const ssize_t got = ::pread(descriptor, buffer, recordSize, 0);
    if (got <= 0)
        return std::nullopt;
    const QList<QByteArray> fields = QByteArray(buffer, got).simplified().split(' ');
    if (fields.size() != 5 || fields[0] != recordTag)
        return std::nullopt;
    QHash<QByteArray, qint64> values;
    for (qsizetype i = 1; i < fields.size(); ++i) {
        const qsizetype equals = fields[i].indexOf('=');
        bool ok = false;
        const qint64 value = fields[i].mid(equals + 1).toLongLong(&ok);
        if (equals <= 0 || !ok)
            return std::nullopt;
        values.insert(fields[i].left(equals), value);
    }
    const Tally tally{values.value("changes", -1), values.value("records", -1),
                      values.value("generation", -1)};
    if (tally.changes < 0 || tally.records < 0 || tally.generation < 0 ||
        values.value("check") != recordChecksum(tally))
        return std::nullopt;
    return tally;
}

} // namespace

bool attach(const QString& path)
{
    if (descriptor >= 0 && attachedPath == path)
        return true;
    detach();
    const QByteArray name = QFile::encodeName(path);
    descriptor = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (descriptor < 0)
        descriptor = ::open(name.constData(), O_RDONLY | O_CLOEXEC);
    attachedPath = path;
    return descriptor >= 0;
}

void detach()
{
    if (descriptor >= 0)
        ::close(descriptor);
    descriptor = -1;
    attachedPath.clear();
}

bool lockShared(int waitMs)
{
    if (descriptor < 0)
        return true; // no state file (a read-only home without one): nothing to share
    QElapsedTimer waited;
    waited.start();
    while (::flock(descriptor, LOCK_SH | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return true; // a file system without locks: go on as before
        if (waited.elapsed() >= waitMs)
            return false;
        QThread::msleep(10);
    }
    return true;
}

bool lockExclusive(int waitMs, const std::function<bool()>& stop)
{
    if (descriptor < 0)
        return false;
    QElapsedTimer waited;
    waited.start();
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        // Not holding the shared lock meanwhile, so that two processes
        // wanting to repair at once do not hold each other off: one of them
        // gets it, and the other then finds the repair made.
        ::flock(descriptor, LOCK_UN);
        if ((errno != EWOULDBLOCK && errno != EINTR) || waited.elapsed() >= waitMs || stop())
            return false;
        QThread::msleep(10 + QRandomGenerator::global()->bounded(30));
    }
    return true;
}

std::optional<Tally> read()
{
    if (descriptor < 0)
        return std::nullopt;
    const RecordLock lock(F_RDLCK);
    return readRecord();
}

void advance(const Tally& tally)
{
    if (descriptor < 0)
        return;
    const RecordLock lock(F_WRLCK);
    const std::optional<Tally> now = readRecord();
    Tally next = tally;
    if (now) {
        if (now->changes >= tally.changes && now->generation >= tally.generation)
            return;
        next.generation = qMax(now->generation, tally.generation);
    }
    QByteArray line = recordTag + " changes=" + QByteArray::number(next.changes) +
                      " records=" + QByteArray::number(next.records) +
                      " generation=" + QByteArray::number(next.generation) +
                      " check=" + QByteArray::number(recordChecksum(next));
    line = line.leftJustified(recordSize - 1, ' ') + '\n';
    // A failed write (a full disk) only leaves the older tally: that never
    // makes a sound list look damaged.
    if (::pwrite(descriptor, line.constData(), size_t(line.size()), 0) != line.size())
        qCInfo(lcReports) << "the reports state file could not be written";
}

} // namespace StateFile

namespace {

QByteArray procText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(4096).trimmed() : QByteArray();
}

// A process's start time in clock ticks since boot (field 22 of
// /proc/<pid>/stat, counted after the command name, which may hold spaces).
QByteArray startTimeOf(const QByteArray& pid)
{
    const QByteArray stat = procText(QStringLiteral("/proc/%1/stat").arg(QString::fromLatin1(pid)));
    const qsizetype close = stat.lastIndexOf(')');
    if (close < 0)
        return {};
    const QList<QByteArray> fields = stat.mid(close + 2).split(' ');
    return fields.size() > 19 ? fields.at(19) : QByteArray();
}

} // namespace

// "<boot id>:<pid>:<start time>": a process id alone may be taken again by
// another process; with the boot and the start time it names one process.
QString ownerId()
{
    static const QString id = [] {
        const QByteArray pid = QByteArray::number(qint64(::getpid()));
        return QString::fromLatin1(procText(QStringLiteral("/proc/sys/kernel/random/boot_id")) +
                                   ':' + pid + ':' + startTimeOf(pid));
    }();
    return id;
}

bool ownerRunning(const QString& owner)
{
    const QStringList parts = owner.split(QLatin1Char(':'));
    bool ok = false;
    const qint64 pid = parts.value(1).toLongLong(&ok);
    if (parts.size() != 3 || !ok || pid <= 0)
        return true; // not understood: kept, to be safe
    const QString boot =
        QString::fromLatin1(procText(QStringLiteral("/proc/sys/kernel/random/boot_id")));
    if (!boot.isEmpty() && !parts[0].isEmpty() && boot != parts[0])
        return false; // the machine has restarted since
    const QByteArray started = startTimeOf(QByteArray::number(pid));
    if (!started.isEmpty() && !parts[2].isEmpty())
        return started == parts[2].toLatin1();
    return ::kill(pid_t(pid), 0) == 0 || errno == EPERM;
}

} // namespace ReportStorePrivate

namespace {

const QString checkConnection = QStringLiteral("tallyvane.reports.check");
const QString rebuildConnection = QStringLiteral("tallyvane.reports.rebuild");

// A waiting process gives up after this long (another one repairing).
constexpr int lockWaitMs = 3000;
// quick_check reads every page; beyond this size it is left out (the
// numbers are still compared), so that opening stays within seconds.
constexpr qint64 quickCheckLimit = qint64(256) * 1024 * 1024;
// quick_check stops after this many faults: one is enough to know.
constexpr int quickCheckFaults = 10;

QString walPath(const QString& path)
{
    return path + QStringLiteral("-wal");
}

QString countOf(qint64 n)
{
    return n == 1 ? QStringLiteral("1 saved report") : QStringLiteral("%1 saved reports").arg(n);
}

// How many records were read back, against how many there were, in words.
QString countsText(std::optional<qint64> expected, qint64 read, const QString& where)
{
    if (!expected) {
        if (read == 0)
            return QStringLiteral("No saved report could be read from it.");
        return QStringLiteral("%1 could be read and %2; how many could not be read is not known.")
            .arg(countOf(read), where);
    }
    const qint64 lost = *expected - read;
    if (lost <= 0)
        return *expected == 0 && read == 0
                   ? QStringLiteral("It held no saved reports.")
                   : QStringLiteral("All %1 could be read and %2.").arg(countOf(read), where);
    if (read == 0)
        return *expected == 1
                   ? QStringLiteral("The 1 saved report could not be read.")
                   : QStringLiteral("None of the %1 could be read.").arg(countOf(*expected));
    return QStringLiteral("%1 of the %2 could not be read; the other %3 %4.")
        .arg(lost)
        .arg(countOf(*expected))
        .arg(read)
        .arg(where);
}

struct Finding {
    enum Verdict {
        Sound,    // or not yet made: used as it is
        Locked,   // another process holds it: the first use will wait and say so
        Damaged,  // to be set aside and rebuilt
        ReadOnly, // sound, but readable only without SQLite (no space)
    } verdict = Sound;
    QString why;                  // for the log
    std::optional<Tally> tally;   // the database's bookkeeping row, when sound
    QList<ReportStore::Row> rows; // ReadOnly: the rows
};

// The header fields this store never changes, as SQLite writes them for
// it; anything else there is damage. Empty when the header is sound. With
// a journal holding changes, page 1 (the header with it) may be newer there,
// and SQLite reads it from there: then only what it reads from the file
// itself is looked at. A database without tables yet has 0 for its schema
// format and text encoding.
QString headerFault(const QString& path, qint64 size, bool journalInUse)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {}; // not readable here: the opening will say why
    const QByteArray header = file.read(100);
    const auto* h = reinterpret_cast<const uchar*>(header.constData());
    if (header.size() < 100)
        return QStringLiteral("the file is too short for a database");
    if (!header.startsWith(QByteArray("SQLite format 3\0", 16)))
        return QStringLiteral("the file does not start as a database");
    const int named = (h[16] << 8) | h[17];
    const int pageSize = named == 1 ? 65536 : named;
    if (pageSize < 512 || (pageSize & (pageSize - 1)) != 0 || size % pageSize != 0)
        return QStringLiteral("the page size is damaged");
    if (journalInUse)
        return {};
    const auto be32 = [h](int at) {
        return quint32(h[at]) << 24 | quint32(h[at + 1]) << 16 | quint32(h[at + 2]) << 8 |
               quint32(h[at + 3]);
    };
    if (h[18] < 1 || h[18] > 2 || h[19] < 1 || h[19] > 2 || h[20] != 0 || h[21] != 64 ||
        h[22] != 32 || h[23] != 32)
        return QStringLiteral("the format bytes are damaged");
    if (be32(44) > 4 || be32(52) != 0 || be32(56) > 1 || be32(64) != 0)
        return QStringLiteral("the schema fields are damaged");
    return {};
}

QList<ReportStore::Row> newestFirst(const QMap<qint64, QByteArray>& rows)
{
    QList<ReportStore::Row> list;
    list.reserve(rows.size());
    for (auto it = rows.cend(); it != rows.cbegin();) {
        --it;
        list.append({it.key(), it.value()});
    }
    return list;
}

// The tally to believe: the one that has seen the most changes.
std::optional<Tally> latest(std::initializer_list<std::optional<Tally>> tallies)
{
    std::optional<Tally> best;
    for (const std::optional<Tally>& tally : tallies) {
        if (tally && tally->changes >= 0 && (!best || tally->changes > best->changes))
            best = tally;
    }
    return best;
}

// SQLite's quick check of every page, then the numbers: the rows against
// the bookkeeping row, the changes against the state file. All in one read
// transaction, so that a change another process commits meanwhile cannot
// fall between the count and the bookkeeping row.
void inspect(QSqlDatabase db, qint64 size, const std::optional<Tally>& seen, Finding& finding)
{
    const auto fail = [&finding](const QSqlError& error, const QString& what) {
        finding.verdict = isLocked(error) ? Finding::Locked : Finding::Damaged;
        finding.why = what + QStringLiteral(": ") + textOf(error);
    };
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("BEGIN")))
        return fail(query.lastError(), QStringLiteral("begin"));
    const auto end = qScopeGuard([&query] {
        query.finish();
        query.exec(QStringLiteral("ROLLBACK"));
    });
    if (size <= quickCheckLimit) {
        if (!query.exec(QStringLiteral("PRAGMA quick_check(%1)").arg(quickCheckFaults)))
            return fail(query.lastError(), QStringLiteral("quick_check"));
        QStringList faults;
        while (query.next())
            faults << query.value(0).toString();
        if (faults != QStringList{QStringLiteral("ok")}) {
            finding.verdict = Finding::Damaged;
            finding.why = faults.join(QStringLiteral("; "));
            return;
        }
    }
    QString reason;
    bool hasList = false;
    if (!tableExists(db, QStringLiteral("reports"), &reason, &hasList))
        return fail(query.lastError(), reason);
    const std::optional<Tally> tally = readTally(db, &reason);
    qint64 count = 0;
    if (hasList) {
        if (!query.exec(QStringLiteral("SELECT count(*) FROM reports")) || !query.next())
            return fail(query.lastError(), QStringLiteral("counting"));
        count = query.value(0).toLongLong();
    }
    finding.tally = tally;
    if (tally && tally->changes < 0) {
        finding.verdict = Finding::Damaged;
        finding.why = QStringLiteral("the bookkeeping row is damaged");
    } else if (!hasList && seen && seen->changes > 0 && seen->records > 0) {
        finding.verdict = Finding::Damaged;
        finding.why = QStringLiteral("the list is missing from the database");
    } else if (tally && count != tally->records) {
        finding.verdict = Finding::Damaged;
        finding.why = QStringLiteral("%1 rows where %2 were kept").arg(count).arg(tally->records);
    } else if (tally && seen && tally->changes < seen->changes) {
        finding.verdict = Finding::Damaged;
        finding.why =
            QStringLiteral("%1 changes where %2 were made").arg(tally->changes).arg(seen->changes);
    } else if (!tally && hasList && seen && count < seen->records) {
        finding.verdict = Finding::Damaged;
        finding.why = QStringLiteral("%1 rows where %2 were kept").arg(count).arg(seen->records);
    }
}

// Checks the database at `path` against what the state file has seen.
// Opens it read-only, so that SQLite does not fold (and then delete) a
// journal the repair may still need.
Finding examine(const QString& path, const std::optional<Tally>& seen)
{
    Finding finding;
    const qint64 size = QFileInfo(path).size();
    const bool listSeen = seen && seen->changes > 0;
    if (size == 0) {
        // A new database in the making (SQLite has made the file, not yet
        // the list), unless a list was seen here before.
        if (listSeen) {
            finding.verdict = Finding::Damaged;
            finding.why = QStringLiteral("the database file is empty");
        }
        return finding;
    }
    if (const QString fault = headerFault(path, size, QFileInfo(walPath(path)).size() > 0);
        !fault.isEmpty()) {
        finding.verdict = Finding::Damaged;
        finding.why = fault;
        return finding;
    }
    QSqlError failure;
    std::optional<QSqlDatabase> db =
        openDatabase(checkConnection, path, Access::ReadOnly, &failure);
    if (!db && isAccessFailure(failure)) {
        if (QFileInfo(walPath(path)).size() == 0) {
            db = openDatabase(checkConnection, path, Access::Immutable, &failure);
        } else {
            // SQLite cannot even read it (its read-only mode needs an index
            // file it cannot make on a full disk) and there is a journal to
            // read with it: read both without SQLite.
            const ReportSalvage::Result salvage = ReportSalvage::read(path, walPath(path));
            const std::optional<Tally> expected =
                latest({seen, salvage.state ? std::optional<Tally>(Tally{salvage.state->changes,
                                                                         salvage.state->records, 0})
                                            : std::nullopt});
            finding.rows = newestFirst(salvage.rows);
            finding.verdict = expected && finding.rows.size() < expected->records
                                  ? Finding::Damaged
                                  : Finding::ReadOnly;
            finding.why = QStringLiteral("read without SQLite: %1").arg(failure.text());
            return finding;
        }
    }
    if (!db) {
        finding.verdict = isLocked(failure) ? Finding::Locked : Finding::Damaged;
        finding.why = textOf(failure);
        return finding;
    }
    inspect(*db, size, seen, finding);
    db.reset(); // every handle gone before the connection is
    removeConnection(checkConnection);
    return finding;
}

// Moves `from` to `to` unless `to` exists; never replaces anything.
bool renameNew(const QString& from, const QString& to)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) ==
        0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    // A file system without that flag: a new link fails on an existing name.
    return ::link(source.constData(), target.constData()) == 0 && ::unlink(source.constData()) == 0;
}

void syncFolder(const QString& folder)
{
    const int fd =
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

// Sets the damaged database (and its journal) aside under a new name
// beside it: "reports-damaged-<date>-<time>.sqlite", with "-2", "-3" ...
// when that is taken. The journal's index file goes: SQLite rebuilds it.
// Empty when it could not be done; nothing is then moved.
QString setAside(const QString& path)
{
    const QFileInfo info(path);
    const QString stem = info.absolutePath() + QStringLiteral("/reports-damaged-") +
                         QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    // An empty journal holds nothing (SQLite leaves one behind after a mere
    // read): it goes with the index file instead of being kept.
    if (QFileInfo(walPath(path)).size() == 0)
        QFile::remove(walPath(path));
    const bool hasWal = QFileInfo::exists(walPath(path));
    for (int copy = 1; copy <= 99; ++copy) {
        const QString aside = stem + (copy > 1 ? QStringLiteral("-%1").arg(copy) : QString()) +
                              QStringLiteral(".sqlite");
        if (QFileInfo::exists(walPath(aside)) || !renameNew(path, aside)) {
            if (QFileInfo::exists(aside) || QFileInfo::exists(walPath(aside)))
                continue;
            return {};
        }
        if (hasWal && !renameNew(walPath(path), walPath(aside))) {
            renameNew(aside, path); // back as it was
            return {};
        }
        QFile::remove(path + QStringLiteral("-shm"));
        return aside;
    }
    return {};
}

// A new database at `path` holding `rows` (with their own ids) and
// `tally`, written whole and closed, so that no journal is left with it.
bool rebuild(const QString& path, const QList<ReportStore::Row>& rows, const Tally& tally,
             QString* error)
{
    for (const QString& suffix :
         {QString(), QStringLiteral("-wal"), QStringLiteral("-shm"), QStringLiteral("-journal")})
        QFile::remove(path + suffix); // only ever made here, under the exclusive lock
    QSqlError failure;
    std::optional<QSqlDatabase> db =
        openDatabase(rebuildConnection, path, Access::ReadWrite, &failure);
    if (!db) {
        *error = refusalOf(failure);
        return false;
    }
    bool written = false;
    {
        QSqlQuery query(*db);
        written = query.exec(QStringLiteral("BEGIN IMMEDIATE")) && createSchema(*db, tally, error);
        // Oldest first, so that each keeps its place in the list.
        for (auto row = rows.crbegin(); written && row != rows.crend(); ++row)
            written = insertArchive(*db, row->archive, error, row->id);
        if (written && !query.exec(QStringLiteral("COMMIT"))) {
            *error = refusalOf(query.lastError());
            written = false;
        }
    }
    db.reset();
    removeConnection(rebuildConnection);
    if (!written || QFileInfo::exists(path + QStringLiteral("-wal"))) {
        if (written)
            *error = QStringLiteral("the new database could not be completed");
        for (const QString& suffix : {QString(), QStringLiteral("-wal"), QStringLiteral("-shm")})
            QFile::remove(path + suffix);
        return false;
    }
    return true;
}

// Damaged, and not repaired now: the rows that can be read are shown,
// nothing can be changed, and the user is told why.
void keepDamaged(const QString& path, const std::optional<Tally>& seen, const QString& why)
{
    const ReportSalvage::Result salvage = ReportSalvage::read(path, walPath(path));
    const QList<ReportStore::Row> rows = newestFirst(salvage.rows);
    const std::optional<Tally> expected = latest(
        {seen, salvage.state
                   ? std::optional<Tally>(Tally{salvage.state->changes, salvage.state->records, 0})
                   : std::nullopt});
    shared().salvaged = rows;
    shared().refusal =
        QStringLiteral("The saved reports are damaged and cannot be changed until they are "
                       "repaired (%1).")
            .arg(why);
    shared().notice =
        QStringLiteral("The saved reports are damaged and could not be repaired "
                       "(%1). %2 Nothing can be saved or deleted until the repair "
                       "can be made.")
            .arg(why, countsText(expected ? std::optional<qint64>(expected->records) : std::nullopt,
                                 rows.size(), QStringLiteral("are shown")));
}

void repair(const QString& path, std::optional<Tally> seen, const Finding& found)
{
    qCInfo(lcReports) << "the saved reports are damaged:" << found.why;
    const QString folder = QFileInfo(path).absolutePath();
    const QStorageInfo storage(folder);
    if (!QFileInfo(folder).isWritable() || (storage.isValid() && storage.isReadOnly())) {
        keepDamaged(path, seen, QStringLiteral("%1 is read-only").arg(folder));
        return;
    }
    // Replacing the files is safe only while no other process has them
    // open: it would go on with the old ones, and its journal would then be
    // taken for the new database's.
    const qint64 generation = seen ? seen->generation : 0;
    const auto repairedMeanwhile = [generation] {
        const std::optional<Tally> now = StateFile::read();
        return now && now->generation != generation;
    };
    if (!StateFile::lockExclusive(2000, repairedMeanwhile)) {
        StateFile::lockShared(lockWaitMs);
        const std::optional<Tally> now = StateFile::read();
        if (repairedMeanwhile() && examine(path, now).verdict != Finding::Damaged)
            return;
        keepDamaged(path, now,
                    QStringLiteral("another Tallyvane program is using them; close it and try "
                                   "again"));
        return;
    }
    const auto backToShared = qScopeGuard([] { StateFile::lockShared(lockWaitMs); });
    // Another process may have repaired it just before: look again.
    seen = StateFile::read();
    const Finding again = examine(path, seen);
    if (again.verdict != Finding::Damaged)
        return;

    const ReportSalvage::Result salvage = ReportSalvage::read(path, walPath(path));
    if (!salvage.readable) {
        // Unreadable (an I/O error) or too large to read whole: nothing is
        // replaced by what could not be looked at.
        keepDamaged(path, seen, QStringLiteral("the files could not be read whole"));
        return;
    }
    const QList<ReportStore::Row> rows = newestFirst(salvage.rows);
    const std::optional<Tally> salvaged =
        salvage.state
            ? std::optional<Tally>(Tally{salvage.state->changes, salvage.state->records, 0})
            : std::nullopt;
    const std::optional<Tally> expected = latest({seen, again.tally, found.tally, salvaged});
    qCInfo(lcReports) << "salvaged" << rows.size() << "rows;" << salvage.unverified
                      << "damaged; expected" << (expected ? expected->records : -1);
    Tally fresh{(expected ? expected->changes : 0) + 1, rows.size(), generation + 1};
    if (seen)
        fresh.changes = qMax(fresh.changes, seen->changes + 1);

    const QString building = path + QStringLiteral(".rebuild");
    QString reason;
    if (!rebuild(building, rows, fresh, &reason)) {
        keepDamaged(path, seen, reason.endsWith(QLatin1Char('.')) ? reason.chopped(1) : reason);
        return;
    }
    const QString aside = setAside(path);
    if (aside.isEmpty() || !renameNew(building, path)) {
        if (!aside.isEmpty()) { // back as they were, the journal with the database
            renameNew(aside, path);
            if (QFileInfo::exists(walPath(aside)))
                renameNew(walPath(aside), walPath(path));
        }
        QFile::remove(building);
        keepDamaged(path, seen, QStringLiteral("the damaged files could not be moved aside"));
        return;
    }
    syncFolder(folder);
    StateFile::advance(fresh);
    shared().changesBefore = fresh.changes;
    shared().notice =
        QStringLiteral("The saved reports could not be read; a copy was kept as %1. %2")
            .arg(QDir::toNativeSeparators(aside),
                 countsText(expected ? std::optional<qint64>(expected->records) : std::nullopt,
                            rows.size(), QStringLiteral("are in the list again")));
}

// The text file names the records refer to.
QSet<QString> referencedFiles(QSqlDatabase db)
{
    QSet<QString> names;
    QString reason;
    const std::optional<QList<ReportStore::Row>> rows = readRows(db, &reason);
    for (const ReportStore::Row& row : rows.value_or(QList<ReportStore::Row>()))
        names.insert(
            QCborValue::fromCbor(row.archive).toMap().value(QStringLiteral("fileName")).toString());
    return names;
}

// A regular file (not a link) written after `since`, the time its name was
// entered as in the making: only then is it the file that entry made.
bool madeSince(const QString& path, qint64 since)
{
    const QFileInfo info(path);
    // File times may be coarser than the clock: two seconds of slack.
    return info.isFile() && !info.isSymLink() &&
           info.lastModified().toMSecsSinceEpoch() >= since - 2000;
}

// Files in the making whose process has ended: that save never stored its
// record (it would have removed the entry in the same transaction), so
// nobody was told the report was saved, and its text file (with the chart
// picture written beside it) goes. Never removed: a file some record
// names, a file not named like a report, a link, a file older than its
// entry (not the one that save wrote), anything of a process still running
// (a save in another process in the middle of its work). A text file whose
// record was deleted by the user was never in the making then, and stays.
void removeLeftoverFiles(const QString& path)
{
    QSqlError failure;
    std::optional<QSqlDatabase> db =
        openDatabase(checkConnection, path, Access::ReadWrite, &failure);
    if (!db)
        return;
    QString reason;
    bool marks = false;
    struct Entry {
        QString name;
        qint64 since = 0;
    };
    QList<Entry> ended;
    {
        QSqlQuery query(*db);
        if (tableExists(*db, QStringLiteral("pending_files"), &reason, &marks) && marks &&
            query.exec(QStringLiteral("SELECT name, owner, since FROM pending_files"))) {
            while (query.next()) {
                if (!ownerRunning(query.value(1).toString()))
                    ended.append({query.value(0).toString(), query.value(2).toLongLong()});
            }
        }
    }
    if (!ended.isEmpty()) {
        QSqlQuery query(*db);
        if (query.exec(QStringLiteral("BEGIN IMMEDIATE"))) {
            const QSet<QString> referenced = referencedFiles(*db);
            const QString documents = QVFileManager::documentsDirectory() + QLatin1Char('/');
            QSqlQuery forget(*db);
            forget.prepare(QStringLiteral("DELETE FROM pending_files WHERE name = ?"));
            int removed = 0;
            for (const Entry& entry : std::as_const(ended)) {
                const QLatin1String suffix("_report.txt");
                if (QVFileManager::isPlainFileName(entry.name) && entry.name.endsWith(suffix) &&
                    !referenced.contains(entry.name) &&
                    madeSince(documents + entry.name, entry.since)) {
                    removed += QFile::remove(documents + entry.name) ? 1 : 0;
                    const QString chart = documents + entry.name.chopped(suffix.size()) +
                                          QStringLiteral("_chart.png");
                    if (madeSince(chart, entry.since))
                        QFile::remove(chart);
                }
                forget.bindValue(0, entry.name);
                forget.exec();
            }
            if (!query.exec(QStringLiteral("COMMIT")))
                query.exec(QStringLiteral("ROLLBACK"));
            qCInfo(lcReports) << "removed" << removed << "files left by unfinished saves";
        }
    }
    db.reset();
    removeConnection(checkConnection);
}

void check(const QString& path)
{
    Shared& state = shared();
    QDir().mkpath(QFileInfo(path).absolutePath());
    StateFile::attach(ReportStore::statePath());
    if (!StateFile::lockShared(lockWaitMs)) {
        state.refusal = QStringLiteral("The saved reports are being repaired by another "
                                       "Tallyvane program; try again in a moment.");
        return;
    }
    const std::optional<Tally> seen = StateFile::read();
    state.changesBefore = seen ? seen->changes : 0;
    if (!QFileInfo::exists(path)) {
        // Told apart from a new home by the state file: a list was kept here.
        if (seen && seen->changes > 0)
            state.notice =
                QStringLiteral("The saved reports list %1 is missing; %2 A new list "
                               "was started.")
                    .arg(QDir::toNativeSeparators(path),
                         seen->records == 0 ? QStringLiteral("it held no saved reports.")
                                            : QStringLiteral("the %1 it held could not be read.")
                                                  .arg(countOf(seen->records)));
        return;
    }
    if (!QFileInfo(path).isFile()) {
        // A folder or a device where the database belongs: never set aside
        // or written over, only told.
        state.refusal = QStringLiteral("The saved reports cannot be read: %1 is not a file.")
                            .arg(QDir::toNativeSeparators(path));
        return;
    }
    const Finding found = examine(path, seen);
    switch (found.verdict) {
    case Finding::Sound:
        if (QFileInfo(QFileInfo(path).absolutePath()).isWritable())
            removeLeftoverFiles(path);
        return;
    case Finding::Locked:
        return;
    case Finding::ReadOnly:
        state.salvaged = found.rows;
        state.refusal = QStringLiteral("The saved reports cannot be changed: the disk is full.");
        return;
    case Finding::Damaged:
        repair(path, seen, found);
        return;
    }
}

} // namespace

namespace ReportStorePrivate {

void ensurePrepared()
{
    const QString path = ReportStore::databasePath();
    QMutexLocker lock(&shared().mutex);
    if (shared().preparedFor == path)
        return;
    Shared& state = shared();
    StateFile::detach();
    state.notice.clear();
    state.salvaged.reset();
    state.refusal.clear();
    state.changesBefore = 0;
    state.preparedFor = path;
    QElapsedTimer timer;
    timer.start();
    check(path);
    qCDebug(lcReports) << "checked the saved reports in" << timer.elapsed() << "ms";
}

} // namespace ReportStorePrivate

void ReportStore::prepare()
{
    ensurePrepared();
}
