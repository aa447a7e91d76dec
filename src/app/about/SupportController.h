#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>

class BoundedHttpPost;

// The support form: name, e-mail and comment, posted to the maker's server.
// The server's reply text is the answer the user sees; a request that gets
// no answer (no connection, a server that stalls or trickles past the
// deadline) shows a message instead and can be sent again. A form that got
// its answer is not sent twice on one visit.
//
// Bounded in every way: one overall deadline for the whole exchange (not an
// idle timeout a trickling server could keep alive), at the end of which the
// connection is closed whatever the server is still sending; at most
// maxReplyBytes of the reply are ever held (past that the reply is cut off
// and its first part shown); a compressed reply is refused unread.
// BoundedHttpPost does the exchange.
class SupportController : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QString email READ email WRITE setEmail NOTIFY emailChanged)
    Q_PROPERTY(QString comment READ comment WRITE setComment NOTIFY commentChanged)
    Q_PROPERTY(QString serverResponse READ serverResponse NOTIFY serverResponseChanged)
    Q_PROPERTY(bool responseVisible READ responseVisible NOTIFY responseVisibleChanged)
    Q_PROPERTY(bool sendEnabled READ sendEnabled NOTIFY sendEnabledChanged)
    Q_PROPERTY(bool sending READ sending NOTIFY sendingChanged)
    // Why the last send got no answer; empty when it did.
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(int deadline READ deadline WRITE setDeadline NOTIFY deadlineChanged)

public:
    static constexpr int defaultDeadline = 30000;
    static constexpr qint64 maxReplyBytes = 64 * 1024;

    explicit SupportController(QObject* parent = nullptr);

    QString name() const { return m_name; }
    void setName(const QString& name);
    QString email() const { return m_email; }
    void setEmail(const QString& email);
    QString comment() const { return m_comment; }
    void setComment(const QString& comment);
    QString serverResponse() const { return m_serverResponse; }
    bool responseVisible() const { return m_responseVisible; }
    bool sendEnabled() const { return m_sendEnabled; }
    bool sending() const { return m_sending; }
    QString errorMessage() const { return m_errorMessage; }
    // Milliseconds the whole request may take before it is given up.
    int deadline() const { return m_deadline; }
    void setDeadline(int milliseconds);

    // Where the form goes: TALLYVANE_SUPPORT_URL when set, else the
    // address the app was built with.
    static QUrl endpoint();
    // The form body exactly as posted: the fields as typed, not escaped.
    static QByteArray formBody(const QString& email, const QString& name, const QString& comment);
    // The reply as text; empty unless it is valid UTF-8.
    static QString replyText(const QByteArray& body);
    // `body` without a UTF-8 sequence cut off at its end.
    static QByteArray withoutCutSequence(const QByteArray& body);

    // The Send button: posts the form. After an answer the button stays
    // disabled for the life of this screen; after a failure it is enabled
    // again.
    Q_INVOKABLE void sendClicked();

signals:
    void nameChanged();
    void emailChanged();
    void commentChanged();
    void serverResponseChanged();
    void responseVisibleChanged();
    void sendEnabledChanged();
    void sendingChanged();
    void errorMessageChanged();
    void deadlineChanged();
    // The fields should give up the keyboard focus.
    void editingEnded();
    // The request finished, one way or another, and the reply is shown.
    void replied();

private:
    void finish(BoundedHttpPost* post);
    void setSendEnabled(bool enabled);
    void setSending(bool sending);
    void setErrorMessage(const QString& message);

    QString m_name;
    QString m_email;
    QString m_comment;
    QString m_serverResponse;
    bool m_responseVisible = false;
    bool m_sendEnabled = true;
    bool m_sending = false;
    QString m_errorMessage;
    int m_deadline = defaultDeadline;
    QPointer<BoundedHttpPost> m_post;
};
