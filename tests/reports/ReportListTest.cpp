#include "TestSupport.h"
#include "platform/Services.h"
#include "platform/SettingsStore.h"
#include "reports/ReportDetailController.h"
#include "reports/ReportTableModel.h"
#include "store/QVFileManager.h"
#include "store/QVReport.h"
#include "store/ReportStore.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <sys/stat.h>

namespace {

class ReportListTest : public HomeTest {
protected:
    void saveThree() { saveReports({"one", "two", "three"}, 61); }
    QStringList titles(const ReportTableModel& list) const
    {
        QStringList out;
        for (int i = 0; i < list.rowCount(); ++i)
            out << list.data(list.index(i), ReportTableModel::TitleRole).toString();
        return out;
    }
};

TEST_F(ReportListTest, FirstLoadCreatesTheListRowsShowRecordsNewestFirstADeletionKeepsTheFile)
{
    ReportTableModel list;
    EXPECT_EQ(list.rowCount(), 0);
    ASSERT_TRUE(QVReport::storedReportList());
    EXPECT_TRUE(QVReport::storedReportList()->isEmpty());

    saveThree();
    list.loadReportArray();
    EXPECT_EQ(titles(list), QStringList({"three", "two", "one"}));
    const QModelIndex top = list.index(0);
    EXPECT_EQ(list.data(top, ReportTableModel::FunctionTitleRole).toString(), "Roi");
    EXPECT_EQ(list.data(top, ReportTableModel::ColorTagRole).toString(), "#1FDA9A");
    EXPECT_EQ(list.data(top, ReportTableModel::FilePathRole).toString(),
              QDir(documents())
                  .filePath("roi_one_05-03-2024 14:07_report.txt"
                            "_two_05-03-2024 14:08_report.txt"
                            "_three_05-03-2024 14:09_report.txt"));
    EXPECT_FALSE(list.data(top, ReportTableModel::DateStringRole).toString().isEmpty());

    const QString file = list.filePathAt(0);
    list.deleteReport(0);
    EXPECT_EQ(titles(list), QStringList({"two", "one"}));
    ReportTableModel reread;
    EXPECT_EQ(titles(reread), QStringList({"two", "one"}));
    EXPECT_TRUE(QFile::exists(file)) << "the text file stays behind";
    list.deleteReport(7);
    list.deleteReport(-1);
    EXPECT_EQ(list.rowCount(), 2);
}

TEST_F(ReportListTest, CorruptedEntriesGiveEmptyRowsAndCannotBeMatched)
{
    ReportTableModel list;
    saveThree();
    QByteArray junk(40, Qt::Uninitialized);
    for (char& c : junk)
        c = char(QRandomGenerator::global()->bounded(256));
    ASSERT_TRUE(ReportStore::insertAtHead(junk).ok());
    ASSERT_TRUE(ReportStore::insertAtHead(QByteArray()).ok());

    list.loadReportArray();
    ASSERT_EQ(list.rowCount(), 5);
    EXPECT_TRUE(list.data(list.index(0), ReportTableModel::TitleRole).toString().isEmpty());
    EXPECT_TRUE(list.filePathAt(0).isEmpty());
    EXPECT_EQ(list.data(list.index(0), ReportTableModel::ColorTagRole).toString(), "transparent");

    // Deleting an unreadable row drops it on screen; the stored entry stays
    // and comes back at the next load.
    list.deleteReport(0);
    EXPECT_EQ(list.rowCount(), 4);
    list.loadReportArray();
    EXPECT_EQ(list.rowCount(), 5);
}

TEST_F(ReportListTest, UndoPutsTheLastDeletedReportBackInItsPlace)
{
    ReportTableModel list;
    saveThree();
    list.loadReportArray();
    const QList<QByteArray> before = list.reportArray();
    EXPECT_FALSE(list.canUndo());
    ASSERT_TRUE(list.removeRow(1).isEmpty());
    EXPECT_EQ(titles(list), QStringList({"three", "one"}));
    EXPECT_TRUE(list.canUndo());
    EXPECT_EQ(list.undoTitle(), "two");

    // A report saved in between stays where it is, above the restored one.
    auto other = QVFunctionModel::create<TestFunctionModel>();
    other->createReport({{"title", "four"}});
    ASSERT_TRUE(other->saveReport().ok());
    ASSERT_TRUE(list.undoDelete().isEmpty());
    EXPECT_EQ(titles(list), QStringList({"four", "three", "two", "one"}));
    EXPECT_EQ(list.reportArray().mid(1), before) << "restored byte for byte";
    EXPECT_FALSE(list.canUndo());

    // Once forgotten, nothing comes back.
    list.removeRow(0);
    list.forgetUndo();
    EXPECT_TRUE(list.undoDelete().isEmpty());
    EXPECT_EQ(titles(list), QStringList({"three", "two", "one"}));
}

TEST_F(ReportListTest, AnOlderSettingsListIsTakenOverOnceInOrderAndLeftAsItWas)
{
    auto& settings = Services::settings();
    QVariantList legacy;
    for (const char* title : {"newest", "middle", "oldest"}) {
        QVReport report;
        report.title = QString::fromLatin1(title);
        legacy << report.archive();
    }
    settings.setValue(QStringLiteral("reports"), legacy);
    settings.sync();

    ReportTableModel list;
    EXPECT_EQ(titles(list), QStringList({"newest", "middle", "oldest"}));
    saveThree();
    ReportTableModel again; // a second start imports nothing more
    EXPECT_EQ(titles(again), QStringList({"three", "two", "one", "newest", "middle", "oldest"}));
    EXPECT_EQ(QSettingsStore().value(QStringLiteral("reports")).toList(), legacy);
}

TEST_F(ReportListTest, ANonListValueInAnOlderSettingsFileImportsNothing)
{
    Services::settings().setValue(QStringLiteral("reports"), QStringLiteral("not a list"));
    ReportTableModel list;
    EXPECT_EQ(list.rowCount(), 0);
    EXPECT_TRUE(list.loadError().isEmpty());
}

class ReportDetailTest : public HomeTest {};

TEST_F(ReportDetailTest, ShowsTheTextFileAndMailsItWithADoubledExtension)
{
    auto mail = std::make_shared<RecordingMailComposer>();
    Services::setMailComposer(mail);
    const QString name = "tip__01-02-2024 09:05_report.txt";
    QVFileManager::saveFileToDocumentsDirectoryWithContents(name, "Financial Report - Tip\n");

    ScriptedPresenter presenter;
    ReportDetailController detail;
    detail.setPresenter(&presenter);
    detail.setReportFilePath(QDir(documents()).filePath(name));
    EXPECT_TRUE(detail.fileFound());
    EXPECT_EQ(detail.text(), "Financial Report - Tip\n");

    presenter.script({{"Send Email", ""}});
    detail.actionClicked();
    ASSERT_EQ(presenter.requests.size(), 1u);
    EXPECT_EQ(shown(presenter.requests[0]),
              QStringList({"Export", "", "Cancel (cancel)", "Send Email", "Save as PDF"}));
    EXPECT_TRUE(presenter.requests[0].anchor.isEmpty());

    ASSERT_EQ(mail->messages.size(), 1u);
    EXPECT_EQ(mail->messages[0].subject, "Quorvex - Financial Report");
    ASSERT_EQ(mail->messages[0].attachments.size(), 1);
    EXPECT_EQ(mail->messages[0].attachments[0].fileName, "tip__01-02-2024 09:05_report.txt.txt");
    EXPECT_EQ(mail->messages[0].attachments[0].data, "Financial Report - Tip\n");
    EXPECT_TRUE(QFile::exists(QDir(documents()).filePath(name))) << "nothing is deleted";
}

TEST_F(ReportDetailTest, SaveAsPdfWritesANewFileBesideTheReportAndSaysWhere)
{
    const QString name = "roi_Plan_05-03-2024 14:07_report.txt";
    QVFileManager::saveFileToDocumentsDirectoryWithContents(
        name, "Financial Report - Return on Investment\nDate: 05-03-2024 14:07\n\nRoi: 25%\n");
    ScriptedPresenter presenter;
    ReportDetailController detail;
    detail.setPresenter(&presenter);
    detail.setReportFilePath(QDir(documents()).filePath(name));
    for (const char* expected :
         {"roi_Plan_05-03-2024 14:07_report.pdf", "roi_Plan_05-03-2024 14:07_report (2).pdf"}) {
        presenter.script({{"Save as PDF", ""}, {"OK", ""}});
        detail.actionClicked();
        EXPECT_EQ(presenter.requests.back().title, "Saved as PDF");
        EXPECT_TRUE(presenter.requests.back().message.endsWith(QString("/") + expected));
        QFile pdf(QDir(documents()).filePath(expected));
        ASSERT_TRUE(pdf.open(QIODevice::ReadOnly)) << expected;
        EXPECT_TRUE(pdf.read(5) == "%PDF-") << "a second save never writes over the first";
    }
}

// A missing text file shows an empty page and mails nothing. A text file
// that is a pipe, or far too large, is not read: the page stays empty at
// once and says why. A chart picture that is a link out of the documents
// folder stays out of the PDF, and the alert says so.
TEST_F(ReportDetailTest, AFileThatIsMissingOrNoRegularFileOfSaneSizeLeavesThePageEmpty)
{
    auto mail = std::make_shared<RecordingMailComposer>();
    Services::setMailComposer(mail);
    const QString text = QDir(documents()).filePath("roi_Plan_05-03-2024 14:07_report.txt");
    ReportDetailController detail;
    detail.setReportFilePath(text);
    EXPECT_FALSE(detail.fileFound());
    EXPECT_TRUE(detail.text().isEmpty());
    EXPECT_TRUE(detail.problem().isEmpty()) << "a missing file is no problem to tell";
    detail.showEmail();
    ASSERT_EQ(mail->messages.size(), 1u);
    EXPECT_TRUE(mail->messages[0].attachments.isEmpty());

    QDir().mkpath(documents());
    ASSERT_EQ(::mkfifo(QFile::encodeName(text).constData(), 0600), 0);
    detail.loadReport();
    EXPECT_FALSE(detail.fileFound());
    EXPECT_EQ(detail.problem(), "The report's text is not a regular file.");

    QFile::remove(text);
    QFile big(text);
    ASSERT_TRUE(big.open(QIODevice::WriteOnly));
    ASSERT_TRUE(big.resize(QVFileManager::maxReadBytes + 1));
    big.close();
    detail.loadReport();
    EXPECT_FALSE(detail.fileFound());
    EXPECT_EQ(detail.problem(), "The report's text is larger than 16 MB.");

    ASSERT_TRUE(big.resize(0));
    QVFileManager::saveFileToDocumentsDirectoryWithContents(QFileInfo(text).fileName(),
                                                            "Financial Report\n");
    QFile outside(home.filePath("outside.png"));
    ASSERT_TRUE(outside.open(QIODevice::WriteOnly));
    outside.write("not for the PDF");
    outside.close();
    ASSERT_TRUE(QFile::link(outside.fileName(),
                            QDir(documents()).filePath("roi_Plan_05-03-2024 14:07_chart.png")));
    ScriptedPresenter presenter;
    detail.setPresenter(&presenter);
    detail.loadReport();
    EXPECT_TRUE(detail.fileFound());
    EXPECT_TRUE(detail.problem().isEmpty());
    presenter.script({{"OK", ""}});
    detail.saveAsPdf();
    ASSERT_EQ(presenter.requests.size(), 1u);
    EXPECT_EQ(presenter.requests[0].title, "Saved as PDF");
    EXPECT_TRUE(presenter.requests[0].message.endsWith(
        "\n\nThe report's chart lies outside the documents folder; it is not read. The PDF has "
        "no chart."))
        << presenter.requests[0].message.toStdString();
}

} // namespace
