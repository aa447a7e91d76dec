#include "platform/MailComposer.h"

#include "TestSupport.h"
#include "platform/AppPaths.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

namespace {

// A minimal MIME reader: enough to take a draft apart again.
struct Part {
    QMap<QString, QString> headers; // lower-case names
    QByteArray body;                // decoded
};

struct ParsedMail {
    QMap<QString, QString> headers;
    QList<Part> parts;
};

QMap<QString, QString> parseHeaders(const QByteArray& block)
{
    QMap<QString, QString> headers;
    for (const QByteArray& line : block.split('\n')) {
        const QByteArray trimmed = line.trimmed();
        const qsizetype colon = trimmed.indexOf(':');
        if (colon > 0)
            headers.insert(QString::fromLatin1(trimmed.left(colon)).toLower(),
                           QString::fromLatin1(trimmed.mid(colon + 1).trimmed()));
    }
    return headers;
}

ParsedMail parseEml(const QByteArray& eml)
{
    ParsedMail mail;
    const qsizetype headerEnd = eml.indexOf("\r\n\r\n");
    mail.headers = parseHeaders(eml.left(headerEnd));
    const QRegularExpression boundaryRe(QStringLiteral("boundary=\"([^\"]+)\""));
    const QString boundary = boundaryRe.match(mail.headers.value("content-type")).captured(1);
    const QByteArray delimiter = "--" + boundary.toLatin1();
    const QList<QByteArray> chunks = eml.mid(headerEnd).split('\n');
    QByteArray current;
    bool inPart = false;
    auto finish = [&] {
        if (!inPart)
            return;
        const qsizetype split = current.indexOf("\r\n\r\n");
        Part part;
        part.headers = parseHeaders(current.left(split));
        const QByteArray raw = current.mid(split + 4);
        part.body = part.headers.value("content-transfer-encoding") == "base64"
                        ? QByteArray::fromBase64(raw)
                        : raw;
        mail.parts << part;
    };
    for (const QByteArray& line : chunks) {
        const QByteArray trimmed = line.trimmed();
        if (trimmed == delimiter || trimmed == delimiter + "--") {
            finish();
            inPart = trimmed == delimiter;
            current.clear();
            continue;
        }
        if (inPart)
            current += line + '\n';
    }
    return mail;
}

MailMessage reportMessage()
{
    MailMessage message;
    message.subject = QStringLiteral("Quorvex - Financial Report");
    QByteArray binary;
    for (int i = 0; i < 300; ++i)
        binary += char(i % 256);
    message.attachments = {
        {QByteArray("Financial Report - Tip Calculator\nDate: 01-02-2024 09:05\n"),
         QStringLiteral("text/plain"), QStringLiteral("tip__01-02-2024 09:05_report.txt")},
        {binary, QStringLiteral("image/jpeg"), QStringLiteral("graph.png")},
    };
    return message;
}

class MailDraftTest : public HomeTest {};

TEST_F(MailDraftTest, DraftCarriesSubjectUnsentFlagAndEveryAttachmentByteForByte)
{
    const MailMessage message = reportMessage();
    const QByteArray eml = EmlMailComposer::toEml(message, QDateTime::currentDateTime(), "XYZ");
    const ParsedMail mail = parseEml(eml);

    EXPECT_EQ(mail.headers.value("subject"), "Quorvex - Financial Report");
    EXPECT_EQ(mail.headers.value("x-unsent"), "1");
    EXPECT_EQ(mail.headers.value("mime-version"), "1.0");
    EXPECT_TRUE(mail.headers.value("content-type").startsWith("multipart/mixed"));
    EXPECT_FALSE(mail.headers.value("date").isEmpty());
    ASSERT_EQ(mail.parts.size(), 3) << "body plus two attachments";
    EXPECT_TRUE(mail.parts[0].body.isEmpty());

    for (int i = 0; i < 2; ++i) {
        const Part& part = mail.parts[i + 1];
        const MailAttachment& expected = message.attachments[i];
        EXPECT_EQ(part.body, expected.data) << i;
        EXPECT_TRUE(part.headers.value("content-type").startsWith(expected.mimeType)) << i;
        EXPECT_TRUE(part.headers.value("content-disposition")
                        .contains("filename=\"" + expected.fileName + "\""))
            << part.headers.value("content-disposition").toStdString();
    }
    for (const QByteArray& line : eml.split('\n'))
        EXPECT_LE(line.size(), 998) << "RFC 5322 line limit";
}

TEST_F(MailDraftTest, NonAsciiSubjectAndNamesAreEncoded)
{
    MailMessage message;
    message.subject = QStringLiteral("Einladung zu Tallyvane \u00e4");
    message.body = QStringLiteral("<p>Hallo</p>");
    message.bodyIsHtml = true;
    message.attachments = {{"x", "text/plain", QStringLiteral("\u00fcbersicht.txt")}};
    const QByteArray eml = EmlMailComposer::toEml(message, QDateTime::currentDateTime(), "B");
    for (char c : eml)
        ASSERT_LT(static_cast<unsigned char>(c), 128) << "drafts are 7-bit";
    const ParsedMail mail = parseEml(eml);
    EXPECT_TRUE(mail.headers.value("subject").startsWith("=?UTF-8?B?"));
    ASSERT_EQ(mail.parts.size(), 2);
    EXPECT_EQ(QString::fromUtf8(mail.parts[0].body), message.body);
    EXPECT_TRUE(mail.parts[0].headers.value("content-type").startsWith("text/html"));
    EXPECT_TRUE(mail.parts[1].headers.value("content-disposition").contains("filename*=UTF-8''"));
}

TEST_F(MailDraftTest, ComposeWritesTheDraftIntoTheOutboxAndOpensIt)
{
    RecordingUrlOpener opener;
    opener.opens = true;
    EmlMailComposer composer(&opener);
    std::optional<MailResult> result;
    composer.compose(reportMessage(), [&](MailResult r) { result = r; });
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(*result, MailResult::Saved);

    const QStringList drafts = QDir(AppPaths::outboxDirectory()).entryList({"*.eml"});
    ASSERT_EQ(drafts.size(), 1);
    EXPECT_EQ(QDir(AppPaths::outboxDirectory()).filePath(drafts.first()), composer.lastDraftPath());
    ASSERT_EQ(opener.opened.size(), 1);
    EXPECT_EQ(opener.opened.first().toLocalFile(), composer.lastDraftPath());

    QFile file(composer.lastDraftPath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const ParsedMail mail = parseEml(file.readAll());
    ASSERT_EQ(mail.parts.size(), 3);
    EXPECT_EQ(mail.parts[2].body, reportMessage().attachments[1].data);

    composer.compose(reportMessage(), nullptr);
    EXPECT_EQ(QDir(AppPaths::outboxDirectory()).entryList({"*.eml"}).size(), 2)
        << "a second draft never overwrites the first";
}

} // namespace
