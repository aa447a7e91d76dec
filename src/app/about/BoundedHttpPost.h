#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QUrl>

class QTcpSocket;

// One HTTP/1.1 POST over a connection of its own, bounded in every way a
// server could stretch it: one deadline for the whole exchange, at most
// maxHeadBytes of status line and headers, at most maxBodyBytes of the
// answer kept (the rest is not read), and no compressed answers. Whatever
// ends the exchange closes the connection at once and frees all it read.
//
// Deliberately not QNetworkAccessManager: in Qt 6.4 its HTTP thread reads a
// reply's head without limit, and while a server keeps sending one endless
// header line that thread never gets back to its event loop, so neither
// aborting the reply nor deleting the manager closes the connection (the
// latter even blocks the caller for 5 s waiting for the thread). A socket
// on the caller's own event loop can always be closed.
//
// Redirects are not followed: their own text is the answer.
class BoundedHttpPost : public QObject {
    Q_OBJECT

public:
    static constexpr qsizetype maxHeadBytes = 32 * 1024;

    enum class Outcome {
        Running,
        Answered,   // a status and its body (or its first maxBodyBytes)
        TimedOut,   // the deadline came first
        Failed,     // no connection, or it broke before a status came
        Unreadable, // not an HTTP answer, or a head past maxHeadBytes
        Compressed, // a Content-Encoding other than identity: not read
    };

    BoundedHttpPost(QUrl url, QByteArray contentType, QByteArray body, int deadlineMs,
                    qsizetype maxBodyBytes, QObject* parent = nullptr);

    // Connects and sends; finished() follows, never from within start().
    void start();

    Outcome outcome() const { return m_outcome; }
    int status() const { return m_status; }
    // The answer's body as far as it was kept.
    QByteArray body() const { return m_body; }
    // The body went on past maxBodyBytes and was cut off there.
    bool cutOff() const { return m_cutOff; }
    // Why the connection failed, as the socket says it.
    QString reason() const { return m_reason; }

signals:
    void finished();

private:
    enum class Stage { Head, Body, ChunkSize, ChunkData, ChunkEnd, Done };

    void receive();
    void closed();
    void takeHead();
    void takeBody();
    void keep(qsizetype length);
    void end(Outcome outcome);

    QUrl m_url;
    QByteArray m_request;
    int m_deadlineMs;
    qsizetype m_maxBody;
    QPointer<QTcpSocket> m_socket;
    QTimer m_deadline;
    Stage m_stage = Stage::Head;
    QByteArray m_in;           // read but not yet taken: a part of the head, or
                               // of the body at most one socket buffer long
    qsizetype m_headBytes = 0; // of all heads so far (interim "1xx" ones too)
    qint64 m_remaining = -1;   // of the body or the current chunk; -1: until close
    Outcome m_outcome = Outcome::Running;
    int m_status = 0;
    QByteArray m_body;
    bool m_cutOff = false;
    QString m_reason;
};
