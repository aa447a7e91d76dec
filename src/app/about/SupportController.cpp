#include "SupportController.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QStringDecoder>

SupportController::SupportController(QObject* parent) : QObject(parent) {}

void SupportController::setName(const QString& name)
{
    if (m_name == name)
        return;
    m_name = name;
    emit nameChanged();
}

void SupportController::setEmail(const QString& email)
{
    if (m_email == email)
        return;
    m_email = email;
    emit emailChanged();
}

void SupportController::setComment(const QString& comment)
{
    if (m_comment == comment)
        return;
    m_comment = comment;
    emit commentChanged();
}

void SupportController::setDeadline(int milliseconds)
{
    if (m_deadline == milliseconds)
        return;
    m_deadline = milliseconds;
    emit deadlineChanged();
}

void SupportController::setSendEnabled(bool enabled)
{
    if (m_sendEnabled == enabled)
        return;
    m_sendEnabled = enabled;
    emit sendEnabledChanged();
}

void SupportController::setSending(bool sending)
{
    if (m_sending == sending)
        return;
    m_sending = sending;
    emit sendingChanged();
}

void SupportController::setErrorMessage(const QString& message)
{
    if (m_errorMessage == message)
        return;
    m_errorMessage = message;
    emit errorMessageChanged();
}

QUrl SupportController::endpoint()
{
    const QString configured = qEnvironmentVariable("TALLYVANE_SUPPORT_URL");
    return QUrl(configured.isEmpty() ? QStringLiteral(TALLYVANE_SUPPORT_URL_DEFAULT) : configured);
}

QByteArray SupportController::formBody(const QString& email, const QString& name,
                                       const QString& comment)
{
    // One multi-argument arg(): a "%2" typed into a field stays as typed.
    return QStringLiteral("email=%1&name=%2&comment=%3&platform=ios")
        .arg(email, name, comment)
        .toUtf8();
}

QString SupportController::replyText(const QByteArray& body)
{
    // Stateless, so a sequence cut off at the end counts as an error too.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(body);
    if (decoder.hasError())
        return {};
    return text;
}

QByteArray SupportController::withoutCutSequence(const QByteArray& body)
{
    // Look back over at most three bytes for the lead byte of the last
    // sequence; drop it when its continuation bytes are missing.
    for (qsizetype back = 1; back <= 3 && back <= body.size(); ++back) {
        const uchar c = uchar(body.at(body.size() - back));
        if ((c & 0xC0) == 0x80)
            continue;
        const qsizetype length = c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : c >= 0xC0 ? 2 : 1;
        return length > back ? body.chopped(back) : body;
    }
    return body;
}

void SupportController::sendClicked()
{
    if (!m_sendEnabled || m_reply)
        return;
    emit editingEnded();
    setSendEnabled(false);
    setErrorMessage(QString());

    // The manager, and with it a reply still running, is a child of this
    // screen and goes away with it; no reply outlives the form.
    if (!m_network) {
        m_network = new QNetworkAccessManager(this);
        m_deadlineTimer.setSingleShot(true);
        connect(&m_deadlineTimer, &QTimer::timeout, this, &SupportController::giveUp);
    }
    QNetworkRequest request(endpoint());
    request.setRawHeader("Content-Type", "application/x-www-form-urlencoded");
    m_body.clear();
    m_cutOff = false;
    m_timedOut = false;
    QNetworkReply* reply = m_network->post(request, formBody(m_email, m_name, m_comment));
    // Qt's own buffer never grows past what is ever shown.
    reply->setReadBufferSize(maxReplyBytes);
    m_reply = reply;
    connect(reply, &QNetworkReply::readyRead, this, [this, reply] { take(reply); });
    connect(reply, &QNetworkReply::finished, this, [this, reply] { finish(reply); });
    m_deadlineTimer.start(m_deadline);
    setSending(true);
}

void SupportController::take(QNetworkReply* reply)
{
    const qint64 room = maxReplyBytes - m_body.size();
    if (room > 0)
        m_body += reply->read(room);
    if (m_body.size() >= maxReplyBytes && reply->bytesAvailable() > 0) {
        // More than is ever shown: keep what we have and stop the transfer.
        m_cutOff = true;
        reply->abort();
    }
}

void SupportController::giveUp()
{
    if (!m_reply)
        return;
    m_timedOut = true;
    m_reply->abort();
}

void SupportController::finish(QNetworkReply* reply)
{
    if (reply != m_reply)
        return;
    m_reply = nullptr;
    m_deadlineTimer.stop();
    if (!m_cutOff && !m_timedOut)
        take(reply);
    const bool answered =
        reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid() && !m_timedOut;
    const QString reason = reply->errorString();
    reply->deleteLater();
    setSending(false);

    QString text;
    if (answered) {
        // Whatever the status, the server's own words are the answer.
        text = replyText(m_cutOff ? withoutCutSequence(m_body) : m_body);
    } else if (m_timedOut) {
        setErrorMessage(QStringLiteral("The support server did not answer within %1 seconds. "
                                       "Please try again.")
                            .arg((m_deadline + 999) / 1000));
    } else {
        setErrorMessage(QStringLiteral("Could not reach the support server (%1). Please try again.")
                            .arg(reason));
    }
    m_body = QByteArray();
    setSendEnabled(!answered);
    if (m_serverResponse != text) {
        m_serverResponse = text;
        emit serverResponseChanged();
    }
    m_responseVisible = answered;
    emit responseVisibleChanged();
    emit replied();
}
