#include "cli/Cli.h"

#include "TestSupport.h"
#include "reports/ReportTableModel.h"
#include "store/QVFileManager.h"
#include "store/QVReport.h"
#include "store/ReportStore.h"
#include "support/OwnConnection.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QScopeGuard>

namespace {

class CliTest : public HomeTest {
protected:
    int run(const QStringList& args)
    {
        stdoutText.clear();
        stderrText.clear();
        QTextStream out(&stdoutText);
        QTextStream err(&stderrText);
        return runCli(args, out, err);
    }

    QJsonDocument json() const { return QJsonDocument::fromJson(stdoutText.toUtf8()); }

    // Runs `args` with --json, which must succeed, and returns what it printed.
    QJsonObject runJson(QStringList args)
    {
        EXPECT_EQ(run(args << "--json"), 0) << stderrText.toStdString();
        return json().object();
    }

    // The titles `reports list --json` prints, newest first.
    QStringList listedTitles()
    {
        EXPECT_EQ(run({"reports", "list", "--json"}), 0);
        QStringList titles;
        for (const QJsonValue& report : json().array())
            titles << report.toObject()["title"].toString();
        return titles;
    }

    // Saves reports the way the app's "Save" does, a minute apart.
    void save(const QStringList& titles)
    {
        ReportTableModel list;
        saveReports(titles);
    }

    QString stdoutText;
    QString stderrText;
};

// A C text with the current locale's decimal separator.
QString dec(const char* text)
{
    return QString::fromLatin1(text).replace('.', QLocale().decimalPoint());
}

TEST_F(CliTest, ListsShowsAndDeletesSavedReportsNewestFirst)
{
    save({"Plan A", "Plan B"});
    ASSERT_EQ(run({"reports", "list"}), 0);
    const QStringList lines = stdoutText.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith("0\t2024-03-05 14:08:30\tRoi\tPlan B\troi_Plan A_"));
    EXPECT_TRUE(lines[1].startsWith("1\t2024-03-05 14:07:30\tRoi\tPlan A\t"));

    ASSERT_EQ(run({"reports", "list", "--json"}), 0);
    const QJsonArray array = json().array();
    ASSERT_EQ(array.size(), 2);
    const QJsonObject first = array[0].toObject();
    EXPECT_EQ(first.keys(),
              QStringList({"colorTag", "date", "fileName", "functionTitle", "title"}));
    EXPECT_EQ(first["title"].toString(), "Plan B");
    EXPECT_EQ(first["functionTitle"].toString(), "Roi");
    EXPECT_EQ(first["colorTag"].toString(), "#1FDA9A");
    EXPECT_EQ(QDateTime::fromString(first["date"].toString(), Qt::ISODateWithMs),
              fixedNow().addSecs(60));
    EXPECT_EQ(array[1].toObject()["fileName"].toString(), "roi_Plan A_05-03-2024 14:07_report.txt");

    ASSERT_EQ(run({"reports", "show", "1"}), 0);
    EXPECT_TRUE(
        stdoutText.startsWith("Financial Report - Return on Investment\nDate: 05-03-2024 14:07\n"));

    ASSERT_EQ(run({"reports", "delete", "0"}), 0);
    EXPECT_EQ(listedTitles(), QStringList{"Plan A"});
    EXPECT_EQ(run({"reports", "show", "0"}), 0) << "the remaining report still shows";
}

TEST_F(CliTest, BadArgumentsFailWithAMessageOnStderrAndHelpSucceeds)
{
    save({"only"});
    for (const QStringList& args :
         {QStringList{}, QStringList{"reports"}, QStringList{"reports", "show", "1"},
          QStringList{"reports", "show", "-1"}, QStringList{"reports", "delete", "x"},
          QStringList{"reports", "frobnicate"}, QStringList{"nope"}, QStringList{"eval"},
          QStringList{"keys"}, QStringList{"keys", "FOO"}, QStringList{"calc", "nope"}}) {
        EXPECT_EQ(run(args), 1) << args.join(' ').toStdString();
        EXPECT_FALSE(stderrText.isEmpty()) << args.join(' ').toStdString();
    }
    for (const QStringList& args :
         {QStringList{"reports", "--help"}, QStringList{"--help"}, QStringList{"keys", "--help"},
          QStringList{"calc", "--help"}, QStringList{"list"}, QStringList{"list", "--json"}})
        EXPECT_EQ(run(args), 0) << args.join(' ').toStdString();
    EXPECT_TRUE(json().isArray());
}

TEST_F(CliTest, EvalPrintsSeventeenSignificantDigitsOrFails)
{
    const struct {
        QStringList args;
        QString printed;
    } cases[] = {
        {{"1+2*3"}, "7\n"},
        {{"0.1+0.2"}, "0.30000000000000004\n"},
        {{"-2^2"}, "-4\n"}, // a leading minus is an expression, not an option
        {{"2", "*", "pi"}, "6.2831853071795862\n"},
        {{"1/0"}, "Infinity\n"},
        {{"sqrt(-1)"}, "NaN\n"},
        {{"\uff11+\uff12"}, "3\n"}, // full-width digits are digits
    };
    for (const auto& c : cases) {
        ASSERT_EQ(run(QStringList{"eval"} + c.args), 0) << c.args.join(' ').toStdString();
        EXPECT_EQ(stdoutText, c.printed);
    }
    EXPECT_EQ(run({"eval", "2*+3"}), 1);
    EXPECT_EQ(stderrText, "invalid expression\n");
    EXPECT_TRUE(stdoutText.isEmpty());
}

TEST_F(CliTest, KeysJsonCarriesHistoryAndRegisters)
{
    // The values are cases of tests/vectors/keypad.jsonl; here the shape.
    const QJsonObject keys = runJson({"keys", "100", "PV", "10", "I/Y", "10", "N", "CPT", "FV"});
    ASSERT_FALSE(keys.isEmpty()) << stdoutText.toStdString();
    EXPECT_EQ(keys["registers"].toObject().keys(),
              QStringList({"C/Y", "FV", "I/Y", "IRR", "N", "NPV", "P/Y", "PMT", "PV"}));
    const QJsonArray history = keys["history"].toArray();
    ASSERT_EQ(history.size(), 4);
    EXPECT_EQ(history[3].toObject()["command"].toString(), "Compute FV");
    EXPECT_EQ(history[0].toObject().keys(),
              QStringList({"command", "expression", "result", "result-label"}));
}

TEST_F(CliTest, CalcPrintsReportsAndSavesLikeTheScreen)
{
    ASSERT_EQ(run({"calc", "roi", "investmentAmount=1000", "futureValue=1250", "years=2"}), 0)
        << stderrText.toStdString();
    EXPECT_EQ(stdoutText, "investmentAmount: 1000\nfutureValue: 1250\nyears: 2\ngain: 250\n"
                          "roi: 25%\nannualizedRoi: " +
                              dec("12.5") + "%\n")
        << "percent results keep their % as on the screen (the values: tests/vectors)";

    ASSERT_EQ(run({"calc", "roi", "investmentAmount=1000", "futureValue=1250", "years=2",
                   "--report", "Plan A"}),
              0);
    EXPECT_TRUE(
        stdoutText.contains("\nFinancial Report - Return on Investment\nDate: 05-03-2024 14:07\n"));
    EXPECT_TRUE(QVFileManager::filesInDocumentsDirectory().isEmpty()) << "--report keeps no file";

    ASSERT_EQ(run({"calc", "tip", "bill=50", "--save", "Lunch"}), 0);
    ASSERT_EQ(run({"reports", "list", "--json"}), 0);
    const QJsonArray list = json().array();
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list[0].toObject()["title"].toString(), "Lunch");
    EXPECT_EQ(list[0].toObject()["functionTitle"].toString(), "Tip");
    EXPECT_EQ(run({"reports", "show", "0"}), 0);
    EXPECT_TRUE(stdoutText.startsWith("Financial Report - Tip\n"));

    // A view-only report leaves the saved file of the same name and minute.
    ASSERT_EQ(run({"calc", "roi", "investmentAmount=1000", "futureValue=1250", "--save", "Plan"}),
              0);
    const QStringList saved = QVFileManager::filesInDocumentsDirectory();
    ASSERT_EQ(saved.size(), 2);
    ASSERT_EQ(run({"calc", "roi", "investmentAmount=5", "futureValue=6", "--report", "Plan"}), 0);
    EXPECT_EQ(QVFileManager::filesInDocumentsDirectory(), saved);
    EXPECT_TRUE(readDocument(saved.filter("roi_Plan_").value(0)).contains("1250"));
}

TEST_F(CliTest, ASaveThatCannotLandFailsWithTheReasonAndKeepsEarlierRecords)
{
    ASSERT_EQ(run({"calc", "tip", "bill=50", "--save", "Kept"}), 0);
    // The documents folder replaced by a plain file: no text file can go in.
    const QString documentsPath = documents();
    ASSERT_TRUE(QDir(documentsPath).removeRecursively());
    QFile blocker(documentsPath);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();

    EXPECT_EQ(run({"calc", "tip", "bill=60", "--save", "Lost"}), 1);
    EXPECT_TRUE(stderrText.contains("not saved")) << stderrText.toStdString();
    EXPECT_TRUE(stderrText.contains("Documents")) << stderrText.toStdString();
    ASSERT_EQ(run({"reports", "list"}), 0);
    EXPECT_EQ(stdoutText.count('\n'), 1);
    EXPECT_TRUE(stdoutText.contains("Kept"));

    // The list itself unreachable: a save and the list commands fail too.
    QFile::remove(documentsPath);
    ReportStore::close();
    const QString database = ReportStore::databasePath();
    for (const char* suffix : {"", "-wal", "-shm"})
        QFile::remove(database + QLatin1String(suffix));
    ASSERT_TRUE(QDir().mkpath(database));
    EXPECT_EQ(run({"calc", "tip", "bill=70", "--save", "Nowhere"}), 1);
    EXPECT_FALSE(stderrText.isEmpty());
    EXPECT_TRUE(QVFileManager::filesInDocumentsDirectory().isEmpty()) << "no orphan text file";
    EXPECT_EQ(run({"reports", "list"}), 1);
}

TEST_F(CliTest, ADatabaseLockedPastTheTimeoutFailsSavesAndDeletesWithTheReason)
{
    save({"Plan A", "Plan B"});
    // Another program holds the write lock and does not let go.
    whileAnotherHoldsTheStore(200, [this] {
        EXPECT_EQ(run({"reports", "delete", "0"}), 1);
        EXPECT_TRUE(stderrText.contains("was not deleted")) << stderrText.toStdString();
        EXPECT_TRUE(stderrText.contains("locked")) << stderrText.toStdString();
        EXPECT_EQ(run({"calc", "tip", "bill=50", "--save", "Locked out"}), 1);
        EXPECT_TRUE(stderrText.contains("locked")) << stderrText.toStdString();
    });
    ASSERT_EQ(run({"reports", "list"}), 0);
    EXPECT_EQ(stdoutText.count('\n'), 2) << "both reports kept, none added";
    EXPECT_EQ(QVFileManager::filesInDocumentsDirectory().size(), 2) << "no orphan text file";
}

TEST_F(CliTest, MessagesSayWhatTheScreenShowsAndWhatWentWrong)
{
    QStringList warnings;
    static QStringList* sink = nullptr;
    sink = &warnings;
    const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { sink->append(text); });
    const auto restore = qScopeGuard([previous] { qInstallMessageHandler(previous); });

    // Tables are listed with their row limit, and the limit is told.
    ASSERT_EQ(run({"list"}), 0);
    EXPECT_TRUE(
        stdoutText.contains("\tperiod discountRate financeRate reinvestRate cashArray[100]\n"));
    EXPECT_TRUE(stdoutText.contains("probability[100] stock-a[100] stock-b[100]"));
    EXPECT_TRUE(stdoutText.contains("return-rate[100] growth-rate[100]"));
    EXPECT_TRUE(stdoutText.contains("tvm\tTime Value of Money Calculator\tpresentValue"));
    // The refusals themselves are cases of tests/vectors/unreadable.jsonl.
    EXPECT_EQ(run({"calc", "roi", "frob=1"}), 1);
    EXPECT_TRUE(warnings.isEmpty()) << warnings.join('\n').toStdString();

    // Titles reach the terminal as text, never as control sequences.
    save({"Plan\n\x1b[31mred\x1b[0m\u202e\\"});
    ASSERT_EQ(run({"reports", "list"}), 0);
    EXPECT_TRUE(stdoutText.contains("\tPlan\\n\\x1b[31mred\\x1b[0m\\u202e\\\\\t"))
        << stdoutText.toStdString();
    EXPECT_EQ(stdoutText.count('\n'), 1);
    EXPECT_FALSE(stdoutText.contains(QChar(0x1b)));

    // JSON dates carry their offset from UTC.
    ASSERT_EQ(run({"reports", "list", "--json"}), 0);
    const QString date = json().array()[0].toObject()["date"].toString();
    EXPECT_TRUE(QRegularExpression("^2024-03-05T14:07:30\\.250(Z|[+-]\\d\\d:\\d\\d)$")
                    .match(date)
                    .hasMatch())
        << date.toStdString();
}

// Where "." groups thousands (German, Italian, ...), "1.234" could mean
// 1234 or 1.234: the command line refuses it like any unreadable value,
// naming both ways to write it, in a field and in a table cell alike. The
// same text is a plain decimal under C. (tests/vectors/unreadable.jsonl has
// the other kinds of unreadable values.)
TEST_F(CliTest, AnAmbiguousThousandIsRefusedWhereThePointGroupsThousands)
{
    const QLocale process;
    const auto restore = qScopeGuard([process] { QLocale::setDefault(process); });
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(run({"calc", "breakeven", "fixedCost=1.234"}), 1);
    EXPECT_EQ(stderrText, "fixedCost: \"1.234\" is ambiguous: write 1234 or 1,234\n");
    EXPECT_EQ(run({"calc", "npv", "cashArray=-1000,12.500"}), 1);
    EXPECT_EQ(stderrText, "cashArray: \"12.500\" (value 2) is ambiguous: write 12500 or 12,500\n");
    EXPECT_EQ(runJson({"calc", "breakeven", "fixedCost=1234", "variableCost=0.125", "price=1,2345",
                       "--solve", "profit"})["values"]
                  .toObject()["variableCost"]
                  .toDouble(),
              0.125)
        << "a leading 0 is no grouped thousand";

    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(runJson({"calc", "breakeven", "fixedCost=1.234", "--solve", "profit"})["values"]
                  .toObject()["fixedCost"]
                  .toDouble(),
              1.234);
}

TEST_F(CliTest, ShowRefusesAMissingFileAndANameLeadingOutsideTheDocuments)
{
    save({"gone"});
    QFile::remove(
        QVReport::fromArchive(QVReport::storedReportList()->at(0)).filePathInDocumentsDirectory());
    EXPECT_EQ(run({"reports", "show", "0"}), 1);
    EXPECT_TRUE(stderrText.contains("could not be read")) << stderrText.toStdString();

    // A record whose name climbs out of the folder, next to a real file.
    QFile outside(home.filePath("outside_report.txt"));
    ASSERT_TRUE(outside.open(QIODevice::WriteOnly));
    outside.write("secret");
    outside.close();
    QVReport crafted;
    crafted.fileName = "../outside_report.txt";
    ASSERT_TRUE(QVReport::saveReport(crafted).ok());
    EXPECT_EQ(run({"reports", "show", "0"}), 1);
    EXPECT_TRUE(stderrText.contains("outside the documents folder")) << stderrText.toStdString();
    EXPECT_FALSE(stdoutText.contains("secret"));
}

} // namespace
