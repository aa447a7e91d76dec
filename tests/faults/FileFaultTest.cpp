// The files around the saved reports under abuse, through the shipped
// tallyvane-cli as a process on a fresh home each time: "reports pdf" aimed
// at the database, a report's own files, pipes, devices, folders and links;
// a report's text or chart that is a pipe, a link out of the documents
// folder or far too large; and a file-size limit (ulimit -f) on the
// program itself.
#include "ShippedCli.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace {

// One whole picture, 1 x 1 pixel, as a PNG file holds it (written by hand:
// signature, IHDR, one zlib-compressed IDAT row, IEND).
const QByteArray png = QByteArray::fromHex(
    "89504e470d0a1a0a0000000d4948445200000001000000010802000000907753de0000000c4944415478"
    "9c63f8cfc0000003010100c9fe92ef0000000049454e44ae426082");

// A PDF holds a picture as an image XObject.
bool hasImage(const QByteArray& pdf)
{
    return pdf.contains("/Subtype /Image");
}

class FileFaults : public ::testing::Test {
public:
    void SetUp() override
    {
        ASSERT_TRUE(root.isValid());
        freshHome();
    }

    // A new, empty home for the next case.
    void freshHome()
    {
        homePath = root.filePath(QString::number(++homes));
        ASSERT_TRUE(QDir().mkpath(homePath));
    }

    CliRun cli(const QStringList& args, rlim_t fileSizeLimit = 0)
    {
        return runShippedCli(homePath, args, fileSizeLimit);
    }

    // Saves one report "A" and returns the path of its text file.
    QString saveReport()
    {
        const CliRun saved = cli(
            {"calc", "roi", "investmentAmount=1000", "futureValue=1250", "years=2", "--save", "A"});
        EXPECT_EQ(saved.exitCode, 0) << saved.err.toStdString();
        const QJsonArray list =
            QJsonDocument::fromJson(cli({"reports", "list", "--json"}).out.toUtf8()).array();
        EXPECT_EQ(list.size(), 1);
        return documents() + QLatin1Char('/') + list.at(0).toObject()["fileName"].toString();
    }

    QString documents() const { return path("Documents"); }
    QString path(const char* name) const
    {
        return homePath + QLatin1Char('/') + QLatin1String(name);
    }
    static QString chartOf(const QString& text)
    {
        return text.chopped(int(qstrlen("_report.txt"))) + QStringLiteral("_chart.png");
    }

    // Every entry under the home but the database's own files (which any
    // run may open and close), with its kind and contents.
    QStringList snapshot() const
    {
        QStringList entries;
        QDirIterator it(homePath,
                        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString entry = it.next();
            if (entry.contains(QLatin1String("/reports.sqlite")))
                continue;
            struct stat info {};
            ::lstat(QFile::encodeName(entry).constData(), &info);
            QString line = QStringLiteral("%1 %2").arg(entry).arg(info.st_mode, 0, 8);
            if (S_ISREG(info.st_mode))
                line += QLatin1Char(' ') +
                        QCryptographicHash::hash(bytesOf(entry), QCryptographicHash::Sha1).toHex();
            entries << line;
        }
        entries.sort();
        return entries;
    }

    QTemporaryDir root;
    QString homePath;
    int homes = 0;
};

// "reports pdf" is aimed at something it must never write over. Each case
// runs on its own fresh home with one saved report; nothing may change, the
// list and the report must read as before, and the program says why.
TEST_F(FileFaults, ReportsPdfNeverWritesOverTheStoreAReportsFilesOrAnythingButARegularFile)
{
    struct Case {
        const char* name;
        // Makes the target in a home whose one report has the text file
        // given; returns the path to aim at.
        std::function<QString(FileFaults&, const QString& text)> make;
        bool force;
        const char* says;
    };
    const bool root = ::geteuid() == 0;
    const std::vector<Case> cases = {
        {"the database", [](FileFaults& t, const QString&) { return t.path("reports.sqlite"); },
         true, "is the saved-reports database; it is never written over."},
        {"the database by another spelling",
         [](FileFaults& t, const QString&) { return t.path("Documents/../reports.sqlite"); }, true,
         "is the saved-reports database"},
        {"the database's journal (not there now)",
         [](FileFaults& t, const QString&) { return t.path("reports.sqlite-wal"); }, true,
         "belongs to the saved-reports database; it is never written over."},
        {"a report's text file", [](FileFaults&, const QString& text) { return text; }, true,
         "is a file of saved report 0; it is never written over."},
        {"a report's chart",
         [](FileFaults&, const QString& text) {
             EXPECT_TRUE(writeBytes(chartOf(text), png));
             return chartOf(text);
         },
         true, "is a file of saved report 0"},
        {"a hard link to a report's text",
         [](FileFaults& t, const QString& text) {
             EXPECT_EQ(::link(QFile::encodeName(text).constData(),
                              QFile::encodeName(t.path("linked.txt")).constData()),
                       0);
             return t.path("linked.txt");
         },
         true, "is a file of saved report 0"},
        {"a pipe",
         [](FileFaults& t, const QString&) {
             EXPECT_EQ(::mkfifo(QFile::encodeName(t.path("pipe")).constData(), 0600), 0);
             return t.path("pipe");
         },
         true, "is a pipe (FIFO), not a regular file; it is never written over."},
        // A device of one's own needs root; /dev/null is one anyone can aim at.
        {"a device",
         [root](FileFaults& t, const QString&) {
             if (!root)
                 return QStringLiteral("/dev/null");
             EXPECT_EQ(::mknod(QFile::encodeName(t.path("null")).constData(), S_IFCHR | 0600,
                               makedev(1, 3)),
                       0);
             return t.path("null");
         },
         true, "is a device, not a regular file; it is never written over."},
        {"a folder",
         [](FileFaults& t, const QString&) {
             QDir(t.homePath).mkdir("folder");
             return t.path("folder");
         },
         true, "is a folder, not a regular file"},
        {"a link to a regular file",
         [](FileFaults& t, const QString&) {
             EXPECT_TRUE(writeBytes(t.path("plain.pdf"), "kept"));
             QFile::link(t.path("plain.pdf"), t.path("link.pdf"));
             return t.path("link.pdf");
         },
         true, "is a link, not a regular file"},
        {"a regular file without --force",
         [](FileFaults& t, const QString&) {
             EXPECT_TRUE(writeBytes(t.path("plain.pdf"), "kept"));
             return t.path("plain.pdf");
         },
         false, "already exists; add --force to write over it."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        freshHome();
        const QString text = saveReport();
        const QString target = c.make(*this, text);
        struct stat before {};
        ASSERT_EQ(::lstat(QFile::encodeName(target).constData(), &before) == 0,
                  !QString(c.name).contains("not there"))
            << target.toStdString();
        const QStringList files = snapshot();
        const QString list = cli({"reports", "list", "--json"}).out;
        const QString shown = cli({"reports", "show", "0"}).out;

        QStringList args = {"reports", "pdf", "0", target};
        if (c.force)
            args << "--force";
        const CliRun run = cli(args);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_TRUE(run.err.contains(QLatin1String(c.says))) << run.err.toStdString();
        EXPECT_TRUE(run.out.isEmpty());
        EXPECT_LT(run.ms, 10000);

        EXPECT_EQ(snapshot(), files) << "something under the home changed";
        EXPECT_EQ(cli({"reports", "list", "--json"}).out, list);
        EXPECT_EQ(cli({"reports", "show", "0"}).out, shown);
        struct stat after {};
        ::lstat(QFile::encodeName(target).constData(), &after);
        EXPECT_EQ(after.st_mode, before.st_mode);
        EXPECT_EQ(after.st_rdev, before.st_rdev);
    }

    // The same program does write a new name, and over a regular file when
    // told to: the PDF of the report, with nothing left beside it.
    freshHome();
    saveReport();
    for (const bool force : {false, true}) {
        QStringList args = {"reports", "pdf", "0", path("out.pdf")};
        if (force)
            args << "--force";
        const CliRun run = cli(args);
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        EXPECT_TRUE(bytesOf(path("out.pdf")).startsWith("%PDF-"));
    }
    EXPECT_TRUE(QDir(homePath).entryList({".tallyvane-*"}, QDir::Hidden | QDir::Files).isEmpty());
}

// A report's text or chart that is not what it should be is refused with a
// line saying so, at once: nothing waits on a pipe, nothing reads 17 MB,
// nothing from outside the documents folder gets into the output. A chart
// is only left out; the PDF is still written.
TEST_F(FileFaults, AReportsTextOrChartIsReadOnlyAsARegularFileOfSaneSizeInTheDocuments)
{
    enum Part { Text, Chart };
    struct Case {
        const char* name;
        Part part;
        std::function<void(FileFaults&, const QString& at)> make;
        const char* says; // nullptr: read without a word
        bool pictured;    // the PDF shows the chart
    };
    const auto pipe = [](FileFaults&, const QString& at) {
        QFile::remove(at);
        EXPECT_EQ(::mkfifo(QFile::encodeName(at).constData(), 0600), 0);
    };
    const auto huge = [](FileFaults&, const QString& at) {
        QFile file(at);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.resize(17 << 20)); // sparse: costs no disk
    };
    const auto linkOut = [](const QByteArray& bytes) {
        return [bytes](FileFaults& t, const QString& at) {
            EXPECT_TRUE(writeBytes(t.path("outside"), bytes));
            QFile::remove(at);
            ASSERT_TRUE(QFile::link(t.path("outside"), at));
        };
    };
    const std::vector<Case> cases = {
        {"text: a pipe", Text, pipe, "The report's text is not a regular file.", false},
        {"text: 17 MB", Text, huge, "The report's text is larger than 16 MB.", false},
        {"text: a link out of the documents", Text, linkOut("secret\n"),
         "The report's text lies outside the documents folder; it is not read.", false},
        {"chart: a pipe", Chart, pipe,
         "The report's chart is not a regular file. The PDF was written without it.", false},
        {"chart: 17 MB", Chart, huge, "The report's chart is larger than 16 MB.", false},
        {"chart: a link out of the documents", Chart, linkOut(png),
         "The report's chart lies outside the documents folder; it is not read.", false},
        {"chart: a picture in its place", Chart,
         [](FileFaults&, const QString& at) { EXPECT_TRUE(writeBytes(at, png)); }, nullptr, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        freshHome();
        const QString text = saveReport();
        c.make(*this, c.part == Text ? text : chartOf(text));

        const CliRun pdf = cli({"reports", "pdf", "0", path("out.pdf")});
        EXPECT_LT(pdf.ms, 10000);
        if (c.part == Text) {
            const CliRun show = cli({"reports", "show", "0"});
            EXPECT_EQ(show.exitCode, 1);
            EXPECT_EQ(show.err.trimmed(), QLatin1String(c.says));
            EXPECT_TRUE(show.out.isEmpty()) << show.out.left(200).toStdString();
            EXPECT_LT(show.ms, 10000);
            EXPECT_EQ(pdf.exitCode, 1);
            EXPECT_EQ(pdf.err.trimmed(), QLatin1String(c.says));
            EXPECT_FALSE(QFile::exists(path("out.pdf")));
            continue;
        }
        EXPECT_EQ(pdf.exitCode, 0) << pdf.err.toStdString();
        if (c.says)
            EXPECT_TRUE(pdf.err.startsWith(QLatin1String(c.says))) << pdf.err.toStdString();
        else
            EXPECT_TRUE(pdf.err.isEmpty()) << pdf.err.toStdString();
        const QByteArray written = bytesOf(path("out.pdf"));
        EXPECT_TRUE(written.startsWith("%PDF-"));
        EXPECT_EQ(hasImage(written), c.pictured);
    }
}

// Under a file-size limit the program is not ended by SIGXFSZ: the write
// that hits the limit fails and is told, exit 1, and what was there stays.
TEST_F(FileFaults, AFileSizeLimitOnTheProgramFailsTheWriteWithAMessage)
{
    // One report saved without a limit, then saves under 24 kB until one
    // crosses it (the database's journal grows with each; on a fresh home
    // the first does); every save reported done is kept.
    const QString first = saveReport();
    int saved = 1;
    CliRun failed;
    for (int i = 0; i < 40 && failed.exitCode != 1; ++i) {
        const CliRun run = cli({"calc", "roi", "investmentAmount=1000", "futureValue=1250",
                                "years=2", "--save", QStringLiteral("A%1").arg(i)},
                               24 * 1024);
        ASSERT_NE(run.exitCode, -1);
        if (run.exitCode == 0)
            ++saved;
        else
            failed = run;
    }
    ASSERT_EQ(failed.exitCode, 1) << "the limit was never reached";
    EXPECT_FALSE(failed.err.trimmed().isEmpty());
    const CliRun list = cli({"reports", "list", "--json"});
    ASSERT_EQ(list.exitCode, 0) << list.err.toStdString();
    EXPECT_EQ(QJsonDocument::fromJson(list.out.toUtf8()).array().size(), saved);

    // A PDF larger than the limit, over an existing file: the file stays
    // as it was, and nothing is left beside it. (The limit leaves room for
    // the database's 32 kB shared-memory file; the report's text is made
    // long enough for a PDF of about 100 kB.)
    QFile text(first);
    ASSERT_TRUE(text.open(QIODevice::WriteOnly | QIODevice::Truncate));
    for (int line = 0; line < 3000; ++line)
        text.write(QByteArrayLiteral("Line ") + QByteArray::number(line) + ": a few words\n");
    text.close();
    EXPECT_TRUE(writeBytes(path("old.pdf"), "the old file"));
    const CliRun pdf =
        cli({"reports", "pdf", QString::number(saved - 1), path("old.pdf"), "--force"}, 64 * 1024);
    EXPECT_EQ(pdf.exitCode, 1);
    EXPECT_TRUE(pdf.err.startsWith(path("old.pdf") + QStringLiteral(" could not be written: ")))
        << pdf.err.toStdString();
    EXPECT_EQ(bytesOf(path("old.pdf")), "the old file");
    EXPECT_TRUE(QDir(homePath).entryList({".tallyvane-*"}, QDir::Hidden | QDir::Files).isEmpty());
}

} // namespace
