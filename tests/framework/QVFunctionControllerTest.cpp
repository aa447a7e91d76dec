#include "TestSupport.h"
#include "charts/FakeGraphSource.h"
#include "framework/QVNumericTextField.h"
#include "platform/NotificationCenter.h"
#include "platform/Services.h"
#include "reports/ReportTableModel.h"
#include "store/QVFileManager.h"
#include "store/QVReport.h"
#include "store/ReportStore.h"

#include <QDir>
#include <QImage>
#include <QSignalSpy>

namespace {

class FunctionControllerTest : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        mail = std::make_shared<RecordingMailComposer>();
        review = std::make_shared<CountingReviewPrompt>();
        Services::setMailComposer(mail);
        Services::setReviewPrompt(review);
        list = std::make_unique<ReportTableModel>();
        controller.setPresenter(&presenter);
        controller.load();
    }

    QStringList storedTitles()
    {
        list->loadReportArray();
        QStringList titles;
        for (int i = 0; i < list->count(); ++i)
            titles << list->reportAt(i).title;
        return titles;
    }

    std::shared_ptr<RecordingMailComposer> mail;
    std::shared_ptr<CountingReviewPrompt> review;
    std::unique_ptr<ReportTableModel> list;
    ScriptedPresenter presenter;
    TestFunctionController<TestFunctionModel> controller;
};

TEST_F(FunctionControllerTest, ExportSheetOffersCancelEmailSaveAndACancelSavesNothing)
{
    presenter.script({{"Cancel", ""}});
    controller.exportClicked();
    ASSERT_EQ(presenter.requests.size(), 1u);
    EXPECT_EQ(presenter.requests[0].kind, AlertRequest::Kind::ActionSheet);
    EXPECT_EQ(shown(presenter.requests[0]),
              QStringList({"Export", "Your data report will be written to a txt file.",
                           "Cancel (cancel)", "Send Email", "Save"}));
    EXPECT_EQ(controller.selectedAction(), "cancel");
    EXPECT_EQ(review->requestCount(), 1);
    EXPECT_TRUE(QVFileManager::filesInDocumentsDirectory().isEmpty());

    presenter.script({{"Save", ""}, {"Cancel", "typed"}}); // the title alert cancelled
    controller.exportClicked();
    EXPECT_EQ(controller.selectedAction(), "cancel");
    EXPECT_TRUE(storedTitles().isEmpty());
    EXPECT_TRUE(QVFileManager::filesInDocumentsDirectory().isEmpty());
}

TEST_F(FunctionControllerTest, SaveArchivesAtTheHeadAndConfirms)
{
    presenter.script({{"Save", ""}, {"OK", "Plan A"}, {"OK", ""}});
    controller.exportClicked();

    ASSERT_EQ(presenter.requests.size(), 3u);
    EXPECT_TRUE(presenter.requests[1].hasTextField);
    EXPECT_EQ(
        shown(presenter.requests[1]),
        QStringList({"Report Title", "Enter a title for your report.", "OK", "Cancel (cancel)"}));
    EXPECT_EQ(shown(presenter.requests[2]),
              QStringList({"Calculation Saved",
                           "You can now access your report from the reports section.", "OK"}));

    EXPECT_EQ(storedTitles(), QStringList({"Plan A"}));
    EXPECT_EQ(list->reportAt(0).fileName, "roi_Plan A_05-03-2024 14:07_report.txt");
    EXPECT_EQ(list->reportAt(0).functionTitle, "Roi");
    EXPECT_TRUE(controller.model()->reportSaved());
    EXPECT_TRUE(mail->messages.empty());
}

TEST_F(FunctionControllerTest, ASaveThatCannotLandIsToldAndTouchesNothingSavedBefore)
{
    presenter.script({{"Save", ""}, {"OK", "Kept"}, {"OK", ""}});
    controller.exportClicked();
    ASSERT_EQ(storedTitles(), QStringList({"Kept"}));
    const QStringList keptFiles = QVFileManager::filesInDocumentsDirectory();

    const auto lastAlert = [this] { return presenter.requests.back(); };
    const auto saveTitled = [this](const QString& title) {
        presenter.script({{"Save", ""}, {"OK", title}, {"OK", ""}});
        controller.exportClicked();
    };
    // The text file cannot be written: the documents folder is a file.
    ASSERT_TRUE(QDir(documents()).removeRecursively());
    QFile blocker(documents());
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    saveTitled("No folder");
    EXPECT_EQ(lastAlert().title, "Could not save the report");
    EXPECT_TRUE(lastAlert().message.contains("Documents")) << lastAlert().message.toStdString();
    EXPECT_EQ(storedTitles(), QStringList({"Kept"}));

    // E-mail needs the text file too: told the same way, no mail.
    presenter.script({{"Send Email", ""}, {"OK", ""}});
    controller.exportClicked();
    EXPECT_EQ(lastAlert().title, "Could not save the report");
    EXPECT_TRUE(mail->messages.empty());

    // The list cannot be written: the text file just made goes again.
    ASSERT_TRUE(QFile::remove(documents()));
    ASSERT_TRUE(QDir().mkpath(documents()));
    for (const QString& name : keptFiles)
        QVFileManager::saveFileToDocumentsDirectoryWithContents(name, "kept");
    ReportStore::close();
    for (const char* suffix : {"", "-wal", "-shm"})
        QFile::remove(ReportStore::databasePath() + QLatin1String(suffix));
    ASSERT_TRUE(QDir().mkpath(ReportStore::databasePath()));
    saveTitled("No list");
    EXPECT_EQ(lastAlert().title, "Could not save the report");
    EXPECT_FALSE(lastAlert().message.isEmpty());
    EXPECT_EQ(QVFileManager::filesInDocumentsDirectory(), keptFiles);
    for (const AlertRequest& request : presenter.requests)
        EXPECT_TRUE(request.title != "Calculation Saved" || &request == &presenter.requests[2]);
}

TEST_F(FunctionControllerTest, AMailDraftNoProgramOpensIsShownWithItsFolder)
{
    auto opener = std::make_shared<RecordingUrlOpener>();
    Services::setUrlOpener(opener);
    mail->result = MailResult::Unopened;
    mail->draftPath = home.filePath("Outbox/draft-1.eml");
    presenter.script({{"Send Email", ""}, {"Open Folder", ""}});
    controller.exportClicked();
    ASSERT_EQ(mail->messages.size(), 1u);
    ASSERT_EQ(presenter.requests.size(), 3u);
    const AlertRequest& told = presenter.requests[1];
    EXPECT_EQ(told.title, "Mail draft saved");
    EXPECT_TRUE(told.message.contains(mail->draftPath));
    ASSERT_EQ(opener->opened.size(), 1);
    EXPECT_EQ(opener->opened[0], QUrl::fromLocalFile(home.filePath("Outbox")));
    // No program opens the folder either: its path is shown instead.
    EXPECT_EQ(presenter.requests[2].title, "Could not open the folder");
    EXPECT_TRUE(presenter.requests[2].message.endsWith("\n" + home.filePath("Outbox")));
}

TEST_F(FunctionControllerTest, AnEmptyTitleIsSavedUnconfirmed)
{
    presenter.script({{"Save", ""}, {"OK", ""}}); // "Calculation Saved" left open
    controller.exportClicked();
    EXPECT_EQ(storedTitles(), QStringList({""}));
    EXPECT_EQ(list->reportAt(0).fileName, "roi__05-03-2024 14:07_report.txt");
    EXPECT_FALSE(controller.model()->reportSaved());
}

TEST_F(FunctionControllerTest, EmailAttachesTheReportAndRemovesItsFileAfterwards)
{
    presenter.script({{"Send Email", ""}});
    controller.exportClicked();

    ASSERT_EQ(mail->messages.size(), 1u);
    const MailMessage& message = mail->messages[0];
    EXPECT_EQ(message.subject, "Quorvex - Financial Report");
    EXPECT_TRUE(message.recipients.isEmpty());
    EXPECT_TRUE(message.body.isEmpty());
    ASSERT_EQ(message.attachments.size(), 1);
    EXPECT_EQ(message.attachments[0].fileName, "roi__05-03-2024 14:07_report.txt");
    EXPECT_EQ(message.attachments[0].mimeType, "text/plain");
    EXPECT_EQ(QString::fromLatin1(message.attachments[0].data),
              controller.model()->report().contents);
    EXPECT_EQ(mail->filesWhileComposing, QStringList({"roi__05-03-2024 14:07_report.txt"}));
    EXPECT_TRUE(QVFileManager::filesInDocumentsDirectory().isEmpty());
    EXPECT_TRUE(storedTitles().isEmpty()) << "e-mail alone archives nothing";
}

TEST_F(FunctionControllerTest, AfterAConfirmedSaveMailedFilesStay)
{
    presenter.script({{"Save", ""}, {"OK", "kept"}, {"OK", ""}, {"Send Email", ""}});
    controller.exportClicked();
    setNow(now.addSecs(60));
    controller.exportClicked();
    ASSERT_EQ(mail->messages.size(), 1u);
    EXPECT_EQ(QVFileManager::filesInDocumentsDirectory().size(), 2);
}

TEST_F(FunctionControllerTest, ChartImageTravelsAsJpegNamedGraphPng)
{
    const FakeGraphSource line({{"line", Rgba(0, 128, 128), {"0", "1"}, {1, 2}}});
    controller.chart.source = &line;
    controller.chart.size = QSize(40, 30);
    controller.chart.devicePixelRatio = 1;
    presenter.script({{"Send Email", ""}});
    controller.exportClicked();
    ASSERT_EQ(mail->messages.size(), 1u);
    ASSERT_EQ(mail->messages[0].attachments.size(), 2);
    const MailAttachment& image = mail->messages[0].attachments[1];
    EXPECT_EQ(image.fileName, "graph.png");
    EXPECT_EQ(image.mimeType, "image/jpeg");
    EXPECT_TRUE(image.data.startsWith("\xff\xd8\xff")) << "JPEG bytes";
    EXPECT_EQ(QImage::fromData(image.data).size(), QSize(40, 30));
}

TEST_F(FunctionControllerTest, WithoutMailTheFileStaysAndNothingIsShown)
{
    mail->canSend = false;
    presenter.script({{"Send Email", ""}});
    controller.exportClicked();
    EXPECT_TRUE(mail->messages.empty());
    EXPECT_EQ(QVFileManager::filesInDocumentsDirectory().size(), 1);
    EXPECT_EQ(presenter.requests.size(), 1u);
}

TEST_F(FunctionControllerTest, ScreensOfOtherCalculatorsIgnoreTheReport)
{
    ScriptedPresenter otherPresenter;
    TestFunctionController<OtherFunctionModel> other;
    other.setPresenter(&otherPresenter);
    other.load();
    otherPresenter.script({{"Save", ""}}); // leaves "save" selected on the other screen

    other.exportClicked();
    presenter.script({{"Send Email", ""}});
    controller.exportClicked();
    EXPECT_EQ(mail->messages.size(), 1u);
    EXPECT_TRUE(storedTitles().isEmpty());
    EXPECT_EQ(otherPresenter.requests.size(), 2u) << "sheet and title alert only";
}

TEST_F(FunctionControllerTest, LoadingTitlesTheScreenAndTheDescriptionAsksForAReviewEachTime)
{
    QVFunctionView* view = controller.qvFunctionView();
    EXPECT_EQ(view->title(), "Test Calculator");
    EXPECT_TRUE(view->calculatorVisible());
    EXPECT_TRUE(controller.selectedAction().isEmpty());
    controller.segmentChanged(1);
    EXPECT_TRUE(view->descriptionVisible());
    EXPECT_FALSE(view->calculatorVisible());
    EXPECT_FALSE(view->scrollVisible());
    controller.segmentChanged(0);
    EXPECT_TRUE(view->calculatorVisible());
    EXPECT_TRUE(view->scrollVisible());
    controller.segmentChanged(1);
    EXPECT_EQ(review->requestCount(), 2);
}

TEST(NumericTextField, ChangeSignTogglesWithoutAnEdit)
{
    EXPECT_EQ(QVNumericTextField::changedSign("12.5"), "-12.5");
    EXPECT_EQ(QVNumericTextField::changedSign("-12.5"), "12.5");
    EXPECT_EQ(QVNumericTextField::changedSign(""), "-");
    EXPECT_EQ(QVNumericTextField::changedSign("-"), "");
    // A "-" anywhere drops the first character, whatever it is.
    EXPECT_EQ(QVNumericTextField::changedSign("1e-5"), "e-5");

    QVNumericTextField field;
    field.setText("3");
    QSignalSpy spy(&field, &QVNumericTextField::textChanged);
    field.signClicked();
    EXPECT_EQ(field.text(), "-3");
    EXPECT_EQ(spy.count(), 1);
}

} // namespace
