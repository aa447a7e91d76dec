#include "SupportController.h"

#include "BoundedHttpPost.h"

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
    if (!m_sendEnabled || m_post)
        return;
    emit editingEnded();
    setSendEnabled(false);
    setErrorMessage(QString());

    // A child of this screen: a request still running goes away with it,
    // and its connection with it.
    auto* post =
        new BoundedHttpPost(endpoint(), "application/x-www-form-urlencoded",
                            formBody(m_email, m_name, m_comment), m_deadline, maxReplyBytes, this);
    m_post = post;
    connect(post, &BoundedHttpPost::finished, this, [this, post] { finish(post); });
    post->start();
    setSending(true);
}

void SupportController::finish(BoundedHttpPost* post)
{
    if (post != m_post)
        return;
    m_post = nullptr;
    post->deleteLater();
    setSending(false);

    using Outcome = BoundedHttpPost::Outcome;
    const bool answered = post->outcome() == Outcome::Answered;
    QString text;
    switch (post->outcome()) {
    case Outcome::Answered:
        // Whatever the status, the server's own words are the answer.
        text = replyText(post->cutOff() ? withoutCutSequence(post->body()) : post->body());
        break;
    case Outcome::TimedOut:
        setErrorMessage(QStringLiteral("The support server did not answer within %1 seconds. "
                                       "Please try again.")
                            .arg((m_deadline + 999) / 1000));
        break;
    case Outcome::Compressed:
        setErrorMessage(QStringLiteral("The support server sent a compressed answer, which this "
                                       "app does not read. Please try again."));
        break;
    case Outcome::Unreadable:
        setErrorMessage(
            QStringLiteral("The support server's answer could not be read. Please try again."));
        break;
    case Outcome::Failed:
    case Outcome::Running:
        setErrorMessage(QStringLiteral("Could not reach the support server (%1). Please try again.")
                            .arg(post->reason()));
        break;
    }
    setSendEnabled(!answered);
    if (m_serverResponse != text) {
        m_serverResponse = text;
        emit serverResponseChanged();
    }
    m_responseVisible = answered;
    emit responseVisibleChanged();
    emit replied();
}
