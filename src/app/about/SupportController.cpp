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

void SupportController::setTransferTimeout(int milliseconds)
{
    if (m_transferTimeout == milliseconds)
        return;
    m_transferTimeout = milliseconds;
    emit transferTimeoutChanged();
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

void SupportController::sendClicked()
{
    if (!m_sendEnabled)
        return;
    emit editingEnded();
    m_sendEnabled = false;
    emit sendEnabledChanged();

    // The manager, and with it a reply still running, is a child of this
    // screen and goes away with it; no reply outlives the form.
    if (!m_network)
        m_network = new QNetworkAccessManager(this);
    QNetworkRequest request(endpoint());
    request.setTransferTimeout(m_transferTimeout);
    request.setRawHeader("Content-Type", "application/x-www-form-urlencoded");
    QNetworkReply* reply = m_network->post(request, formBody(m_email, m_name, m_comment));
    m_sending = true;
    emit sendingChanged();
    connect(reply, &QNetworkReply::finished, this, [this, reply] { finish(reply); });
}

void SupportController::finish(QNetworkReply* reply)
{
    // Neither the status nor the error matters: only the server's own text
    // is shown, and a failed request shows nothing.
    const QString text = replyText(reply->readAll());
    reply->deleteLater();
    m_sending = false;
    emit sendingChanged();
    if (m_serverResponse != text) {
        m_serverResponse = text;
        emit serverResponseChanged();
    }
    m_responseVisible = true;
    emit responseVisibleChanged();
    emit replied();
}
