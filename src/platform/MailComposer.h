#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

class UrlOpener;

struct MailAttachment {
    QByteArray data;
    QString mimeType;
    QString fileName;
};

struct MailMessage {
    QString subject;
    QStringList recipients;
    QString body;
    bool bodyIsHtml = false;
    QList<MailAttachment> attachments;
};

// Unopened: the draft was written, but no mail program opened it;
// Unanswered: the draft was written and handed over, but the program that
// opens it had not answered in time, so it may not have opened. For both,
// the composer's lastDraftPath() says where the draft is.
enum class MailResult { Cancelled, Saved, Sent, Failed, Unopened, Unanswered };

// Hands a message to the user's mail program. `finished` is called once,
// whatever became of the message: at once, or later from the event loop.
class MailComposer {
public:
    using Finished = std::function<void(MailResult)>;
    virtual ~MailComposer() = default;
    virtual bool canSendMail() const = 0;
    virtual void compose(const MailMessage& message, Finished finished) = 0;
    // Where the last draft was written, for composers that write drafts.
    virtual QString lastDraftPath() const { return {}; }
    // Why the last message failed (Failed), in a plain sentence.
    virtual QString lastError() const { return {}; }
};

// Desktop composer: writes the message as an unsent RFC 5322 draft
// (MIME multipart, base64 attachments, "X-Unsent: 1") into the outbox folder
// and opens it with the system's mail program; `finished` hears how that
// went once the opener has answered.
class EmlMailComposer final : public MailComposer {
public:
    // Drafts open with `opener`; without one, with the opener installed in
    // Services when the draft is written.
    explicit EmlMailComposer(UrlOpener* opener = nullptr);
    bool canSendMail() const override { return true; }
    void compose(const MailMessage& message, Finished finished) override;

    // The draft's bytes. `boundary` separates the MIME parts.
    static QByteArray toEml(const MailMessage& message, const QDateTime& date,
                            const QByteArray& boundary);

    QString lastDraftPath() const override { return m_lastDraftPath; }
    QString lastError() const override { return m_lastError; }

private:
    UrlOpener* m_opener;
    QString m_lastDraftPath;
    QString m_lastError;
};
