#include "TestSupport.h"
#include "platform/NotificationCenter.h"
#include "platform/Services.h"
#include "reports/QVFileManager.h"

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

class BaseModel : public QVFunctionModel {
public:
    using QVFunctionModel::QVFunctionModel;
};

TEST_F(FunctionModelTest, BaseNamesAndAReportThatIgnoresRequests)
{
    auto model = QVFunctionModel::create<BaseModel>();
    EXPECT_EQ(model->reportCreatedNotificationName(), "QVFunctionReportCreatedNotification");
    EXPECT_EQ(model->reportRequestedNotificationName(), "QVFunctionReportRequestedNotification");
    EXPECT_EQ(model->emailSubject(), "Quorvex - Financial Report");
    EXPECT_EQ(model->navigationTitle(), "QV Function Calculator");
    EXPECT_EQ(model->descriptionName(), "qvfunction");
    EXPECT_EQ(model->report().fileName, "qvfunction");
    EXPECT_TRUE(model->report().functionTitle.isEmpty());
    EXPECT_FALSE(model->reportSaved());

    int created = 0;
    QObject listener;
    NotificationCenter::defaultCenter().addObserver(
        &listener, model->reportCreatedNotificationName(), [&](const Notification&) { ++created; });
    request("QVFunctionReportRequestedNotification", {{"title", "x"}});
    EXPECT_EQ(created, 0);
    EXPECT_EQ(model->report().fileName, "qvfunction");
    EXPECT_TRUE(QVFileManager::filesInDocumentsDirectory().isEmpty());
}

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
    EXPECT_EQ(model->report().colorTag.rgb(), QColor(0x1F, 0xDA, 0x9A).rgb());
    EXPECT_EQ(model->report().contents, expected);
    EXPECT_EQ(readDocument(name), expected);
    EXPECT_EQ(announced, QVariantMap({{"filename", name}}));
    EXPECT_EQ(announcer, model.get());
}

TEST_F(FunctionModelTest, ASecondReportGrowsTheFileName)
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
}

TEST_F(FunctionModelTest, EmptyOrMissingTitleGivesAdjacentUnderscores)
{
    auto model = QVFunctionModel::create<TestFunctionModel>();
    request("TestReportRequestedNotification", {{"title", ""}});
    EXPECT_EQ(model->report().fileName, "roi__05-03-2024 14:07_report.txt");
    auto other = QVFunctionModel::create<OtherFunctionModel>();
    request("OtherReportRequestedNotification", {});
    EXPECT_EQ(other->report().fileName, "tip__05-03-2024 14:07_report.txt");
}

TEST_F(FunctionModelTest, TitleWithSlashStillBuildsTheReportButWritesNoFile)
{
    auto model = QVFunctionModel::create<TestFunctionModel>();
    request("TestReportRequestedNotification", {{"title", "A/B"}});
    EXPECT_EQ(model->report().fileName, "roi_A/B_05-03-2024 14:07_report.txt");
    EXPECT_TRUE(QVFileManager::filesInDocumentsDirectory().isEmpty());
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
    auto a = QVFunctionModel::create<TestFunctionModel>();
    auto b = QVFunctionModel::create<TestFunctionModel>();
    auto other = QVFunctionModel::create<OtherFunctionModel>();
    request("TestReportRequestedNotification", {{"title", "T"}});
    EXPECT_TRUE(a->report().fileName.endsWith("_report.txt"));
    EXPECT_TRUE(b->report().fileName.endsWith("_report.txt"));
    EXPECT_EQ(other->report().fileName, "tip");
}

TEST_F(FunctionModelTest, DestroyedModelsStopListening)
{
    {
        auto model = QVFunctionModel::create<TestFunctionModel>();
    }
    request("TestReportRequestedNotification", {{"title", "T"}});
    EXPECT_TRUE(QVFileManager::filesInDocumentsDirectory().isEmpty());
}

TEST_F(FunctionModelTest, RemoveReportFileDeletesOnlyThatFile)
{
    auto model = QVFunctionModel::create<TestFunctionModel>();
    request("TestReportRequestedNotification", {{"title", "keep"}});
    const QString kept = model->report().fileName;
    request("TestReportRequestedNotification", {{"title", "drop"}});
    model->removeReportFile();
    EXPECT_EQ(QVFileManager::filesInDocumentsDirectory(), QStringList({kept}));
    model->removeReportFile(); // already gone: silent
}

} // namespace
