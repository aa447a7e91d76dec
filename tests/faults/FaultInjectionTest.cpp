// Saved reports under faults: processes saving at once, a full disk, a
// saver killed mid-write and damaged bytes. Each case starts from a fresh
// home and drives real processes (tallyvane_report_saver, which saves the
// way "tallyvane-cli calc roi ... --save" does); the outcome is read back
// from the database directly.
#include "ShippedCli.h"
#include "store/QVReport.h"
#include "store/ReportStore.h"
#include "support/OwnConnection.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSet>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QThread>
#include <csignal>
#include <future>
#include <gtest/gtest.h>
#include <iostream>
#include <optional>
#include <thread>
#include <unistd.h>

namespace {

struct Stored {
    QVReport report;
    qint64 investment = -1; // -1: the record reads as empty
};

// What one saver process said: the investments it reported saved, and the
// reason of the save it reported failed.
struct SaverOutput {
    QList<qint64> saved;
    QString failure;
    int exitCode = -1;
};

qint64 investmentIn(const QString& contents)
{
    static const QRegularExpression line(QStringLiteral("^Investment: (\\d+)$"),
                                         QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = line.match(contents);
    return match.hasMatch() ? match.captured(1).toLongLong() : -1;
}

SaverOutput parse(const QByteArray& output)
{
    SaverOutput result;
    for (const QByteArray& line : output.split('\n')) {
        if (line.startsWith("saved "))
            result.saved << line.mid(6).toLongLong();
        else if (line.startsWith("failed "))
            result.failure = QString::fromUtf8(line.mid(line.indexOf('\t') + 1));
    }
    return result;
}

// The copy a notice says was kept ("... a copy was kept as <path>. ...").
QString copyNamedIn(const QString& notice)
{
    static const QRegularExpression kept(QStringLiteral("a copy was kept as (.+?\\.sqlite)\\. "));
    return kept.match(notice).captured(1);
}

// How many records a notice says could not be read, and of how many:
// nothing when it names no number.
std::optional<std::pair<int, int>> toldLost(const QString& notice)
{
    static const QRegularExpression some(
        QStringLiteral("(\\d+) of the (\\d+) saved reports? could not be read"));
    static const QRegularExpression none(
        QStringLiteral("None of the (\\d+) saved reports could be read"));
    static const QRegularExpression one(QStringLiteral("The 1 saved report could not be read"));
    static const QRegularExpression all(QStringLiteral("All (\\d+) saved reports? could be read"));
    if (const auto m = some.match(notice); m.hasMatch())
        return std::pair(m.captured(1).toInt(), m.captured(2).toInt());
    if (const auto m = none.match(notice); m.hasMatch())
        return std::pair(m.captured(1).toInt(), m.captured(1).toInt());
    if (one.match(notice).hasMatch())
        return std::pair(1, 1);
    if (const auto m = all.match(notice); m.hasMatch())
        return std::pair(0, m.captured(1).toInt());
    return std::nullopt;
}

// The file names `reports list --json` gives, newest first.
QStringList listedFiles(const QString& json)
{
    QStringList names;
    for (const QJsonValue& record : QJsonDocument::fromJson(json.toUtf8()).array())
        names << record.toObject().value(QStringLiteral("fileName")).toString();
    return names;
}

bool run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished(10000) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

class ReportFaults : public ::testing::Test {
public:
    void SetUp() override
    {
        ASSERT_TRUE(home.isValid());
        useHome(home.path());
    }
    void TearDown() override
    {
        ReportStore::close();
        if (!smallDisk.isEmpty())
            run(QStringLiteral("umount"), {smallDisk});
    }

    // A tmpfs of `size` ("160k") mounted under the test's home as the home
    // for the rest of the test; false where mounting needs root and this
    // test has not got it. TearDown unmounts it.
    bool useSmallDisk(const QString& size)
    {
        const QString mountPoint = home.filePath(QStringLiteral("small"));
        QDir().mkpath(mountPoint);
        if (!run(QStringLiteral("mount"),
                 {"-t", "tmpfs", "-o", "size=" + size, "tmpfs", mountPoint}))
            return false;
        smallDisk = mountPoint;
        useHome(smallDisk);
        return true;
    }

    void useHome(const QString& path)
    {
        homePath = path;
        qputenv("TALLYVANE_HOME", path.toUtf8());
        ReportStore::close();
    }

    QProcess* startSaver(int tag, int count, const QByteArray& fileSizeLimit = {})
    {
        auto* process = new QProcess;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TALLYVANE_HOME"), homePath);
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
        if (!fileSizeLimit.isEmpty())
            environment.insert(QStringLiteral("FAULT_FSIZE_LIMIT"),
                               QString::fromLatin1(fileSizeLimit));
        process->setProcessEnvironment(environment);
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->start(QStringLiteral(REPORT_SAVER_PATH),
                       {QString::number(tag), QString::number(count)});
        savers.emplace_back(process);
        return process;
    }

    SaverOutput finish(QProcess* process)
    {
        EXPECT_TRUE(process->waitForFinished(120000)) << "a saver hung";
        SaverOutput output = parse(process->readAllStandardOutput());
        output.exitCode = process->exitStatus() == QProcess::NormalExit ? process->exitCode() : -1;
        return output;
    }

    // SIGKILL to the saver while it runs. QProcess gives 0 as the id of a
    // process that has ended, and kill(0, ...) would hit the whole process
    // group, this test included; a child that has ended but is not reaped
    // yet keeps its id (QProcess reaps only inside its own calls, and none
    // runs between the check and the kill), so the signal never reaches
    // another process.
    static void killIfRunning(QProcess* process)
    {
        const qint64 pid = process->processId();
        if (pid > 0 && process->state() == QProcess::Running)
            ::kill(pid_t(pid), SIGKILL);
    }

    SaverOutput runSaver(int tag, int count, const QByteArray& fileSizeLimit = {})
    {
        return finish(startSaver(tag, count, fileSizeLimit));
    }

    // The database read directly, newest first, after checking it whole.
    QList<Stored> stored()
    {
        QList<Stored> records;
        withOwnConnection(homePath + QStringLiteral("/reports.sqlite"), [&](QSqlQuery& query) {
            EXPECT_TRUE(query.exec(QStringLiteral("PRAGMA integrity_check")));
            EXPECT_TRUE(query.next());
            EXPECT_EQ(query.value(0).toString(), QStringLiteral("ok"));
            EXPECT_TRUE(query.exec(
                QStringLiteral("SELECT archive, checksum FROM reports ORDER BY id DESC")))
                << query.lastError().text().toStdString();
            while (query.next()) {
                const QByteArray archive = query.value(0).toByteArray();
                Stored record;
                if (ReportStore::checksumOf(archive) == query.value(1).toLongLong()) {
                    record.report = QVReport::fromArchive(archive);
                    record.investment = investmentIn(record.report.contents);
                }
                records << record;
            }
        });
        return records;
    }

    QString documents() const { return homePath + QStringLiteral("/Documents"); }

    QByteArray fileOf(const QVReport& report) const
    {
        return bytesOf(documents() + QLatin1Char('/') + report.fileName);
    }

    // Every investment in `expected` is stored exactly once, with its own
    // text file holding exactly its contents.
    void expectKeptWithTheirFiles(const QList<Stored>& records, const QList<qint64>& expected)
    {
        QHash<qint64, int> seen;
        QSet<QString> names;
        for (const Stored& record : records) {
            ++seen[record.investment];
            if (record.investment < 0)
                continue;
            EXPECT_FALSE(names.contains(record.report.fileName))
                << "shared file " << record.report.fileName.toStdString();
            names.insert(record.report.fileName);
            EXPECT_EQ(fileOf(record.report), record.report.contents.toLatin1())
                << record.report.fileName.toStdString();
        }
        for (qint64 investment : expected)
            EXPECT_EQ(seen.value(investment), 1) << "investment " << investment;
    }

    QTemporaryDir home;
    QString homePath;
    QString smallDisk; // mounted by useSmallDisk
    std::vector<std::unique_ptr<QProcess>> savers;
};

TEST_F(ReportFaults, FourProcessesSavingAtOnceKeepEveryRecordWithItsOwnFile)
{
    // Four processes, fifty saves each, every report titled "Plan" in the
    // same minute, all starting on a home that has no list yet.
    std::vector<QProcess*> running;
    for (int tag = 1; tag <= 4; ++tag)
        running.push_back(startSaver(tag, 50));
    QList<qint64> expected;
    for (int tag = 1; tag <= 4; ++tag) {
        const SaverOutput output = finish(running[size_t(tag - 1)]);
        EXPECT_EQ(output.exitCode, 0) << output.failure.toStdString();
        EXPECT_EQ(output.saved.size(), 50);
        for (int i = 0; i < 50; ++i)
            expected << tag * 100000 + i;
    }
    const QList<Stored> records = stored();
    EXPECT_EQ(records.size(), 200);
    expectKeptWithTheirFiles(records, expected);
    EXPECT_EQ(QDir(documents()).entryList(QDir::Files).size(), 200);
}

// Every process checks the list when it starts; a check while other
// processes save (the list and its state file changing under it) never
// takes their changes for damage.
TEST_F(ReportFaults, ListingsWhileOthersSaveFindNoDamage)
{
    ASSERT_EQ(runShippedCli(homePath, {"reports", "list"}).exitCode, 0);
    QProcess* first = startSaver(1, 150);
    QProcess* second = startSaver(2, 150);
    int listings = 0;
    while (listings < 200 &&
           (first->state() != QProcess::NotRunning || second->state() != QProcess::NotRunning)) {
        const CliRun listing = runShippedCli(homePath, {"reports", "list"});
        ++listings;
        EXPECT_EQ(listing.exitCode, 0);
        EXPECT_TRUE(listing.err.isEmpty()) << listing.err.toStdString();
    }
    EXPECT_GT(listings, 3);
    EXPECT_EQ(finish(first).exitCode, 0);
    EXPECT_EQ(finish(second).exitCode, 0);
    EXPECT_EQ(stored().size(), 300);
    EXPECT_TRUE(QDir(homePath).entryList({QStringLiteral("reports-damaged-*")}).isEmpty());
}

// Saves until the disk is full: the failed save says why, and every save
// reported before it is still there, readable, with its file.
void expectFullDiskIsTold(ReportFaults& test, const std::function<SaverOutput(int)>& save)
{
    const SaverOutput first = save(1);
    EXPECT_EQ(first.exitCode, 1) << "the disk never filled";
    EXPECT_FALSE(first.failure.isEmpty()) << "the failed save was not reported";
    EXPECT_GE(first.saved.size(), 1);
    const SaverOutput again = save(2);
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_FALSE(again.failure.isEmpty());

    QList<qint64> saved = first.saved + again.saved;
    const QList<Stored> records = test.stored();
    EXPECT_EQ(records.size(), saved.size()) << "a failed save left a record";
    test.expectKeptWithTheirFiles(records, saved);
}

TEST_F(ReportFaults, AFullSmallFilesystemFailsTheSaveAndKeepsEveryEarlierOne)
{
    if (!useSmallDisk(QStringLiteral("160k")))
        GTEST_SKIP() << "cannot mount a small tmpfs here (needs root): the size-limited "
                        "file case below covers a full disk instead";
    expectFullDiskIsTold(*this, [this](int tag) { return runSaver(tag, 2000); });
}

TEST_F(ReportFaults, AFileSizeLimitFailsTheSaveAndKeepsEveryEarlierOne)
{
    expectFullDiskIsTold(*this, [this](int tag) { return runSaver(tag, 2000, "65536"); });
}

TEST_F(ReportFaults, ASaverKilledMidWriteLeavesAWholeDatabaseWithEveryReportedSave)
{
    QList<qint64> reported;
    int tag = 0;
    for (int round = 0; round < 4; ++round) {
        QProcess* saver = startSaver(++tag, 200);
        const int target = QRandomGenerator::global()->bounded(5, 150);
        QByteArray output;
        while (output.count("saved ") < target && saver->state() != QProcess::NotRunning) {
            saver->waitForReadyRead(1000);
            output += saver->readAllStandardOutput();
        }
        // A little later still, to land inside a write more often.
        QThread::usleep(QRandomGenerator::global()->bounded(3000));
        killIfRunning(saver);
        saver->waitForFinished(10000);
        output += saver->readAllStandardOutput();
        EXPECT_EQ(saver->exitStatus(), QProcess::CrashExit) << "the saver ended before the kill";
        reported += parse(output).saved;

        const QList<Stored> records = stored();
        QSet<qint64> present;
        for (const Stored& record : records)
            present.insert(record.investment);
        for (qint64 investment : reported)
            EXPECT_TRUE(present.contains(investment)) << "lost " << investment;
        EXPECT_FALSE(present.contains(-1)) << "a half-written record";
    }
    // The next save after all that lands at the head; starting, it removed
    // the text files the killed saves had written but not stored a record
    // for, and only those: every file left is a record's.
    const SaverOutput after = runSaver(99, 1);
    EXPECT_EQ(after.exitCode, 0) << after.failure.toStdString();
    const QList<Stored> records = stored();
    EXPECT_EQ(records.value(0).investment, 9900000);
    QSet<QString> named;
    for (const Stored& record : records)
        named.insert(record.report.fileName);
    const QStringList files = QDir(documents()).entryList(QDir::Files);
    EXPECT_EQ(QSet<QString>(files.cbegin(), files.cend()), named);
}

// Another process is writing to a new database, as a second saver that
// was a little quicker does: turning the database to WAL is refused at once
// meanwhile, so opening tries again until that write ends instead of
// failing the save.
TEST_F(ReportFaults, OpeningANewDatabaseWaitsWhileAnotherConnectionHoldsIt)
{
    std::promise<void> locked;
    std::thread holder([&] {
        withOwnConnection(ReportStore::databasePath(), [&](QSqlQuery& query) {
            const bool held = query.exec(QStringLiteral("BEGIN IMMEDIATE")) &&
                              query.exec(QStringLiteral("CREATE TABLE other (x)"));
            locked.set_value();
            QThread::msleep(300);
            EXPECT_TRUE(held && query.exec(QStringLiteral("COMMIT")));
        });
    });
    locked.get_future().wait();
    const WriteResult result = ReportStore::createList();
    holder.join();
    EXPECT_TRUE(result.ok()) << result.error.toStdString();
    EXPECT_TRUE(ReportStore::insertAtHead("one").ok());
}

// A damaged page rather than damaged record bytes: the link from a long
// record's first overflow page to its next one points past the end of the
// file. The check at opening finds it; the database is set aside as it is,
// and the two records that still read whole (each matching its checksum)
// are copied into a new one, in their places; the user is told that one
// of three could not be read.
TEST_F(ReportFaults, ADamagedPageIsSetAsideAndTheRecordsThatReadAreKept)
{
    ASSERT_TRUE(ReportStore::createList().ok());
    QList<QByteArray> archives;
    for (const char fill : {'a', 'b', 'c'}) {
        QByteArray archive(12000, fill); // three pages of 4 kB: two overflow pages
        archive.replace(4500, 8, QByteArray("marker-") + fill);
        archives.prepend(archive);
        ASSERT_TRUE(ReportStore::insertAtHead(archive).ok());
    }
    ReportStore::close();

    QFile file(ReportStore::databasePath());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const qsizetype at = file.readAll().indexOf("marker-b");
    ASSERT_GE(at, 0) << "the database was not written back to its file";
    file.seek(at / 4096 * 4096); // the overflow page's "next page" number
    file.write("\x7f\xff\xff\xff", 4);
    file.close();
    const QByteArray damaged = bytesOf(ReportStore::databasePath());

    const auto rows = ReportStore::rows();
    ASSERT_TRUE(rows);
    ASSERT_EQ(rows->size(), 2);
    EXPECT_EQ(rows->at(0).archive, archives[0]);
    EXPECT_EQ(rows->at(1).archive, archives[2]);
    const QString notice = ReportStore::takeNotice();
    EXPECT_TRUE(notice.contains("1 of the 3 saved reports could not be read"))
        << notice.toStdString();
    EXPECT_EQ(bytesOf(copyNamedIn(notice)), damaged);
    EXPECT_TRUE(ReportStore::takeNotice().isEmpty()) << "told once";
    // The new database takes saves as before, at the head.
    ASSERT_TRUE(ReportStore::insertAtHead("d").ok());
    EXPECT_EQ(ReportStore::rows()->value(0).archive, QByteArray("d"));
}

TEST_F(ReportFaults, OneDamagedRecordReadsEmptyTheOthersAndLaterSavesAreKept)
{
    ASSERT_EQ(runSaver(1, 5).exitCode, 0);
    const QString database = homePath + QStringLiteral("/reports.sqlite");
    ASSERT_FALSE(QFile::exists(database + QStringLiteral("-wal")))
        << "the saver left its journal behind";

    // Damage the bytes of the record with investment 100002, in place.
    QFile file(database);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    QByteArray bytes = file.readAll();
    const qsizetype at = bytes.indexOf("Investment: 100002");
    ASSERT_GE(at, 0);
    ASSERT_EQ(bytes.indexOf("Investment: 100002", at + 1), -1);
    file.seek(at + 14);
    file.write("\xff\x00\x7f", 3);
    file.close();

    const auto investments = [this] {
        QList<qint64> list;
        for (const Stored& record : stored())
            list << record.investment;
        return list;
    };
    EXPECT_EQ(investments(), QList<qint64>({100004, 100003, -1, 100001, 100000}));
    // The app's own reading gives one empty record in its place.
    const std::optional<QList<QByteArray>> archives = QVReport::storedReportList();
    ASSERT_TRUE(archives);
    ASSERT_EQ(archives->size(), 5);
    EXPECT_TRUE(QVReport::fromArchive(archives->at(2)).title.isEmpty());
    EXPECT_EQ(QVReport::fromArchive(archives->at(1)).title, QStringLiteral("Plan"));
    ReportStore::close();

    const SaverOutput later = runSaver(2, 1);
    EXPECT_EQ(later.exitCode, 0) << later.failure.toStdString();
    EXPECT_EQ(investments(), QList<qint64>({200000, 100004, 100003, -1, 100001, 100000}));
}

// Damage trials: a home holding 50 saved reports, one byte of one place
// changed at random, then the shipped command line lists the reports.
// Every record it does not list has to be counted in what it tells, the
// listing has to take less than 2 s, the copy it says it kept has to hold
// the damaged bytes, and a second listing tells nothing more. A few trials
// of each kind here; DAMAGE_TRIALS=100 (scripts/damage-trials) for more.
class DamageTrials : public ReportFaults {
public:
    static constexpr int records = 50;

    struct Summary {
        int trials = 0;
        int told = 0;   // trials that found damage and said so
        int lost = 0;   // records not listed afterwards
        int untold = 0; // trials that lost records without the right count
        qint64 slowestMs = 0;
    };

    static int trialCount()
    {
        const int wanted = qEnvironmentVariableIntValue("DAMAGE_TRIALS");
        return wanted > 0 ? wanted : 3;
    }

    static quint32 seed()
    {
        static const quint32 value = qEnvironmentVariableIsSet("DAMAGE_SEED")
                                         ? quint32(qEnvironmentVariableIntValue("DAMAGE_SEED"))
                                         : QRandomGenerator::securelySeeded().generate();
        return value;
    }

    static QStringList homeFiles()
    {
        return {QStringLiteral("reports.sqlite"), QStringLiteral("reports.sqlite-wal"),
                QStringLiteral("reports.sqlite.state")};
    }

    // Copies the store's files from one home to another.
    static void copyStore(const QString& from, const QString& to)
    {
        for (const QString& name : homeFiles()) {
            if (QFileInfo(from + '/' + name).size() > 0) {
                ASSERT_TRUE(QFile::copy(from + '/' + name, to + '/' + name)) << name.toStdString();
            }
        }
    }

    // This test's home, filled with `records` saves. With `journal`, the
    // saves stay in the write-ahead journal beside the database (another
    // connection had it open meanwhile, as a running app does), and the
    // files are copied into `kept` as they were then.
    void fill(bool journal)
    {
        if (!journal) {
            ASSERT_EQ(runSaver(1, records).exitCode, 0);
            return;
        }
        ASSERT_EQ(runShippedCli(homePath, {"reports", "list"}).exitCode, 0); // makes the list
        withOwnConnection(homePath + QStringLiteral("/reports.sqlite"), [this](QSqlQuery& read) {
            ASSERT_TRUE(read.exec(QStringLiteral("SELECT count(*) FROM reports")) && read.next());
            read.finish();
            ASSERT_EQ(runSaver(1, records).exitCode, 0);
            ASSERT_GT(QFileInfo(homePath + QStringLiteral("/reports.sqlite-wal")).size(), 0);
            ASSERT_TRUE(kept.isValid());
            copyStore(homePath, kept.path());
        });
    }

    // The saved records' file names, as a listing of an undamaged copy gives.
    QStringList savedFiles(const QString& from)
    {
        QTemporaryDir copy;
        copyStore(from, copy.path());
        return listedFiles(runShippedCli(copy.path(), {"reports", "list", "--json"}).out);
    }

    // Where a byte may be damaged: offsets in the file.
    using Places = QList<qint64>;
    static Places range(qint64 first, qint64 end)
    {
        Places places;
        for (qint64 at = first; at < end; ++at)
            places << at;
        return places;
    }

    void trial(const QString& from, const QString& file, const Places& places,
               QRandomGenerator& random, const QStringList& saved, Summary& summary)
    {
        QTemporaryDir trialHome;
        const QString path = trialHome.filePath(file);
        copyStore(from, trialHome.path());
        QByteArray bytes = bytesOf(path);
        const qint64 at = places.at(random.bounded(qsizetype(places.size())));
        ASSERT_LT(at, bytes.size());
        bytes[at] = char(uchar(bytes[at]) ^ uchar(1 + random.bounded(255)));
        ASSERT_TRUE(writeBytes(path, bytes));
        const QString database = trialHome.filePath(QStringLiteral("reports.sqlite"));
        const QByteArray damagedDatabase = bytesOf(database);
        const QByteArray damagedJournal = bytesOf(database + QStringLiteral("-wal"));
        SCOPED_TRACE(QStringLiteral("byte %1 of %2").arg(at).arg(file).toStdString());

        const CliRun listing = runShippedCli(trialHome.path(), {"reports", "list", "--json"});
        ++summary.trials;
        summary.slowestMs = qMax(summary.slowestMs, listing.ms);
        EXPECT_EQ(listing.exitCode, 0) << listing.err.toStdString();
        EXPECT_LT(listing.ms, 2000);
        const QStringList listed = listedFiles(listing.out);
        const QSet<QString> unique(listed.cbegin(), listed.cend());
        EXPECT_EQ(unique.size(), listed.size()) << "a record listed twice";
        for (const QString& name : listed)
            EXPECT_TRUE(saved.contains(name))
                << "listed a record never saved: " << name.toStdString();
        const int lost = records - int(unique.size());
        summary.lost += lost;
        const std::optional<std::pair<int, int>> told = toldLost(listing.err);
        if (!listing.err.isEmpty())
            ++summary.told;
        if (lost > 0 && (!told || told->first != lost || told->second != records)) {
            ++summary.untold;
            ADD_FAILURE() << lost << " records lost, told: " << listing.err.toStdString();
        }
        if (lost == 0 && told) {
            EXPECT_EQ(told->first, 0) << listing.err.toStdString();
        }
        if (!listing.err.isEmpty()) {
            const QString copy = copyNamedIn(listing.err);
            EXPECT_EQ(bytesOf(copy), damagedDatabase) << listing.err.toStdString();
            if (damagedJournal != "<missing>" && !damagedJournal.isEmpty()) {
                EXPECT_EQ(bytesOf(copy + QStringLiteral("-wal")), damagedJournal);
            }
        }
        const CliRun again = runShippedCli(trialHome.path(), {"reports", "list", "--json"});
        EXPECT_TRUE(again.err.isEmpty()) << "told twice: " << again.err.toStdString();
        EXPECT_EQ(listedFiles(again.out), listed);
    }

    void runTrials(const char* kind, const QString& from, const QString& file, const Places& places)
    {
        const QStringList saved = savedFiles(from);
        ASSERT_EQ(saved.size(), records);
        QRandomGenerator random(seed());
        Summary summary;
        for (int i = 0; i < trialCount(); ++i)
            trial(from, file, places, random, saved, summary);
        std::cout << "damage trials, " << kind << " (seed " << seed() << "): " << summary.trials
                  << " trials, " << summary.told << " found damage and told it, " << summary.lost
                  << " of " << summary.trials * records << " records not read back, "
                  << summary.untold
                  << " trials losing records without their count, slowest listing "
                  << summary.slowestMs << " ms" << std::endl;
        EXPECT_EQ(summary.untold, 0);
    }

    QTemporaryDir kept;
};

TEST_F(DamageTrials, OneByteOfTheHeader)
{
    fill(false);
    runTrials("one byte of the 100-byte header", homePath, QStringLiteral("reports.sqlite"),
              range(0, 100));
}

// The root page of 50 records is an interior page: a 12-byte header, an
// array of cell pointers and, at its end, the cells (a child page and a key
// each); the rest is unused, and a byte changed there changes nothing. The
// trials change bytes of the used parts.
TEST_F(DamageTrials, OneUsedByteOfTheTablesRootPage)
{
    fill(false);
    qint64 root = 0;
    QTemporaryDir copy;
    copyStore(homePath, copy.path());
    withOwnConnection(copy.filePath(QStringLiteral("reports.sqlite")), [&](QSqlQuery& query) {
        ASSERT_TRUE(query.exec(QStringLiteral("SELECT rootpage FROM sqlite_master WHERE name = "
                                              "'reports'")) &&
                    query.next());
        root = query.value(0).toLongLong();
    });
    ASSERT_GT(root, 1);
    const qint64 start = (root - 1) * 4096;
    const QByteArray page = bytesOf(ReportStore::databasePath()).mid(start, 4096);
    ASSERT_EQ(page.size(), 4096);
    ASSERT_EQ(page[0], 0x05) << "the root is not an interior page";
    const auto u16 = [&page](int at) { return int(uchar(page[at])) << 8 | uchar(page[at + 1]); };
    const int cells = u16(3);
    const int content = u16(5);
    ASSERT_GT(cells, 0);
    const Places used = range(start, start + 12 + 2 * cells) + range(start + content, start + 4096);
    runTrials("one used byte of the table's root page", homePath, QStringLiteral("reports.sqlite"),
              used);
}

TEST_F(DamageTrials, OneByteOfTheJournal)
{
    fill(true);
    const qint64 size = QFileInfo(kept.filePath(QStringLiteral("reports.sqlite-wal"))).size();
    runTrials("one byte of the write-ahead journal", kept.path(),
              QStringLiteral("reports.sqlite-wal"), range(0, size));
}

// A random 20 kB file where the database belongs: told at once, kept as it
// was under a new name, and a new list takes saves.
TEST_F(ReportFaults, ARandomFileAsTheDatabaseIsToldWithinTwoSecondsAndSetAside)
{
    QByteArray noise(20000, Qt::Uninitialized);
    for (char& byte : noise)
        byte = char(QRandomGenerator::global()->bounded(256));
    ASSERT_TRUE(writeBytes(ReportStore::databasePath(), noise));

    const CliRun listing = runShippedCli(homePath, {"reports", "list"});
    EXPECT_EQ(listing.exitCode, 0) << listing.err.toStdString();
    EXPECT_LT(listing.ms, 2000);
    EXPECT_TRUE(listing.out.isEmpty());
    EXPECT_TRUE(listing.err.startsWith("The saved reports could not be read; a copy was kept as "))
        << listing.err.toStdString();
    EXPECT_TRUE(listing.err.contains("No saved report could be read from it."));
    EXPECT_EQ(bytesOf(copyNamedIn(listing.err)), noise);

    const SaverOutput later = runSaver(1, 1);
    EXPECT_EQ(later.exitCode, 0) << later.failure.toStdString();
    EXPECT_EQ(stored().size(), 1);
}

// What the state file beside the database has seen tells a lost database
// from a home that never had one.
TEST_F(ReportFaults, AnEmptyOrMissingDatabaseIsToldApartFromANewHome)
{
    const CliRun fresh = runShippedCli(homePath, {"reports", "list"});
    EXPECT_EQ(fresh.exitCode, 0);
    EXPECT_TRUE(fresh.err.isEmpty()) << fresh.err.toStdString();
    ASSERT_EQ(runSaver(1, 3).exitCode, 0);

    ASSERT_TRUE(writeBytes(ReportStore::databasePath(), {}));
    const CliRun emptied = runShippedCli(homePath, {"reports", "list"});
    EXPECT_EQ(emptied.exitCode, 0);
    EXPECT_TRUE(emptied.err.contains("None of the 3 saved reports could be read."))
        << emptied.err.toStdString();
    EXPECT_TRUE(QFileInfo::exists(copyNamedIn(emptied.err)));
    EXPECT_TRUE(runShippedCli(homePath, {"reports", "list"}).err.isEmpty()) << "told once";

    ASSERT_EQ(runSaver(2, 2).exitCode, 0);
    ASSERT_TRUE(QFile::remove(ReportStore::databasePath()));
    const CliRun missing = runShippedCli(homePath, {"reports", "list"});
    EXPECT_EQ(missing.exitCode, 0);
    EXPECT_TRUE(missing.err.contains("is missing; the 2 saved reports it held could not be read."))
        << missing.err.toStdString();
    EXPECT_TRUE(runShippedCli(homePath, {"reports", "list"}).err.isEmpty()) << "told once";

    // An empty file in a home that never had a list is a database another
    // process is making right now: a new home.
    QTemporaryDir other;
    ASSERT_TRUE(writeBytes(other.filePath(QStringLiteral("reports.sqlite")), {}));
    const CliRun making = runShippedCli(other.path(), {"reports", "list"});
    EXPECT_EQ(making.exitCode, 0);
    EXPECT_TRUE(making.err.isEmpty()) << making.err.toStdString();
}

// A damaged database that another Tallyvane program has open (this test
// process, as a running app) is not replaced under it: the records are
// shown, changes refused, and the repair made once the other one closes.
TEST_F(ReportFaults, ADamagedDatabaseInUseElsewhereIsShownAndRepairedOnceFree)
{
    ASSERT_EQ(runSaver(1, 3).exitCode, 0);
    ASSERT_TRUE(ReportStore::rows());
    QByteArray bytes = bytesOf(ReportStore::databasePath());
    bytes[0] = 'X';
    ASSERT_TRUE(writeBytes(ReportStore::databasePath(), bytes));

    const CliRun listing = runShippedCli(homePath, {"reports", "list"});
    EXPECT_EQ(listing.exitCode, 0);
    EXPECT_EQ(listing.out.count('\n'), 3);
    EXPECT_TRUE(listing.err.contains("could not be repaired (another Tallyvane program is using "
                                     "them; close it and try again). All 3 saved reports could be "
                                     "read and are shown."))
        << listing.err.toStdString();
    const CliRun removal = runShippedCli(homePath, {"reports", "delete", "0"});
    EXPECT_EQ(removal.exitCode, 1);
    EXPECT_TRUE(removal.err.contains("cannot be changed until they are repaired"))
        << removal.err.toStdString();
    EXPECT_TRUE(QDir(homePath).entryList({QStringLiteral("reports-damaged-*")}).isEmpty());

    ReportStore::close();
    const CliRun repaired = runShippedCli(homePath, {"reports", "list"});
    EXPECT_EQ(repaired.out.count('\n'), 3);
    EXPECT_TRUE(
        repaired.err.contains("All 3 saved reports could be read and are in the list again."))
        << repaired.err.toStdString();
    EXPECT_EQ(bytesOf(copyNamedIn(repaired.err)), bytes);
}

// Listing, showing and exporting read the store without writing a byte:
// on a full disk and on a read-only home they work; a deletion is refused
// with the reason.
void expectReadableButNotChangeable(const QString& home, const QString& outside, const char* reason)
{
    const CliRun listing = runShippedCli(home, {"reports", "list"});
    EXPECT_EQ(listing.exitCode, 0) << listing.err.toStdString();
    EXPECT_TRUE(listing.err.isEmpty()) << listing.err.toStdString();
    EXPECT_EQ(listing.out.count('\n'), 3);
    const CliRun shown = runShippedCli(home, {"reports", "show", "0"});
    EXPECT_EQ(shown.exitCode, 0) << shown.err.toStdString();
    EXPECT_TRUE(shown.out.contains("Investment: 100002")) << shown.out.toStdString();
    const CliRun exported = runShippedCli(home, {"reports", "pdf", "0", outside});
    EXPECT_EQ(exported.exitCode, 0) << exported.err.toStdString();
    EXPECT_TRUE(bytesOf(outside).startsWith("%PDF"));
    const CliRun removal = runShippedCli(home, {"reports", "delete", "0"});
    EXPECT_EQ(removal.exitCode, 1);
    EXPECT_TRUE(removal.err.contains(reason)) << removal.err.toStdString();
    EXPECT_EQ(runShippedCli(home, {"reports", "list"}).out.count('\n'), 3);
}

TEST_F(ReportFaults, AFullDiskStillListsShowsAndExports)
{
    if (!useSmallDisk(QStringLiteral("400k")))
        GTEST_SKIP() << "cannot mount a small tmpfs here (needs root)";
    ASSERT_EQ(runSaver(1, 3).exitCode, 0);
    QFile filler(smallDisk + QStringLiteral("/filler"));
    ASSERT_TRUE(filler.open(QIODevice::WriteOnly));
    const QByteArray block(4096, 'x');
    for (int i = 0; i < 1000 && filler.write(block) == block.size() && filler.flush(); ++i) {
    }
    filler.close();
    ASSERT_LT(QStorageInfo(smallDisk).bytesAvailable(), 4096) << "the disk did not fill";
    expectReadableButNotChangeable(smallDisk, home.filePath(QStringLiteral("full.pdf")),
                                   "the disk is full");
}

TEST_F(ReportFaults, AReadOnlyHomeStillListsShowsAndExports)
{
    ASSERT_EQ(runSaver(1, 3).exitCode, 0);
    QTemporaryDir outside;
    const QString readOnly = outside.filePath(QStringLiteral("home"));
    QDir().mkpath(readOnly);
    // As root permissions do not stop writes: a read-only view of the home.
    const bool mounted =
        run(QStringLiteral("mount"), {QStringLiteral("--bind"), homePath, readOnly}) &&
        run(QStringLiteral("mount"),
            {QStringLiteral("-o"), QStringLiteral("remount,ro,bind"), readOnly});
    const auto undo = qScopeGuard([&] {
        if (mounted)
            run(QStringLiteral("umount"), {readOnly});
        for (const QString& path : {homePath, homePath + QStringLiteral("/Documents")})
            QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    });
    QString reportsHome = readOnly;
    if (!mounted) {
        if (::geteuid() == 0)
            GTEST_SKIP() << "cannot mount a read-only view here";
        for (const QString& path : {homePath + QStringLiteral("/Documents"), homePath})
            ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner));
        reportsHome = homePath;
    }
    const QStringList before = QDir(homePath).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    expectReadableButNotChangeable(reportsHome, outside.filePath(QStringLiteral("ro.pdf")),
                                   "is read-only");
    EXPECT_EQ(QDir(homePath).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), before);
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
