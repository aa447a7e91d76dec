#include "store/QVFileManager.h"

#include "TestSupport.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace {

class FileManagerTest : public HomeTest {};

TEST_F(FileManagerTest, WritesAsciiTextExactlyAndNothingElse)
{
    const QString text = QStringLiteral("Financial Report - Tip\nDate: 01-02-2024 09:05\n");
    EXPECT_TRUE(QVFileManager::saveFileToDocumentsDirectoryWithContents("a_report.txt", text));
    EXPECT_EQ(readDocument("a_report.txt"), text);
    QFile raw(QDir(documents()).filePath("a_report.txt"));
    ASSERT_TRUE(raw.open(QIODevice::ReadOnly));
    EXPECT_EQ(raw.readAll(), text.toLatin1()) << "no byte-order mark, no header";

    for (const QString& text : {QStringLiteral("Tip: 15\u00a0%"), QStringLiteral("caf\u00e9"),
                                QStringLiteral("\u0661\u0662")}) {
        EXPECT_FALSE(QVFileManager::saveFileToDocumentsDirectoryWithContents("x_report.txt", text));
        EXPECT_FALSE(QFile::exists(QDir(documents()).filePath("x_report.txt")));
    }
}

TEST_F(FileManagerTest, NamesThatAreNotPlainFileNamesNeverWrite)
{
    for (const QString& name :
         {QStringLiteral("roi_A/B_report.txt"), QStringLiteral("../escape.txt"),
          QStringLiteral("../../escape.txt"), QStringLiteral("/tmp/abs.txt"), QStringLiteral(".."),
          QStringLiteral("."), QString()}) {
        EXPECT_FALSE(QVFileManager::saveFileToDocumentsDirectoryWithContents(name, "x"))
            << name.toStdString();
    }
    QDirIterator files(home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        EXPECT_FALSE(files.next().contains("escape"));
    EXPECT_FALSE(QFile::exists(QDir(home.path()).filePath("escape.txt")));
}

TEST_F(FileManagerTest, ListsReportFilesAndClearsTheFolder)
{
    EXPECT_TRUE(QVFileManager::filesInDocumentsDirectory().isEmpty()) << "no folder yet";
    EXPECT_TRUE(QVFileManager::listReportFilesFromDocumentsDirectory().isEmpty());
    QVFileManager::saveFileToDocumentsDirectoryWithContents("roi_A_report.txt", "1");
    QVFileManager::saveFileToDocumentsDirectoryWithContents("notes.txt", "2");
    QVFileManager::saveFileToDocumentsDirectoryWithContents("Report.txt", "3");
    QStringList names = QVFileManager::filesInDocumentsDirectory();
    names.sort();
    EXPECT_EQ(names, QStringList({"Report.txt", "notes.txt", "roi_A_report.txt"}));
    EXPECT_EQ(QVFileManager::listReportFilesFromDocumentsDirectory(),
              QStringList({QDir(documents()).filePath("roi_A_report.txt")}))
        << "case-sensitive match on \"report\"";

    QVFileManager::clearDocumentsDirectory();
    EXPECT_TRUE(QVFileManager::filesInDocumentsDirectory().isEmpty());
}

TEST_F(FileManagerTest, RemovesOnlyFilesDirectlyInTheDocumentsFolder)
{
    QFile outside(QDir(home.path()).filePath("keep.txt"));
    ASSERT_TRUE(outside.open(QIODevice::WriteOnly));
    outside.close();
    QVFileManager::saveFileToDocumentsDirectoryWithContents("gone_report.txt", "x");

    EXPECT_FALSE(QVFileManager::removeFileAtPath(documents() + "/../keep.txt"));
    EXPECT_TRUE(QFile::exists(outside.fileName()));
    EXPECT_TRUE(QVFileManager::removeFileAtPath(documents() + "/gone_report.txt"));
    EXPECT_FALSE(QFile::exists(documents() + "/gone_report.txt"));
}

} // namespace
