#include "cli/Cli.h"

#include "TestSupport.h"
#include "platform/NotificationCenter.h"
#include "reports/ReportTableModel.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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

    // Saves reports the way the app's "Save" does.
    void save(const QStringList& titles)
    {
        ReportTableModel list;
        auto model = QVFunctionModel::create<TestFunctionModel>();
        for (const QString& title : titles) {
            NotificationCenter::defaultCenter().post("TestReportRequestedNotification", nullptr,
                                                     {{"title", title}});
            model->saveReport();
            setNow(now.addSecs(60));
        }
    }

    QString stdoutText;
    QString stderrText;
};

TEST_F(CliTest, ListsSavedReportsNewestFirstAsTextAndJson)
{
    save({"Plan A", "Plan B"});
    ASSERT_EQ(run({"reports", "list"}), 0);
    const QStringList lines = stdoutText.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith("0\t2024-03-05 14:08:30\tRoi\tPlan B\troi_Plan A_"));
    EXPECT_TRUE(lines[1].startsWith("1\t2024-03-05 14:07:30\tRoi\tPlan A\t"));

    ASSERT_EQ(run({"reports", "list", "--json"}), 0);
    const QJsonArray array = QJsonDocument::fromJson(stdoutText.toUtf8()).array();
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
}

TEST_F(CliTest, ShowsTheTextAndDeletesLikeTheListScreen)
{
    save({"Plan A", "Plan B"});
    ASSERT_EQ(run({"reports", "show", "1"}), 0);
    EXPECT_TRUE(
        stdoutText.startsWith("Financial Report - Return on Investment\nDate: 05-03-2024 14:07\n"));

    ASSERT_EQ(run({"reports", "delete", "0"}), 0);
    ASSERT_EQ(run({"reports", "list", "--json"}), 0);
    const QJsonArray array = QJsonDocument::fromJson(stdoutText.toUtf8()).array();
    ASSERT_EQ(array.size(), 1);
    EXPECT_EQ(array[0].toObject()["title"].toString(), "Plan A");
    EXPECT_EQ(run({"reports", "show", "0"}), 0) << "the remaining report still shows";
}

TEST_F(CliTest, BadArgumentsFailWithAMessageOnStderr)
{
    save({"only"});
    for (const QStringList& args :
         {QStringList{}, QStringList{"reports"}, QStringList{"reports", "show", "1"},
          QStringList{"reports", "show", "-1"}, QStringList{"reports", "delete", "x"},
          QStringList{"reports", "frobnicate"}, QStringList{"nope"}}) {
        EXPECT_EQ(run(args), 1) << args.join(' ').toStdString();
        EXPECT_FALSE(stderrText.isEmpty());
    }
    EXPECT_EQ(run({"reports", "--help"}), 0);
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_EQ(run({"list"}), 0);
    EXPECT_EQ(run({"list", "--json"}), 0);
    EXPECT_TRUE(QJsonDocument::fromJson(stdoutText.toUtf8()).isArray());
}

TEST_F(CliTest, EvalPrintsSeventeenSignificantDigitsOrFails)
{
    ASSERT_EQ(run({"eval", "1+2*3"}), 0);
    EXPECT_EQ(stdoutText, "7\n");
    ASSERT_EQ(run({"eval", "0.1+0.2"}), 0);
    EXPECT_EQ(stdoutText, "0.30000000000000004\n");
    ASSERT_EQ(run({"eval", "-2^2"}), 0) << "a leading minus is an expression, not an option";
    EXPECT_EQ(stdoutText, "-4\n");
    ASSERT_EQ(run({"eval", "2", "*", "pi"}), 0);
    EXPECT_EQ(stdoutText, "6.2831853071795862\n");
    ASSERT_EQ(run({"eval", "1/0"}), 0);
    EXPECT_EQ(stdoutText, "Infinity\n");
    ASSERT_EQ(run({"eval", "sqrt(-1)"}), 0);
    EXPECT_EQ(stdoutText, "NaN\n");

    EXPECT_EQ(run({"eval", "2*+3"}), 1);
    EXPECT_EQ(stderrText, "invalid expression\n");
    EXPECT_TRUE(stdoutText.isEmpty());
    EXPECT_EQ(run({"eval"}), 1);
}

TEST_F(CliTest, ShowOfAReportWhoseFileIsMissingFails)
{
    save({"A/B"});
    EXPECT_EQ(run({"reports", "show", "0"}), 1);
    EXPECT_TRUE(stderrText.contains("not found"));
}

} // namespace
