#include "TestSupport.h"
#include "platform/NotificationCenter.h"
#include "store/QVFileManager.h"

#include <QDir>
#include <QFile>

namespace {

class FunctionModelTest : public HomeTest {
protected:
    void request(const QString& name, const QVariantMap& info)
    {
        NotificationCenter::defaultCenter().post(name, nullptr, info);
    }
};

TEST_F(FunctionModelTest, ReportFollowsTheRecipeExactly)
{
    auto model = QVFunctionModel::create<TestFunctionModel>();
    QVariantMap announced;
    QObject* announcer = nullptr;
    QObject listener;
    NotificationCenter::defaultCenter().addObserver(&listener, "TestReportCreatedNotification",
                                                    [&](const Notification& n) {
                                                        announced = n.userInfo;
                                                        announcer = n.sender;
                                                    });

    request("TestReportRequestedNotification", {{"title", "Plan A"}});

    const QString name = "roi_Plan A_05-03-2024 14:07_report.txt";
    const QString dec = QLocale().decimalPoint();
    const QString expected = "Financial Report - Return on Investment\n"
                             "Date: 05-03-2024 14:07\n"
                             "\n-----------------------------\n\n"
                             "Investment: 1000\n"
                             "Roi: 12" +
                             dec + "5%\n";
    EXPECT_EQ(model->report().fileName, name);
    EXPECT_EQ(model->report().title, "Plan A");
    EXPECT_EQ(model->report().date, now);
    EXPECT_EQ(model->report().functionTitle, "Roi");
    EXPECT_EQ(model->report().colorTag, Rgba(0x1F, 0xDA, 0x9A));
    EXPECT_EQ(model->report().contents, expected);
    EXPECT_EQ(readDocument(name), expected);
    EXPECT_EQ(announced, QVariantMap({{"filename", name}}));
    EXPECT_EQ(announcer, model.get());
}

TEST_F(FunctionModelTest, ASecondReportGrowsTheFileNameAndRemovingTakesOnlyTheLast)
{
    auto model = QVFunctionModel::create<TestFunctionModel>();
    request("TestReportRequestedNotification", {{"title", "Plan A"}});
    setNow(now.addSecs(120));
    request("TestReportRequestedNotification", {{"title", "Plan B"}});

    const QString first = "roi_Plan A_05-03-2024 14:07_report.txt";
    const QString second = first + "_Plan B_05-03-2024 14:09_report.txt";
    EXPECT_EQ(model->report().fileName, second);
    QStringList files = QVFileManager::filesInDocumentsDirectory();
    files.sort();
    EXPECT_EQ(files, QStringList({first, second}));
    model->removeReportFile();
    EXPECT_EQ(QVFileManager::filesInDocumentsDirectory(), QStringList({first}));
    model->removeReportFile(); // already gone: silent
}

// An empty or missing title gives adjacent underscores; a slash keeps its
// title and becomes "-" in a file that lands in the documents.
TEST_F(FunctionModelTest, TitlesInFileNames)
{
    auto model = QVFunctionModel::create<TestFunctionModel>();
    request("TestReportRequestedNotification", {{"title", ""}});
    EXPECT_EQ(model->report().fileName, "roi__05-03-2024 14:07_report.txt");
    auto other = QVFunctionModel::create<OtherFunctionModel>();
    request("OtherReportRequestedNotification", {});
    EXPECT_EQ(other->report().fileName, "tip__05-03-2024 14:07_report.txt");
    other->removeReportFile();
    model->removeReportFile();
    model = QVFunctionModel::create<TestFunctionModel>(); // a first report again
    request("TestReportRequestedNotification", {{"title", "A/B"}});
    EXPECT_EQ(model->report().title, "A/B");
    EXPECT_EQ(model->report().fileName, "roi_A-B_05-03-2024 14:07_report.txt");
    EXPECT_EQ(QVFileManager::filesInDocumentsDirectory(), QStringList({model->report().fileName}));
}

TEST_F(FunctionModelTest, SameTitleInTheSameMinuteNeverSharesAFile)
{
    // Three screens (or processes) build "Plan" within one minute: each
    // keeps its own text, and none is written over.
    std::vector<std::unique_ptr<TestFunctionModel>> screens;
    for (int i = 0; i < 3; ++i)
        screens.push_back(QVFunctionModel::create<TestFunctionModel>());
    for (int i = 0; i < 3; ++i) {
        screens[size_t(i)]->investment = 1000 + i;
        screens[size_t(i)]->createReport({{"title", "Plan"}});
    }
    const QString stem = "roi_Plan_05-03-2024 14:07";
    const QStringList expected = {stem + "_report.txt", stem + " (2)_report.txt",
                                  stem + " (3)_report.txt"};
    for (int i = 0; i < 3; ++i) {
        const QVReport& report = screens[size_t(i)]->report();
        EXPECT_EQ(report.fileName, expected[i]);
        EXPECT_EQ(readDocument(report.fileName), report.contents);
        EXPECT_TRUE(report.contents.contains(QString::number(1000 + i)));
    }
    // Removing the second's file (a mailed, unsaved report) leaves the others.
    screens[1]->removeReportFile();
    EXPECT_EQ(QVFileManager::filesInDocumentsDirectory().size(), 2);
    EXPECT_FALSE(QFile::exists(QDir(documents()).filePath(expected[1])));
}

TEST_F(FunctionModelTest, GrownNamesStayWithinWhatAFileSystemTakes)
{
    // One screen, many reports: the name grows until the next growth would
    // pass the limit, then starts again from the file key.
    auto model = QVFunctionModel::create<TestFunctionModel>();
    QStringList names;
    for (int i = 0; i < 12; ++i) {
        request("TestReportRequestedNotification", {{"title", QString("Quarter %1").arg(i)}});
        ASSERT_TRUE(model->reportFileResult().ok())
            << model->reportFileResult().error.toStdString();
        names << model->report().fileName;
        EXPECT_LE(names.last().toUtf8().size(), 255);
    }
    const auto restart = std::find_if(names.begin() + 1, names.end(), [](const QString& name) {
        return name == QString("roi_%1_05-03-2024 14:07_report.txt").arg(name.section('_', 1, 1));
    });
    ASSERT_NE(restart, names.end()) << "the name never started again";
    EXPECT_TRUE((restart - 1)->toUtf8().size() + restart->toUtf8().size() - 3 >
                QVFunctionModel::maxFileNameBytes);
    EXPECT_EQ(QVFileManager::filesInDocumentsDirectory().size(), names.size());

    // A title of 300 bytes on its own: shortened in the name only, on a
    // character boundary, and the file is written.
    const QString longTitle = QString(100, QChar(0x00e9)) + QString(50, QChar(0x20ac));
    ASSERT_EQ(longTitle.toUtf8().size(), 350);
    auto fresh = QVFunctionModel::create<OtherFunctionModel>();
    request("OtherReportRequestedNotification", {{"title", longTitle}});
    EXPECT_EQ(fresh->report().title, longTitle);
    const QString name = fresh->report().fileName;
    EXPECT_LE(name.toUtf8().size(), QVFunctionModel::maxFileNameBytes);
    EXPECT_EQ(QString::fromUtf8(name.toUtf8()), name);
    EXPECT_TRUE(name.startsWith("tip_" + longTitle.left(20)));
    EXPECT_TRUE(name.endsWith("_05-03-2024 14:07_report.txt"));
    EXPECT_TRUE(fresh->reportFileResult().ok());
}

TEST_F(FunctionModelTest, NonFiniteValuesAreReportedAndStillWritten)
{
    auto model = QVFunctionModel::create<TestFunctionModel>();
    model->investment = std::numeric_limits<double>::infinity();
    model->roi = std::nan("");
    request("TestReportRequestedNotification", {{"title", "odd"}});
    EXPECT_TRUE(model->report().contents.endsWith("Investment: Infinity\nRoi: NaN%\n"));
    EXPECT_NE(readDocument(model->report().fileName), "<missing>");
}

TEST_F(FunctionModelTest, EveryLiveModelOfAClassAnswersItsRequestOnly)
{
    {
        auto gone = QVFunctionModel::create<TestFunctionModel>();
    }
    request("TestReportRequestedNotification", {{"title", "T"}});
    EXPECT_TRUE(QVFileManager::filesInDocumentsDirectory().isEmpty()) << "destroyed models stop";

    auto a = QVFunctionModel::create<TestFunctionModel>();
    auto b = QVFunctionModel::create<TestFunctionModel>();
    auto other = QVFunctionModel::create<OtherFunctionModel>();
    request("TestReportRequestedNotification", {{"title", "T"}});
    EXPECT_TRUE(a->report().fileName.endsWith("_report.txt"));
    EXPECT_TRUE(b->report().fileName.endsWith("_report.txt"));
    EXPECT_EQ(other->report().fileName, "tip");
}

} // namespace
