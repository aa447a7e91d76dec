#include "MailComposer.h"

#include "AppPaths.h"
#include "SafeFiles.h"
#include "Services.h"
#include "UrlOpener.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QRandomGenerator>

namespace {

bool isAscii(const QString& text)
{
    for (QChar c : text) {
        if (c.unicode() > 0x7e || (c.unicode() < 0x20 && c != QLatin1Char('\t')))
            return false;
    }
    return true;
}

// A header value: plain when it is printable ASCII, otherwise an RFC 2047
// encoded word.
QByteArray headerText(const QString& text)
{
    if (isAscii(text))
        return text.toLatin1();
    return "=?UTF-8?B?" + text.toUtf8().toBase64() + "?=";
}

// A file name parameter: quoted when ASCII, RFC 2231 encoded otherwise.
QByteArray nameParameter(const char* key, const QString& name)
{
    if (isAscii(name)) {
        QByteArray quoted = name.toLatin1();
        quoted.replace('\\', "\\\\").replace('"', "\\\"");
        return QByteArray(key) + "=\"" + quoted + '"';
    }
    return QByteArray(key) + "*=UTF-8''" + name.toUtf8().toPercentEncoding();
}

void appendBase64(QByteArray& out, const QByteArray& data)
{
    const QByteArray encoded = data.toBase64();
    for (qsizetype i = 0; i < encoded.size(); i += 76)
        out += encoded.mid(i, 76) + "\r\n";
}

QByteArray rfc2822Date(const QDateTime& date)
{
    const int offset = date.offsetFromUtc() / 60;
    const int magnitude = offset < 0 ? -offset : offset;
    const QString zone = QStringLiteral("%1%2%3")
                             .arg(offset < 0 ? QLatin1Char('-') : QLatin1Char('+'))
                             .arg(magnitude / 60, 2, 10, QLatin1Char('0'))
                             .arg(magnitude % 60, 2, 10, QLatin1Char('0'));
    return (QLocale::c().toString(date, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss ")) + zone)
        .toLatin1();
}

} // namespace

EmlMailComposer::EmlMailComposer(UrlOpener* opener) : m_opener(opener) {}

QByteArray EmlMailComposer::toEml(const MailMessage& message, const QDateTime& date,
                                  const QByteArray& boundary)
{
    QByteArray out;
    out += "Date: " + rfc2822Date(date) + "\r\n";
    if (!message.recipients.isEmpty())
        out += "To: " + headerText(message.recipients.join(QStringLiteral(", "))) + "\r\n";
    out += "Subject: " + headerText(message.subject) + "\r\n";
    out += "MIME-Version: 1.0\r\n";
    out += "X-Unsent: 1\r\n";
    out += "Content-Type: multipart/mixed; boundary=\"" + boundary + "\"\r\n";
    out += "\r\nThis is a multi-part message in MIME format.\r\n";

    out += "--" + boundary + "\r\n";
    out += message.bodyIsHtml ? "Content-Type: text/html; charset=UTF-8\r\n"
                              : "Content-Type: text/plain; charset=UTF-8\r\n";
    out += "Content-Transfer-Encoding: base64\r\n\r\n";
    appendBase64(out, message.body.toUtf8());

    for (const MailAttachment& attachment : message.attachments) {
        out += "--" + boundary + "\r\n";
        out += "Content-Type: " + attachment.mimeType.toLatin1() + "; " +
               nameParameter("name", attachment.fileName) + "\r\n";
        out += "Content-Disposition: attachment; " +
               nameParameter("filename", attachment.fileName) + "\r\n";
        out += "Content-Transfer-Encoding: base64\r\n\r\n";
        appendBase64(out, attachment.data);
    }
    out += "--" + boundary + "--\r\n";
    return out;
}

void EmlMailComposer::compose(const MailMessage& message, Finished finished)
{
    const QDateTime now = QDateTime::currentDateTime();
    const QByteArray boundary =
        "tallyvane-" + QByteArray::number(QRandomGenerator::global()->generate64(), 16);

    // Every draft is a new file: a name already there (a draft of the same
    // millisecond, or anything else) gets "-2", "-3", ...
    const QString stem =
        QStringLiteral("draft-") + now.toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    const QString outbox = AppPaths::outboxDirectory();
    const auto nameFor = [&stem](int copy) {
        return copy == 1 ? stem + QStringLiteral(".eml")
                         : stem + QStringLiteral("-%1.eml").arg(copy);
    };
    const auto writeDraft = [&](QIODevice* device, QString*) {
        const QByteArray eml = toEml(message, now, boundary);
        return device->write(eml) == eml.size();
    };
    QString name;
    QString reason;
    const bool written =
        SafeFiles::writeNewFile(outbox, nameFor, writeDraft, &name, &reason).isEmpty();
    const QString path = QDir(outbox).filePath(written ? name : stem + QStringLiteral(".eml"));
    if (!written) {
        m_lastError =
            QStringLiteral("The mail draft could not be written to %1: %2.").arg(path, reason);
        if (finished)
            finished(MailResult::Failed);
        return;
    }
    m_lastError.clear();
    m_lastDraftPath = path;
    // The answer may come after this composer is gone: it takes nothing of
    // it along.
    UrlOpener& opener = m_opener ? *m_opener : Services::urlOpener();
    opener.openUrl(QUrl::fromLocalFile(path),
                   [finished = std::move(finished)](UrlOpener::Outcome outcome) {
                       if (!finished)
                           return;
                       switch (outcome) {
                       case UrlOpener::Outcome::Opened:
                           finished(MailResult::Saved);
                           break;
                       case UrlOpener::Outcome::Failed:
                           finished(MailResult::Unopened);
                           break;
                       case UrlOpener::Outcome::NoAnswer:
                           finished(MailResult::Unanswered);
                           break;
                       }
                   });
}
