#include "BoundedHttpPost.h"

#include <QSslSocket>
#include <QTcpSocket>
#include <utility>

namespace {

// Qt's own read buffer: the socket stops reading from the network when it
// is full, so one pass of receive() never takes more than this.
constexpr qint64 socketBuffer = 64 * 1024;
// A chunk-size line ("1a2b;name=value") is never longer than this.
constexpr qsizetype maxChunkLine = 1024;

} // namespace

BoundedHttpPost::BoundedHttpPost(QUrl url, QByteArray contentType, QByteArray body, int deadlineMs,
                                 qsizetype maxBodyBytes, QObject* parent)
    : QObject(parent), m_url(std::move(url)), m_deadlineMs(deadlineMs), m_maxBody(maxBodyBytes)
{
    const bool secure = m_url.scheme() == QLatin1String("https");
    QByteArray host = m_url.host(QUrl::FullyEncoded).toLatin1();
    if (host.contains(':'))
        host = '[' + host + ']';
    if (m_url.port() != -1 && m_url.port() != (secure ? 443 : 80))
        host += ':' + QByteArray::number(m_url.port());
    QByteArray target = m_url.path(QUrl::FullyEncoded).toLatin1();
    if (target.isEmpty())
        target = "/";
    if (m_url.hasQuery())
        target += '?' + m_url.query(QUrl::FullyEncoded).toLatin1();
    // "identity": the answer must come as it is. "close": one exchange per
    // connection, so the end of the connection can end an answer.
    m_request =
        "POST " + target + " HTTP/1.1\r\nHost: " + host + "\r\nContent-Type: " + contentType +
        "\r\nContent-Length: " + QByteArray::number(body.size()) +
        "\r\nAccept-Encoding: identity\r\nConnection: close\r\nUser-Agent: Tallyvane\r\n\r\n" +
        body;

    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] { end(Outcome::TimedOut); });
}

void BoundedHttpPost::start()
{
    m_deadline.start(m_deadlineMs);
    const bool secure = m_url.scheme() == QLatin1String("https");
    if ((!secure && m_url.scheme() != QLatin1String("http")) || m_url.host().isEmpty()) {
        m_reason = QStringLiteral("not an http address");
        end(Outcome::Failed);
        return;
    }
    const auto send = [this] { m_socket->write(std::exchange(m_request, QByteArray())); };
    QTcpSocket* socket = nullptr;
    if (secure) {
        auto* ssl = new QSslSocket(this);
        connect(ssl, &QSslSocket::encrypted, this, send);
        socket = ssl;
    } else {
        socket = new QTcpSocket(this);
        connect(socket, &QTcpSocket::connected, this, send);
    }
    socket->setReadBufferSize(socketBuffer);
    connect(socket, &QTcpSocket::readyRead, this, &BoundedHttpPost::receive);
    connect(socket, &QTcpSocket::errorOccurred, this, &BoundedHttpPost::closed);
    connect(socket, &QTcpSocket::disconnected, this, &BoundedHttpPost::closed);
    m_socket = socket;
    if (auto* ssl = qobject_cast<QSslSocket*>(socket))
        ssl->connectToHostEncrypted(m_url.host(), quint16(m_url.port(443)));
    else
        socket->connectToHost(m_url.host(), quint16(m_url.port(80)));
}

void BoundedHttpPost::receive()
{
    // Each pass takes what the socket holds, at most socketBuffer bytes; the
    // loop ends when it holds nothing more or the exchange has ended.
    while (m_outcome == Outcome::Running && m_socket && m_socket->bytesAvailable() > 0) {
        m_in += m_socket->read(socketBuffer);
        if (m_stage == Stage::Head)
            takeHead();
        if (m_outcome == Outcome::Running && m_stage != Stage::Head)
            takeBody();
    }
}

void BoundedHttpPost::takeHead()
{
    while (m_outcome == Outcome::Running && m_stage == Stage::Head) {
        const qsizetype at = m_in.indexOf("\r\n\r\n");
        const qsizetype length = at < 0 ? m_in.size() : at + 4;
        if (m_headBytes + length > maxHeadBytes) {
            end(Outcome::Unreadable);
            return;
        }
        if (at < 0)
            return;
        m_headBytes += length;
        const QList<QByteArray> lines = m_in.left(at).split('\n');
        m_in.remove(0, length);

        // "HTTP/1.1 200 OK": the version, three digits, a reason or none.
        const QByteArray statusLine = lines.front().trimmed();
        bool ok = statusLine.startsWith("HTTP/1.") && statusLine.size() >= 12 &&
                  statusLine.at(8) == ' ' && (statusLine.size() == 12 || statusLine.at(12) == ' ');
        const int status = ok ? statusLine.mid(9, 3).toInt(&ok) : 0;
        if (!ok || status < 100) {
            end(Outcome::Unreadable);
            return;
        }
        if (status < 200)
            continue; // an interim answer ("100 Continue"); the real one follows

        qint64 contentLength = -1;
        bool chunked = false;
        bool encoded = false;
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const qsizetype colon = lines.at(i).indexOf(':');
            if (colon <= 0)
                continue;
            const QByteArray name = lines.at(i).left(colon).trimmed().toLower();
            const QByteArray value = lines.at(i).mid(colon + 1).trimmed().toLower();
            if (name == "content-length") {
                contentLength = value.toLongLong(&ok);
                if (!ok || contentLength < 0) {
                    end(Outcome::Unreadable);
                    return;
                }
            } else if (name == "content-encoding") {
                encoded = encoded || (!value.isEmpty() && value != "identity");
            } else if (name == "transfer-encoding") {
                // Only "chunked" is read; any other coding compresses.
                for (const QByteArray& coding : value.split(',')) {
                    const QByteArray c = coding.trimmed();
                    chunked = c == "chunked";
                    encoded = encoded || !(chunked || c == "identity");
                }
            }
        }
        if (encoded) {
            end(Outcome::Compressed);
            return;
        }
        m_status = status;
        if (status == 204 || status == 304) {
            end(Outcome::Answered); // no body, whatever the head says
            return;
        }
        m_stage = chunked ? Stage::ChunkSize : Stage::Body;
        m_remaining = chunked ? 0 : contentLength;
        if (!chunked && contentLength == 0)
            end(Outcome::Answered);
    }
}

void BoundedHttpPost::takeBody()
{
    while (m_outcome == Outcome::Running && !m_in.isEmpty()) {
        switch (m_stage) {
        case Stage::Body: {
            const qsizetype n =
                m_remaining < 0 ? m_in.size() : qMin<qint64>(m_remaining, m_in.size());
            keep(n);
            if (m_remaining > 0 && (m_remaining -= n) == 0)
                end(Outcome::Answered);
            break;
        }
        case Stage::ChunkSize: {
            const qsizetype eol = m_in.indexOf("\r\n");
            if (eol < 0) {
                if (m_in.size() > maxChunkLine)
                    end(Outcome::Unreadable);
                return;
            }
            bool ok = false;
            const qint64 size = m_in.left(eol).split(';').front().trimmed().toLongLong(&ok, 16);
            m_in.remove(0, eol + 2);
            if (!ok || size < 0)
                end(Outcome::Unreadable);
            else if (size == 0)
                end(Outcome::Answered); // the last chunk; trailers are not read
            else {
                m_remaining = size;
                m_stage = Stage::ChunkData;
            }
            break;
        }
        case Stage::ChunkData: {
            const qsizetype n = qMin<qint64>(m_remaining, m_in.size());
            keep(n);
            if ((m_remaining -= n) == 0)
                m_stage = Stage::ChunkEnd;
            break;
        }
        case Stage::ChunkEnd:
            if (m_in.size() < 2)
                return;
            if (!m_in.startsWith("\r\n")) {
                end(Outcome::Unreadable);
                return;
            }
            m_in.remove(0, 2);
            m_stage = Stage::ChunkSize;
            break;
        default:
            return;
        }
    }
}

void BoundedHttpPost::keep(qsizetype length)
{
    const qsizetype room = m_maxBody - m_body.size();
    m_body += m_in.left(qMin(length, room));
    m_in.remove(0, length);
    if (length > room) {
        // More than is ever kept: keep what we have and stop the transfer.
        m_cutOff = true;
        end(Outcome::Answered);
    }
}

void BoundedHttpPost::closed()
{
    if (m_outcome != Outcome::Running || !m_socket)
        return;
    receive(); // what came before the end
    if (m_outcome != Outcome::Running)
        return;
    if (m_status != 0) {
        // A body that runs until the connection ends, or one cut short:
        // what came is the answer.
        end(Outcome::Answered);
    } else if (m_headBytes + m_in.size() > 0) {
        end(Outcome::Unreadable);
    } else {
        m_reason = m_socket->errorString();
        end(Outcome::Failed);
    }
}

void BoundedHttpPost::end(Outcome outcome)
{
    if (m_outcome != Outcome::Running)
        return;
    m_outcome = outcome;
    m_stage = Stage::Done;
    m_deadline.stop();
    m_in = QByteArray();
    m_request = QByteArray();
    if (outcome != Outcome::Answered)
        m_body = QByteArray();
    if (m_socket) {
        // Closed at once, whatever the server is still sending; what the
        // socket holds goes with it.
        m_socket->disconnect(this);
        m_socket->abort();
        m_socket->deleteLater();
        m_socket = nullptr;
    }
    QMetaObject::invokeMethod(
        this, [this] { emit finished(); }, Qt::QueuedConnection);
}
