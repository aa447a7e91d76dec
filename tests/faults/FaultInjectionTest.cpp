// Saved reports under faults: processes saving at once, a full disk, a
// saver killed mid-write and damaged bytes. Each case starts from a fresh
// home and drives real processes (tallyvane_report_saver, which saves the
// way "tallyvane-cli calc roi ... --save" does); the outcome is read back
// from the database directly.
#include "reports/QVReport.h"
#include "reports/ReportStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QThread>
#include <csignal>
#include <future>
#include <gtest/gtest.h>
#include <thread>

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
        QSqlDatabase::removeDatabase(QStringLiteral("fault-check"));
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

    SaverOutput runSaver(int tag, int count, const QByteArray& fileSizeLimit = {})
    {
        return finish(startSaver(tag, count, fileSizeLimit));
    }

    // The database read directly, newest first, after checking it whole.
    QList<Stored> stored()
    {
        QList<Stored> records;
        const QString name = QStringLiteral("fault-check");
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            db.setDatabaseName(homePath + QStringLiteral("/reports.sqlite"));
            EXPECT_TRUE(db.open()) << db.lastError().text().toStdString();
            QSqlQuery query(db);
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
            query.finish();
            db.close();
        }
        QSqlDatabase::removeDatabase(name);
        return records;
    }

    QString documents() const { return homePath + QStringLiteral("/Documents"); }

    QByteArray fileOf(const QVReport& report) const
    {
        QFile file(documents() + QLatin1Char('/') + report.fileName);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
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
    QDir(home.path()).mkpath(QStringLiteral("small"));
    const QString mountPoint = home.filePath(QStringLiteral("small"));
    QProcess mount;
    mount.start(QStringLiteral("mount"),
                {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                 QStringLiteral("size=160k"), QStringLiteral("tmpfs"), mountPoint});
    if (!mount.waitForFinished(10000) || mount.exitStatus() != QProcess::NormalExit ||
        mount.exitCode() != 0)
        GTEST_SKIP() << "cannot mount a small tmpfs here (needs root): the size-limited "
                        "file case below covers a full disk instead";
    const auto unmount = qScopeGuard([&] {
        ReportStore::close();
        QProcess::execute(QStringLiteral("umount"), {mountPoint});
    });
    useHome(mountPoint);
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
        ::kill(pid_t(saver->processId()), SIGKILL);
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
    // The next save after all that lands at the head.
    const SaverOutput after = runSaver(99, 1);
    EXPECT_EQ(after.exitCode, 0) << after.failure.toStdString();
    EXPECT_EQ(stored().value(0).investment, 9900000);
}

// Another process is writing to a new database, as a second saver that
// was a little quicker does: turning the database to WAL is refused at once
// meanwhile, so opening tries again until that write ends instead of
// failing the save.
TEST_F(ReportFaults, OpeningANewDatabaseWaitsWhileAnotherConnectionHoldsIt)
{
    std::promise<void> locked;
    std::thread holder([&] {
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), "holder");
            db.setDatabaseName(ReportStore::databasePath());
            QSqlQuery query(db);
            const bool held = db.open() && query.exec(QStringLiteral("BEGIN IMMEDIATE")) &&
                              query.exec(QStringLiteral("CREATE TABLE other (x)"));
            locked.set_value();
            QThread::msleep(300);
            EXPECT_TRUE(held && query.exec(QStringLiteral("COMMIT")));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("holder"));
    });
    locked.get_future().wait();
    const WriteResult result = ReportStore::createList();
    holder.join();
    EXPECT_TRUE(result.ok()) << result.error.toStdString();
    EXPECT_TRUE(ReportStore::insertAtHead("one").ok());
}

// A damaged page rather than damaged record bytes: the link from a long
// record's first overflow page to its next one points past the end of the
// file, so the table cannot be read in one pass. The record on that page
// reads empty; the records before and after it still read whole.
TEST_F(ReportFaults, ADamagedPageOfTheTableHidesOnlyTheRecordOnIt)
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

    const auto rows = ReportStore::rows();
    ASSERT_TRUE(rows);
    ASSERT_EQ(rows->size(), 3);
    EXPECT_EQ(rows->at(0).archive, archives[0]);
    EXPECT_TRUE(rows->at(1).archive.isEmpty());
    EXPECT_EQ(rows->at(2).archive, archives[2]);
    EXPECT_GT(rows->at(0).id, rows->at(1).id);
    EXPECT_GT(rows->at(1).id, rows->at(2).id);
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

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
