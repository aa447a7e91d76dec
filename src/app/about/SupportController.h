#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

class QNetworkAccessManager;
class QNetworkReply;

// The support form: name, e-mail and comment, posted once to the maker's
// server. The server's reply text is the only answer the user sees.
class SupportController : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QString email READ email WRITE setEmail NOTIFY emailChanged)
    Q_PROPERTY(QString comment READ comment WRITE setComment NOTIFY commentChanged)
    Q_PROPERTY(QString serverResponse READ serverResponse NOTIFY serverResponseChanged)
    Q_PROPERTY(bool responseVisible READ responseVisible NOTIFY responseVisibleChanged)
    Q_PROPERTY(bool sendEnabled READ sendEnabled NOTIFY sendEnabledChanged)
    Q_PROPERTY(bool sending READ sending NOTIFY sendingChanged)
    Q_PROPERTY(int transferTimeout READ transferTimeout WRITE setTransferTimeout NOTIFY
                   transferTimeoutChanged)

public:
    static constexpr int defaultTransferTimeout = 60000;

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
    // Milliseconds the request may take before it is given up.
    int transferTimeout() const { return m_transferTimeout; }
    void setTransferTimeout(int milliseconds);

    // Where the form goes: TALLYVANE_SUPPORT_URL when set, else the
    // address the app was built with.
    static QUrl endpoint();
    // The form body exactly as posted: the fields as typed, not escaped.
    static QByteArray formBody(const QString& email, const QString& name, const QString& comment);
    // The reply as text; empty unless it is valid UTF-8.
    static QString replyText(const QByteArray& body);

    // The Send button: posts the form once. The button stays disabled for
    // the life of this screen, whatever the outcome.
    Q_INVOKABLE void sendClicked();

signals:
    void nameChanged();
    void emailChanged();
    void commentChanged();
    void serverResponseChanged();
    void responseVisibleChanged();
    void sendEnabledChanged();
    void sendingChanged();
    void transferTimeoutChanged();
    // The fields should give up the keyboard focus.
    void editingEnded();
    // The request finished, one way or another, and the reply is shown.
    void replied();

private:
    void finish(QNetworkReply* reply);

    QString m_name;
    QString m_email;
    QString m_comment;
    QString m_serverResponse;
    bool m_responseVisible = false;
    bool m_sendEnabled = true;
    bool m_sending = false;
    int m_transferTimeout = defaultTransferTimeout;
    QNetworkAccessManager* m_network = nullptr;
};
