#include "store/QVReport.h"

#include "TestSupport.h"
#include "platform/Services.h"
#include "platform/SettingsStore.h"
#include "reports/ReportTableModel.h"
#include "store/QVFileManager.h"
#include "store/ReportStore.h"
#include "support/OwnConnection.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborValue>
#include <QProcess>
#include <QRandomGenerator>

namespace {

QVReport sample(const QString& title, const QDateTime& date)
{
    QVReport r;
    r.title = title;
    r.date = date;
    r.functionTitle = QStringLiteral("Roi");
    r.contents = QStringLiteral("Financial Report - Return on Investment\n");
    r.fileName = QStringLiteral("roi_%1_report.txt").arg(title);
    r.colorTag = QVReport::colorFromHexString(QStringLiteral("#1FDA9A"));
    return r;
}

QStringList storedTitles()
{
    QStringList titles;
    for (const QByteArray& item : QVReport::storedReportList().value_or(QList<QByteArray>()))
        titles << QVReport::fromArchive(item).title;
    return titles;
}

// Reads red, green and blue after the first character, whatever it is, up to
// the first non-hex character; keeps the low 24 bits, saturating past 32.
TEST(ColorFromHexString, ReadsTheLow24BitsAfterTheFirstCharacter)
{
    const struct {
        const char* text;
        Rgba colour;
    } cases[] = {
        {"#354458", Rgba(0x35, 0x44, 0x58)},
        {"354458", Rgba(0x05, 0x44, 0x58)},
        {"#FFF", Rgba(0, 15, 255)},
        {"#12zz34", Rgba(0, 0, 0x12)},
        {"#", Rgba(0, 0, 0)},
        {"", Rgba(0, 0, 0)},
        {"#AB123456", Rgba(0x12, 0x34, 0x56)},
        {"#123456789", Rgba(255, 255, 255)},
    };
    for (const auto& c : cases)
        EXPECT_EQ(QVReport::colorFromHexString(c.text), c.colour) << c.text;
    EXPECT_EQ(QVReport().colorTag, Rgba(0x35, 0x44, 0x58)) << "a new record carries #354458";
}

class ReportStoreTest : public HomeTest {};

TEST_F(ReportStoreTest, ArchiveKeepsSixKeysInOrderAndRoundTrips)
{
    QVReport r = sample("Plan A", now);
    const QCborMap map = QCborValue::fromCbor(r.archive()).toMap();
    QStringList keys;
    for (auto it = map.begin(); it != map.end(); ++it)
        keys << it.key().toString();
    EXPECT_EQ(keys,
              QStringList({"title", "functionTitle", "date", "contents", "fileName", "colorTag"}));
    EXPECT_EQ(map.value("colorTag").toString(), "#1FDA9AFF");
    // 2024-03-05 14:07:30.250 in Berlin is 13:07:30.250 UTC.
    const double expectedSeconds =
        QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC).msecsTo(now) / 1000.0;
    EXPECT_DOUBLE_EQ(map.value("date").toDouble(), expectedSeconds);

    // Every field, the date to the millisecond, comes back as it went in.
    EXPECT_EQ(QVReport::fromArchive(r.archive()).archive(), r.archive());
}

TEST_F(ReportStoreTest, MissingKeysStayEmptyAndGarbageGivesAnEmptyRecord)
{
    QCborMap partial;
    partial.insert(QStringLiteral("title"), QStringLiteral("Only a title"));
    const QVReport fromPartial = QVReport::fromArchive(QCborValue(partial).toCbor());
    EXPECT_EQ(fromPartial.title, "Only a title");
    EXPECT_FALSE(fromPartial.date.isValid());
    EXPECT_TRUE(fromPartial.fileName.isEmpty());

    auto* rng = QRandomGenerator::global();
    for (int round = 0; round < 200; ++round) {
        QByteArray junk(rng->bounded(0, 64), Qt::Uninitialized);
        for (char& c : junk)
            c = char(rng->bounded(256));
        const QVReport r = QVReport::fromArchive(junk);
        (void)r.dateString();
        (void)r.filePathInDocumentsDirectory();
    }
    const QVReport empty = QVReport::fromArchive("\xff\x00garbage");
    EXPECT_TRUE(empty.title.isEmpty());
    EXPECT_FALSE(empty.colorTag.isValid()) << "no colour for an unreadable record";

    // Extreme archived dates do not break reading either.
    for (double seconds : {1e300, -1e300, std::nan(""), 0.0}) {
        QCborMap map;
        map.insert(QStringLiteral("date"), seconds);
        (void)QVReport::fromArchive(QCborValue(map).toCbor()).dateString();
    }
}

TEST_F(ReportStoreTest, SavingBeforeTheListExistsIsLostAfterwardsGoesToTheHead)
{
    EXPECT_FALSE(QVReport::saveReport(sample("lost", now)).ok());
    EXPECT_FALSE(QVReport::storedReportList());

    ReportTableModel list; // creates the empty list
    EXPECT_TRUE(QVReport::storedReportList());
    EXPECT_TRUE(QVReport::saveReport(sample("first", now.addSecs(1))).ok());
    QVReport::saveReport(sample("second", now.addSecs(2)));
    EXPECT_EQ(storedTitles(), QStringList({"second", "first"}));
}

TEST_F(ReportStoreTest, RemoveWithDateMatchesToTheMillisecondAndSkipsARecordThatSlidIn)
{
    ReportTableModel list;
    const QDateTime same = now;
    QVReport::saveReport(sample("old", now.addSecs(-60)));
    QVReport::saveReport(sample("twin-b", same));
    QVReport::saveReport(sample("twin-a", same));
    QVReport::saveReport(sample("new", now.addSecs(60)));

    QVReport::removeReportWithDate(same);
    EXPECT_EQ(storedTitles(), QStringList({"new", "twin-b", "old"}));
    QVReport::removeReportWithDate(same);
    EXPECT_EQ(storedTitles(), QStringList({"new", "old"}));
    QVReport::removeReportWithDate(now.addSecs(3600));
    EXPECT_EQ(storedTitles(), QStringList({"new", "old"}));
    // Dates match to the millisecond.
    QVReport::removeReportWithDate(now.addSecs(60).addMSecs(1));
    EXPECT_EQ(storedTitles(), QStringList({"new", "old"}));
    QVReport::removeReportWithDate(now.addSecs(60));
    EXPECT_EQ(storedTitles(), QStringList({"old"}));
}

TEST_F(ReportStoreTest, ASaveByAnotherInstanceBetweenTwoSavesIsKept)
{
    ReportTableModel list;
    QVReport::saveReport(sample("mine-1", now));

    // A second copy of the app, in its own process, saves in between.
    QProcess other;
    other.start(QStringLiteral(OTHER_INSTANCE_PATH), {QStringLiteral("theirs")});
    ASSERT_TRUE(other.waitForFinished(30000));
    ASSERT_EQ(other.exitCode(), 0);

    QVReport::saveReport(sample("mine-2", now.addSecs(10)));
    EXPECT_EQ(storedTitles(), QStringList({"mine-2", "theirs", "mine-1"}));

    ReportStore::close();
    EXPECT_EQ(storedTitles().size(), 3) << "on disk";
}

// A report's text file is entered as in the making before it is written
// and leaves that state with its record. At the next start, the files left
// in the making by a process that has ended go, and nothing else does.
TEST_F(ReportStoreTest, FilesLeftInTheMakingByAnEndedProcessGoAtTheNextStartAndNothingElse)
{
    ReportTableModel list;
    const QString folder = documents() + QLatin1Char('/');
    const auto write = [&](const QString& name) {
        ASSERT_TRUE(QVFileManager::saveFileToDocumentsDirectoryWithContents(name, "text"));
    };
    const auto entries = [] {
        QStringList names;
        withOwnConnection(ReportStore::databasePath(), [&](QSqlQuery& query) {
            EXPECT_TRUE(query.exec(QStringLiteral("SELECT name FROM pending_files ORDER BY name")));
            while (query.next())
                names << query.value(0).toString();
        });
        return names;
    };

    // Saves of this process: a name taken by a file, then by a save still
    // in the making, goes on to the next number.
    write("roi_Plan_report.txt");
    QString first = "roi_Plan_report.txt";
    ReportStore::reserveReportFile(first);
    EXPECT_EQ(first, "roi_Plan (2)_report.txt");
    QString second = "roi_Plan_report.txt";
    ReportStore::reserveReportFile(second);
    EXPECT_EQ(second, "roi_Plan (3)_report.txt");
    write(first);
    write(second);
    QVReport saved = sample("saved", now);
    saved.fileName = first;
    ASSERT_TRUE(QVReport::saveReport(saved).ok());
    EXPECT_EQ(entries(), QStringList({second})) << "the record took its file out of the making";

    // Entries of a process that has ended (on an earlier boot of the
    // machine), as a save killed between its file and its record leaves.
    withOwnConnection(ReportStore::databasePath(), [](QSqlQuery& insert) {
        insert.prepare(QStringLiteral("INSERT INTO pending_files VALUES (?, ?, ?)"));
        for (const char* name : {"killed_report.txt", "named_report.txt", "notes.txt",
                                 "older_report.txt", "unwritten_report.txt"}) {
            insert.addBindValue(QString::fromLatin1(name));
            insert.addBindValue(QStringLiteral("00000000-0000-0000-0000-000000000000:4242:1"));
            insert.addBindValue(QDateTime::currentMSecsSinceEpoch());
            ASSERT_TRUE(insert.exec());
        }
    });
    for (const char* name : {"killed_report.txt", "killed_chart.png", "named_report.txt",
                             "notes.txt", "older_report.txt", "deleted_report.txt"})
        write(name);
    QFile older(folder + "older_report.txt");
    ASSERT_TRUE(older.open(QIODevice::ReadWrite));
    ASSERT_TRUE(older.setFileTime(QDateTime::currentDateTime().addSecs(-3600),
                                  QFileDevice::FileModificationTime));
    older.close();
    QVReport named = sample("named", now.addSecs(1));
    named.fileName = "named_report.txt";
    ASSERT_TRUE(QVReport::saveReport(named).ok());

    ReportStore::close();
    list.loadReportArray(); // the next start
    QStringList kept = QVFileManager::filesInDocumentsDirectory();
    kept.sort();
    EXPECT_EQ(kept, QStringList({"deleted_report.txt", "named_report.txt", "notes.txt",
                                 "older_report.txt", "roi_Plan (2)_report.txt",
                                 "roi_Plan (3)_report.txt", "roi_Plan_report.txt"}))
        << "only the killed save's text and chart go; a save of a running process stays";
    EXPECT_EQ(entries(), QStringList({second}));
}

// A list made before the bookkeeping row existed (the table alone) is
// taken as it is: nothing is told, its records stay, and from the first
// change on its numbers are kept, so that a row hidden later is found.
TEST_F(ReportStoreTest, AListWithoutBookkeepingIsTakenAsItIsAndCountedFromThen)
{
    withOwnConnection(ReportStore::databasePath(), [this](QSqlQuery& query) {
        ASSERT_TRUE(query.exec("PRAGMA journal_mode=WAL"));
        ASSERT_TRUE(query.exec("CREATE TABLE reports (id INTEGER PRIMARY KEY AUTOINCREMENT, "
                               "archive BLOB NOT NULL, checksum INTEGER NOT NULL)"));
        for (const char* title : {"old", "older"}) {
            const QByteArray archive = sample(title, now).archive();
            query.prepare("INSERT INTO reports (archive, checksum) VALUES (?, ?)");
            query.addBindValue(archive);
            query.addBindValue(ReportStore::checksumOf(archive));
            ASSERT_TRUE(query.exec());
        }
    });

    EXPECT_EQ(storedTitles(), QStringList({"older", "old"}));
    EXPECT_TRUE(ReportStore::takeNotice().isEmpty());
    ASSERT_TRUE(QVReport::saveReport(sample("new", now)).ok());
    ReportStore::close();
    EXPECT_EQ(storedTitles(), QStringList({"new", "older", "old"}));
    EXPECT_TRUE(ReportStore::takeNotice().isEmpty());
    withOwnConnection(ReportStore::databasePath(), [](QSqlQuery& query) {
        ASSERT_TRUE(query.exec("SELECT records FROM list_state") && query.next());
        EXPECT_EQ(query.value(0).toInt(), 3);
    });
}

TEST_F(ReportStoreTest, DateStringNamesTodayAndYesterday)
{
    QVReport r;
    r.date = QDateTime::currentDateTime();
    EXPECT_TRUE(r.dateString().startsWith("Today ")) << r.dateString().toStdString();
    r.date = QDateTime::currentDateTime().addDays(-1);
    EXPECT_TRUE(r.dateString().startsWith("Yesterday "));
    r.date = QDateTime(QDate(2024, 3, 5), QTime(14, 7, 30));
    EXPECT_TRUE(r.dateString().contains("14:07:30")) << r.dateString().toStdString();
    EXPECT_TRUE(QVReport().dateString().isEmpty());
}

} // namespace

namespace {

// Copies a list written by the version before reports kept their inputs
// (tests/store/fixtures/before-inputs: three reports saved by that version's
// command line: ROI, an amortization and a tip) into the test's home.
void installListBeforeInputs(const QString& home)
{
    const QDir fixture(QStringLiteral(TALLYVANE_TEST_SOURCE_DIR "/store/fixtures/before-inputs"));
    ASSERT_TRUE(fixture.exists());
    for (const QString& name :
         {QStringLiteral("reports.sqlite"), QStringLiteral("reports.sqlite.state")})
        ASSERT_TRUE(QFile::copy(fixture.filePath(name), home + QLatin1Char('/') + name));
    QDir(home).mkpath(QStringLiteral("Documents"));
    const QDir documents(fixture.filePath(QStringLiteral("Documents")));
    for (const QString& name : documents.entryList(QDir::Files))
        ASSERT_TRUE(
            QFile::copy(documents.filePath(name), home + QStringLiteral("/Documents/") + name));
}

int storedSchemaVersion()
{
    int version = -1;
    withOwnConnection(ReportStore::databasePath(), [&](QSqlQuery& query) {
        if (query.exec(QStringLiteral("PRAGMA user_version")) && query.next())
            version = query.value(0).toInt();
    });
    return version;
}

} // namespace

// A list written before reports kept their inputs reads as it did (no
// calculator, no inputs); the first save from then on moves it to schema 2
// and keeps the calculator and inputs with the new record, the old records
// untouched.
TEST_F(ReportStoreTest, AListFromBeforeInputsReadsAsItDidAndTakesRecordsWithInputs)
{
    ReportStore::close();
    installListBeforeInputs(home.path());
    {
        ReportTableModel list;
        ASSERT_TRUE(list.loadError().isEmpty()) << list.loadError().toStdString();
        ASSERT_EQ(list.count(), 3);
        EXPECT_EQ(list.reportAt(0).title, "Old tip");
        EXPECT_EQ(list.reportAt(2).title, "Old ROI");
        for (int i = 0; i < 3; ++i) {
            EXPECT_TRUE(list.reportAt(i).calculator.isEmpty());
            EXPECT_TRUE(list.reportAt(i).inputs.isEmpty());
            EXPECT_TRUE(list.reportAt(i).damagedInputs.isEmpty());
        }
    }
    EXPECT_EQ(storedSchemaVersion(), 0) << "reading changes nothing";
    const QByteArray oldest = QVReport::storedReportList()->last();

    QVReport report = sample(QStringLiteral("New"), fixedNow());
    report.calculator = QStringLiteral("roi");
    report.inputs = {{QStringLiteral("investmentAmount"), QStringLiteral("1000")},
                     {QStringLiteral("cashArray"), QStringList{"-100", "", "110"}}};
    ASSERT_TRUE(QVReport::saveReport(report).ok());
    EXPECT_EQ(storedSchemaVersion(), ReportStore::schemaVersion);
    ReportStore::close();

    ReportTableModel list;
    ASSERT_EQ(list.count(), 4);
    const QVReport back = list.reportAt(0);
    EXPECT_EQ(back.calculator, "roi");
    EXPECT_EQ(back.inputs, report.inputs) << "a table keeps its empty rows in place";
    EXPECT_EQ(list.reportAt(3).title, "Old ROI");
    EXPECT_EQ(QVReport::storedReportList()->last(), oldest) << "an old record is left as it was";
}

// Inputs that are neither texts nor lists of texts (a damaged or foreign
// archive) are left out and named; the rest of the record and of the inputs
// reads as usual.
TEST(ReportArchive, InputsThatAreNotTextsAreNamedAndLeftOut)
{
    QCborMap inputs;
    inputs.insert(QStringLiteral("rate"), QStringLiteral("6.5"));
    inputs.insert(QStringLiteral("years"), 30);
    inputs.insert(QStringLiteral("cashArray"), QCborArray{QStringLiteral("1"), 2});
    inputs.insert(QStringLiteral("dates"), QCborArray{QStringLiteral("2027-01-01")});
    QCborMap map;
    map.insert(QStringLiteral("title"), QStringLiteral("Loan"));
    map.insert(QStringLiteral("calculator"), QStringLiteral("amortization"));
    map.insert(QStringLiteral("inputs"), inputs);
    const QVReport report = QVReport::fromArchive(QCborValue(map).toCbor());
    EXPECT_EQ(report.title, "Loan");
    EXPECT_EQ(report.calculator, "amortization");
    EXPECT_EQ(report.inputs, (QVariantMap{{"rate", "6.5"}, {"dates", QStringList{"2027-01-01"}}}));
    EXPECT_EQ(report.damagedInputs, (QStringList{"years", "cashArray"})) << "in stored order";
    // A record without a calculator writes no inputs: its archive has the
    // keys it always had.
    QVReport plain = report;
    plain.calculator.clear();
    const QCborMap written = QCborValue::fromCbor(plain.archive()).toMap();
    EXPECT_FALSE(written.contains(QStringLiteral("calculator")));
    EXPECT_FALSE(written.contains(QStringLiteral("inputs")));
    EXPECT_TRUE(written.contains(QStringLiteral("colorTag")));
}
