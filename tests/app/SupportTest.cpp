#include "SupportController.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <gtest/gtest.h>
#include <memory>
#include <sys/resource.h>
#include <vector>

namespace {

// A one-page HTTP server on 127.0.0.1: it keeps every request it receives
// (head and body, as bytes) and answers each with `status` and `reply`, or
// misbehaves as `mode` says.
class LocalServer : public QObject {
public:
    enum class Mode {
        Answer,      // answers at once
        Silent,      // reads the request, never answers
        Trickle,     // sends its answer one byte every `trickleMs`
        CloseAtOnce, // hangs up as soon as the connection is made
        Refused,     // no longer listens: the connection is refused
        EndlessHead, // "200 OK", then one header line that never ends
        SlowHead,    // the same, 512 bytes every 50 ms
    };
    enum class Framing {
        Length,     // Content-Length
        Chunked,    // "Transfer-Encoding: chunked", the body in 3-byte chunks
        UntilClose, // neither: the body ends with the connection
    };

    LocalServer() { connect(&server, &QTcpServer::newConnection, this, &LocalServer::accept); }

    // Listens on a free port and returns it (0 if none); a Refused server
    // closes that port again at once.
    quint16 start()
    {
        const quint16 port = server.listen(QHostAddress::LocalHost, 0) ? server.serverPort() : 0;
        if (mode == Mode::Refused)
            server.close();
        return port;
    }

    QByteArray status = "200 OK";
    QByteArray reply;
    Mode mode = Mode::Answer;
    QByteArray encoding; // its Content-Encoding, if any
    Framing framing = Framing::Length;
    QByteArray preface; // sent before the head
    int trickleMs = 400;
    std::vector<QByteArray> requests;
    qint64 sent = 0; // bytes of endless head written
    int hangUps = 0; // connections ended (by either side)

private:
    void accept()
    {
        while (QTcpSocket* socket = server.nextPendingConnection()) {
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QTcpSocket::disconnected, this, [this] { ++hangUps; });
            if (mode == Mode::CloseAtOnce) {
                socket->abort();
                continue;
            }
            auto buffer = std::make_shared<QByteArray>();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket, buffer] {
                buffer->append(socket->readAll());
                if (isComplete(*buffer)) {
                    requests.push_back(*buffer);
                    buffer->clear();
                    if (mode == Mode::Answer)
                        answer(socket);
                    else if (mode == Mode::Trickle)
                        trickle(socket);
                    else if (mode == Mode::EndlessHead || mode == Mode::SlowHead)
                        endlessHead(socket);
                }
            });
        }
    }

    QByteArray head() const
    {
        const QByteArray framed =
            framing == Framing::Length ? "\r\nContent-Length: " + QByteArray::number(reply.size())
            : framing == Framing::Chunked ? QByteArray("\r\nTransfer-Encoding: chunked")
                                          : QByteArray();
        return "HTTP/1.1 " + status + "\r\nContent-Type: text/plain; charset=utf-8" + framed +
               (encoding.isEmpty() ? QByteArray() : "\r\nContent-Encoding: " + encoding) +
               "\r\nConnection: close\r\n\r\n";
    }

    QByteArray framedBody() const
    {
        if (framing != Framing::Chunked)
            return reply;
        QByteArray chunks;
        for (qsizetype at = 0; at < reply.size(); at += 3)
            chunks += QByteArray::number(qMin<qsizetype>(3, reply.size() - at), 16) + "\r\n" +
                      reply.mid(at, 3) + "\r\n";
        return chunks + "0\r\n\r\n";
    }

    // The status line, then one header line's value for as long as the
    // connection is open: as fast as the client takes it, 64 kB at a time,
    // or slowly.
    void endlessHead(QTcpSocket* socket)
    {
        socket->write("HTTP/1.1 200 OK\r\nX-Padding: ");
        connect(socket, &QTcpSocket::bytesWritten, this,
                [this](qint64 written) { sent += written; });
        if (mode == Mode::SlowHead) {
            auto* timer = new QTimer(socket);
            connect(timer, &QTimer::timeout, socket,
                    [socket] { socket->write(QByteArray(512, 'a')); });
            timer->start(50);
            return;
        }
        const QByteArray part(64 * 1024, 'a');
        connect(socket, &QTcpSocket::bytesWritten, socket, [socket, part] {
            if (socket->bytesToWrite() == 0)
                socket->write(part);
        });
    }

    void trickle(QTcpSocket* socket)
    {
        auto* timer = new QTimer(socket);
        auto sent = std::make_shared<qsizetype>(0);
        const QByteArray bytes = head() + reply;
        connect(timer, &QTimer::timeout, socket, [socket, sent, bytes] {
            if (*sent < bytes.size())
                socket->write(bytes.mid((*sent)++, 1));
        });
        timer->start(trickleMs);
    }

    static bool isComplete(const QByteArray& request)
    {
        const qsizetype end = request.indexOf("\r\n\r\n");
        if (end < 0)
            return false;
        qsizetype length = 0;
        for (const QByteArray& line : request.left(end).split('\n')) {
            const QByteArray trimmed = line.trimmed();
            if (trimmed.toLower().startsWith("content-length:"))
                length = trimmed.mid(15).trimmed().toLongLong();
        }
        return request.size() >= end + 4 + length;
    }

    // Writes the head, then the body 64 kB at a time, the next part once
    // the last has gone, never copying the body whole: a large answer does
    // not hold up the event loop.
    void answer(QTcpSocket* socket)
    {
        constexpr qsizetype part = 64 * 1024;
        auto sent = std::make_shared<qsizetype>(0);
        const QByteArray body = framedBody(); // shared, not copied
        socket->write(preface + head());
        const auto next = [socket, sent, body] {
            if (socket->bytesToWrite() > 0)
                return;
            if (*sent >= body.size()) {
                socket->disconnectFromHost();
                return;
            }
            socket->write(body.mid(*sent, part));
            *sent += part;
        };
        connect(socket, &QTcpSocket::bytesWritten, socket, next);
        next();
    }

    QTcpServer server;
};

class SupportTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        port = server.start();
        ASSERT_NE(port, 0);
        pointAt(port);
    }
    void TearDown() override { qunsetenv("TALLYVANE_SUPPORT_URL"); }

    static void pointAt(quint16 port)
    {
        qputenv("TALLYVANE_SUPPORT_URL",
                QByteArray("http://127.0.0.1:") + QByteArray::number(port) + "/support.php");
    }
    // Sends and waits, with the event loop running, for the reply to show.
    static bool sendAndWait(SupportController& form, int bound = 10000)
    {
        QSignalSpy replied(&form, &SupportController::replied);
        form.sendClicked();
        return replied.wait(bound) && replied.size() == 1;
    }

    LocalServer server;
    quint16 port = 0;
    SupportController form;
};

// Each visit posts its fields as typed: no escaping, so "&", "=", "+" and
// "%" go out as they are, text as UTF-8, asking for an uncompressed reply.
// The reply's text is shown whatever the status and however its length is
// given (Content-Length, chunks, the end of the connection; after an interim
// "100 Continue"), and nothing of a reply that is not UTF-8.
TEST_F(SupportTest, PostsTheFormAsTypedAndShowsTheReply)
{
    const QByteArray empty = "email=&name=&comment=&platform=ios";
    const struct {
        QString name, email, comment;
        QByteArray status, reply, body;
        QString shown;
        LocalServer::Framing framing = LocalServer::Framing::Length;
        QByteArray preface = {};
    } cases[] = {
        {"Ann", "mail-x", "Hi there", "200 OK", "Thank you, we will answer soon.",
         "email=mail-x&name=Ann&comment=Hi there&platform=ios", "Thank you, we will answer soon."},
        {"Zoë & Co", "a+b=c@x", "50% off %2", "200 OK", "ok",
         "email=a+b=c@x&name=Zo\xc3\xab & Co&comment=50% off %2&platform=ios", "ok"},
        {"", "", "", "200 OK", "", empty, ""},
        {"", "", "", "500 Internal Server Error", "Fehler: bitte später erneut versuchen", empty,
         "Fehler: bitte später erneut versuchen"},
        {"", "", "", "200 OK", "caf\xe9", empty, ""},
        {"", "", "", "200 OK", "ok \xc3", empty, ""},
        {"", "", "", "200 OK", "\xff\xfe", empty, ""},
        // 3-byte chunks: "ü" and "ö" are split between two chunks.
        {"", "", "", "200 OK", "Grüße aus Köln", empty, "Grüße aus Köln",
         LocalServer::Framing::Chunked},
        {"", "", "", "200 OK", "", empty, "", LocalServer::Framing::Chunked},
        {"", "", "", "200 OK", "bis gleich", empty, "bis gleich", LocalServer::Framing::UntilClose},
        {"", "", "", "200 OK", "ok", empty, "ok", LocalServer::Framing::Length,
         "HTTP/1.1 100 Continue\r\n\r\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.reply.toHex().toStdString());
        SupportController visit;
        visit.setName(c.name);
        visit.setEmail(c.email);
        visit.setComment(c.comment);
        server.status = c.status;
        server.reply = c.reply;
        server.framing = c.framing;
        server.preface = c.preface;
        EXPECT_FALSE(visit.responseVisible());
        ASSERT_TRUE(sendAndWait(visit));

        const QByteArray& request = server.requests.back();
        const qsizetype headEnd = request.indexOf("\r\n\r\n");
        const QList<QByteArray> head = request.left(headEnd).split('\n');
        EXPECT_EQ(head.front(), "POST /support.php HTTP/1.1\r");
        EXPECT_TRUE(head.contains("Content-Type: application/x-www-form-urlencoded\r"));
        EXPECT_TRUE(head.contains("Host: 127.0.0.1:" + QByteArray::number(port) + "\r"));
        EXPECT_TRUE(head.contains("Accept-Encoding: identity\r"));
        EXPECT_EQ(request.mid(headEnd + 4), c.body);
        EXPECT_EQ(visit.serverResponse(), c.shown);
        EXPECT_TRUE(visit.responseVisible());
        EXPECT_FALSE(visit.sending());
        EXPECT_FALSE(visit.sendEnabled());
    }
    EXPECT_EQ(server.requests.size(), std::size(cases));
}

TEST_F(SupportTest, AnAnsweredFormIsSentOncePerVisit)
{
    QSignalSpy editingEnded(&form, &SupportController::editingEnded);
    server.reply = "first";
    ASSERT_TRUE(sendAndWait(form));
    EXPECT_EQ(editingEnded.size(), 1);
    EXPECT_FALSE(form.sendEnabled());

    QSignalSpy replied(&form, &SupportController::replied);
    form.setComment("again");
    form.sendClicked();
    form.sendClicked();
    EXPECT_FALSE(replied.wait(300));
    EXPECT_EQ(server.requests.size(), 1u);
    EXPECT_EQ(form.serverResponse(), "first");
    EXPECT_TRUE(form.errorMessage().isEmpty());
}

long peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

// 16 MB of zeros as "Content-Encoding: deflate" carries them (zlib's
// format: qCompress's output without its 4-byte length), about 16 kB.
QByteArray deflateBomb()
{
    return qCompress(QByteArray(16 * 1024 * 1024, '\0'), 9).mid(4);
}

// Servers that never answer, trickle, hang up, refuse, flood, send one
// header line without end (fast: refused once it is past what a head may
// be; slowly: until the deadline) or a compressed bomb: each send returns
// at once and ends within the deadline, with a message saying which (or,
// for the flood, the first 64 kB of the answer), the connection closed from
// our side and nothing more received, the screen's event loop keeps
// running, memory stays small, and a failed send can be sent again.
TEST_F(SupportTest, HostileServersEndWithinTheDeadlineAndCanBeRetried)
{
    struct Case {
        const char* name;
        LocalServer::Mode mode;
        QByteArray reply;
        QString message; // how the error message starts; none if answered
        QByteArray encoding = {};
    };
    const QString timedOut = "The support server did not answer within 2 seconds.";
    const QString unreachable = "Could not reach the support server (";
    const QString compressed = "The support server sent a compressed answer";
    const QString unreadable = "The support server's answer could not be read.";
    const Case cases[] = {
        {"never answers", LocalServer::Mode::Silent, {}, timedOut},
        {"trickles a byte at a time", LocalServer::Mode::Trickle, "slow", timedOut},
        {"closes at once", LocalServer::Mode::CloseAtOnce, {}, unreachable},
        {"is not there", LocalServer::Mode::Refused, {}, unreachable},
        {"sends 10 MB", LocalServer::Mode::Answer, QByteArray(10 * 1024 * 1024, 'x'), {}},
        {"sends one endless header", LocalServer::Mode::EndlessHead, {}, unreadable},
        {"sends one endless header slowly", LocalServer::Mode::SlowHead, {}, timedOut},
        {"sends a deflate bomb", LocalServer::Mode::Answer, deflateBomb(), compressed, "deflate"},
    };
    constexpr int deadline = 1500;
    // What the hostile exchanges cost on top of the process's own peak (a
    // sanitizer build starts far higher than a plain one).
    const long baseline = peakMegabytes();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LocalServer hostile;
        hostile.mode = c.mode;
        hostile.reply = c.reply;
        hostile.encoding = c.encoding;
        const quint16 hostilePort = hostile.start();
        ASSERT_NE(hostilePort, 0);
        pointAt(hostilePort);
        SupportController visit;
        visit.setDeadline(deadline);

        int ticks = 0;
        QTimer ticker;
        QObject::connect(&ticker, &QTimer::timeout, [&ticks] { ++ticks; });
        ticker.start(10);
        QElapsedTimer clock;
        clock.start();
        QSignalSpy replied(&visit, &SupportController::replied);
        visit.sendClicked();
        EXPECT_LT(clock.elapsed(), 500) << "sending blocked";
        EXPECT_TRUE(visit.sending());
        ASSERT_TRUE(replied.wait(deadline + 3000));
        EXPECT_LT(clock.elapsed(), deadline + 1000);
        // A 10 ms ticker that ran at most one tick in five was blocked.
        EXPECT_GE(ticks, clock.elapsed() / 50) << "the event loop was blocked";
        EXPECT_LT(peakMegabytes() - baseline, 40);
        EXPECT_FALSE(visit.sending());
        EXPECT_EQ(visit.responseVisible(), c.message.isEmpty());
        if (c.mode != LocalServer::Mode::Refused && c.mode != LocalServer::Mode::CloseAtOnce) {
            // The server sees the connection closed soon after, and
            // nothing more is taken from it.
            QElapsedTimer closing;
            closing.start();
            while (hostile.hangUps == 0 && closing.elapsed() < 1000)
                QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            EXPECT_EQ(hostile.hangUps, 1) << "the connection was left open";
            const qint64 sent = hostile.sent;
            QElapsedTimer later;
            later.start();
            while (later.elapsed() < 300)
                QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            EXPECT_EQ(hostile.sent, sent) << "still receiving";
        }

        if (c.message.isEmpty()) {
            EXPECT_EQ(visit.serverResponse().size(), SupportController::maxReplyBytes);
            EXPECT_TRUE(visit.errorMessage().isEmpty());
            EXPECT_FALSE(visit.sendEnabled());
            continue;
        }
        EXPECT_TRUE(visit.errorMessage().startsWith(c.message))
            << visit.errorMessage().toStdString();
        EXPECT_TRUE(visit.serverResponse().isEmpty());
        EXPECT_TRUE(visit.sendEnabled()) << "no way to send again";

        // Sent again, to a server that answers this time.
        pointAt(port);
        server.reply = "thanks";
        QSignalSpy again(&visit, &SupportController::replied);
        visit.sendClicked();
        ASSERT_TRUE(again.wait(5000));
        EXPECT_EQ(visit.serverResponse(), "thanks");
        EXPECT_TRUE(visit.errorMessage().isEmpty());
    }
    EXPECT_EQ(server.requests.size(), 7u) << "one per retry";
    EXPECT_TRUE(SupportController::defaultDeadline >= 20000 &&
                SupportController::defaultDeadline <= 40000);
}

TEST(SupportReply, ACutOffUtf8SequenceIsDroppedFromTheShownPart)
{
    EXPECT_EQ(SupportController::withoutCutSequence("ab\xc3"), "ab");
    EXPECT_EQ(SupportController::withoutCutSequence("ab\xe2\x82"), "ab");
    EXPECT_EQ(SupportController::withoutCutSequence("ab\xe2\x82\xac"), "ab\xe2\x82\xac");
    EXPECT_EQ(SupportController::withoutCutSequence("abc"), "abc");
    EXPECT_EQ(SupportController::withoutCutSequence(""), "");
}

} // namespace
