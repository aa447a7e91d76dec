#include "SupportController.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace {

// A one-page HTTP server on 127.0.0.1: it keeps every request it receives
// (head and body, as bytes) and answers each with `status` and `reply`.
// With `silent` it reads requests but never answers.
class LocalServer : public QObject {
public:
    LocalServer() { connect(&server, &QTcpServer::newConnection, this, &LocalServer::accept); }

    bool start() { return server.listen(QHostAddress::LocalHost, 0); }
    quint16 port() const { return server.serverPort(); }

    QByteArray status = "200 OK";
    QByteArray reply;
    bool silent = false;
    std::vector<QByteArray> requests;

private:
    void accept()
    {
        while (QTcpSocket* socket = server.nextPendingConnection()) {
            auto buffer = std::make_shared<QByteArray>();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket, buffer] {
                buffer->append(socket->readAll());
                if (isComplete(*buffer)) {
                    requests.push_back(*buffer);
                    buffer->clear();
                    if (!silent)
                        answer(socket);
                }
            });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
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

    void answer(QTcpSocket* socket)
    {
        socket->write("HTTP/1.1 " + status +
                      "\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: " +
                      QByteArray::number(reply.size()) + "\r\nConnection: close\r\n\r\n" + reply);
        socket->disconnectFromHost();
    }

    QTcpServer server;
};

QByteArray headOf(const QByteArray& request)
{
    return request.left(request.indexOf("\r\n\r\n"));
}

QByteArray bodyOf(const QByteArray& request)
{
    return request.mid(request.indexOf("\r\n\r\n") + 4);
}

class SupportTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(server.start());
        pointAt(server.port());
    }
    void TearDown() override { qunsetenv("TALLYVANE_SUPPORT_URL"); }

    static void pointAt(quint16 port)
    {
        qputenv("TALLYVANE_SUPPORT_URL",
                QByteArray("http://127.0.0.1:") + QByteArray::number(port) + "/support.php");
    }
    void fill(const QString& name, const QString& email, const QString& comment)
    {
        form.setName(name);
        form.setEmail(email);
        form.setComment(comment);
    }
    // Sends and waits, with the event loop running, for the reply to show.
    bool sendAndWait(int bound = 10000)
    {
        QSignalSpy replied(&form, &SupportController::replied);
        form.sendClicked();
        return replied.wait(bound) && replied.size() == 1;
    }

    LocalServer server;
    SupportController form;
};

TEST_F(SupportTest, PostsTheFormAsTypedAndShowsTheReply)
{
    fill("Ann", "mail-x", "Hi there");
    server.reply = "Thank you, we will answer soon.";
    EXPECT_FALSE(form.responseVisible());
    ASSERT_TRUE(sendAndWait());

    ASSERT_EQ(server.requests.size(), 1u);
    const QList<QByteArray> head = headOf(server.requests.front()).split('\n');
    EXPECT_EQ(head.front(), "POST /support.php HTTP/1.1\r");
    EXPECT_TRUE(head.contains("Content-Type: application/x-www-form-urlencoded\r"));
    EXPECT_TRUE(head.contains("Host: 127.0.0.1:" + QByteArray::number(server.port()) + "\r"));
    EXPECT_EQ(bodyOf(server.requests.front()),
              "email=mail-x&name=Ann&comment=Hi there&platform=ios");

    EXPECT_EQ(form.serverResponse(), "Thank you, we will answer soon.");
    EXPECT_TRUE(form.responseVisible());
    EXPECT_FALSE(form.sending());
    EXPECT_FALSE(form.sendEnabled());
}

TEST_F(SupportTest, FieldsAreSentRawAndAsUtf8)
{
    // No escaping: "&", "=", "+" and "%" go out as typed, text as UTF-8.
    fill("Zoë & Co", "a+b=c@x", "50% off %2");
    server.reply = "ok";
    ASSERT_TRUE(sendAndWait());
    ASSERT_EQ(server.requests.size(), 1u);
    EXPECT_EQ(bodyOf(server.requests.front()),
              QByteArray("email=a+b=c@x&name=Zo\xc3\xab & Co&comment=50% off %2&platform=ios"));
}

TEST_F(SupportTest, EmptyFieldsAreSentAsEmptyValues)
{
    ASSERT_TRUE(sendAndWait());
    ASSERT_EQ(server.requests.size(), 1u);
    EXPECT_EQ(bodyOf(server.requests.front()), "email=&name=&comment=&platform=ios");
    EXPECT_EQ(form.serverResponse(), "");
    EXPECT_TRUE(form.responseVisible());
}

TEST_F(SupportTest, TheFormIsSentOncePerVisit)
{
    QSignalSpy enabled(&form, &SupportController::sendEnabledChanged);
    QSignalSpy editingEnded(&form, &SupportController::editingEnded);
    server.reply = "first";
    ASSERT_TRUE(sendAndWait());
    EXPECT_EQ(enabled.size(), 1);
    EXPECT_EQ(editingEnded.size(), 1);

    QSignalSpy replied(&form, &SupportController::replied);
    form.setComment("again");
    form.sendClicked();
    form.sendClicked();
    EXPECT_FALSE(replied.wait(300));
    EXPECT_EQ(server.requests.size(), 1u);
    EXPECT_FALSE(form.sendEnabled());
    EXPECT_EQ(form.serverResponse(), "first");
}

TEST_F(SupportTest, ReplyTextIsShownWhateverTheStatus)
{
    server.status = "500 Internal Server Error";
    server.reply = "Fehler: bitte später erneut versuchen";
    ASSERT_TRUE(sendAndWait());
    EXPECT_EQ(form.serverResponse(), QString::fromUtf8("Fehler: bitte später erneut versuchen"));
    EXPECT_TRUE(form.responseVisible());
}

TEST_F(SupportTest, ReplyThatIsNotUtf8ShowsAnEmptyLabel)
{
    for (const QByteArray& reply :
         {QByteArray("caf\xe9"), QByteArray("ok \xc3"), QByteArray("\xff\xfe")}) {
        SCOPED_TRACE(reply.toHex().toStdString());
        SupportController form;
        server.reply = reply;
        QSignalSpy replied(&form, &SupportController::replied);
        form.sendClicked();
        ASSERT_TRUE(replied.wait(10000));
        EXPECT_EQ(form.serverResponse(), "");
        EXPECT_TRUE(form.responseVisible());
    }
}

TEST_F(SupportTest, ServerDownShowsAnEmptyLabelWithoutBlocking)
{
    quint16 closedPort = 0;
    {
        QTcpServer gone;
        ASSERT_TRUE(gone.listen(QHostAddress::LocalHost, 0));
        closedPort = gone.serverPort();
    }
    pointAt(closedPort);
    form.setTransferTimeout(2000);
    fill("Ann", "mail-x", "Hi there");

    // Sending returns at once; the failure arrives through the event loop.
    QElapsedTimer clock;
    clock.start();
    QSignalSpy replied(&form, &SupportController::replied);
    form.sendClicked();
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_TRUE(form.sending());
    EXPECT_FALSE(form.responseVisible());
    ASSERT_TRUE(replied.wait(5000));
    EXPECT_LT(clock.elapsed(), 5000);

    EXPECT_EQ(form.serverResponse(), "");
    EXPECT_TRUE(form.responseVisible());
    EXPECT_FALSE(form.sending());
    EXPECT_FALSE(form.sendEnabled());
    EXPECT_TRUE(server.requests.empty());
}

TEST_F(SupportTest, SilentServerTimesOutToAnEmptyLabel)
{
    server.silent = true;
    form.setTransferTimeout(300);
    fill("Ann", "mail-x", "Hi there");

    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&ticks] { ++ticks; });
    ticker.start(10);

    QElapsedTimer clock;
    clock.start();
    QSignalSpy replied(&form, &SupportController::replied);
    form.sendClicked();
    ASSERT_TRUE(replied.wait(5000));
    const qint64 took = clock.elapsed();
    EXPECT_GE(took, 250) << "gave up before the timeout";
    EXPECT_LT(took, 3000) << "the timeout was not applied";
    EXPECT_GT(ticks, 5) << "the UI thread was blocked while waiting";

    EXPECT_EQ(server.requests.size(), 1u) << "the request did reach the server";
    EXPECT_EQ(form.serverResponse(), "");
    EXPECT_TRUE(form.responseVisible());
    EXPECT_FALSE(form.sendEnabled());
}

} // namespace
