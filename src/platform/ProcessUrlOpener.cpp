#include "ProcessUrlOpener.h"

#include <QDir>
#include <QProcess>
#include <QTimer>
#include <memory>
#include <utility>

ProcessUrlOpener::ProcessUrlOpener(QString program, std::chrono::milliseconds timeLimit)
    : m_program(std::move(program)), m_timeLimit(timeLimit)
{}

QString ProcessUrlOpener::argumentFor(const QUrl& url)
{
    // A path, not a file URL: openers decode "%" in file URLs, which a file
    // name may hold as it is.
    if (url.isLocalFile())
        return QDir::toNativeSeparators(url.toLocalFile());
    return url.toString(QUrl::FullyEncoded);
}

void ProcessUrlOpener::openUrl(const QUrl& url, Done done)
{
    // The process deletes itself once it has exited. It has no parent: a
    // program that outlives the time limit may be the very mail program or
    // browser it started (xdg-open without a desktop environment waits for
    // it), and deleting a QProcess kills it.
    auto* process = new QProcess;
    // One answer only, from whichever comes first: the exit, a failure to
    // start, or the time limit.
    auto answered = std::make_shared<bool>(false);
    auto answer = [answered, done = std::move(done)](Outcome outcome) {
        if (std::exchange(*answered, true) || !done)
            return;
        done(outcome);
    };
    // Its messages ("no method available") go where the app's own go.
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->setStandardInputFile(QProcess::nullDevice());
    QObject::connect(process, &QProcess::finished, process,
                     [process, answer](int code, QProcess::ExitStatus status) {
                         answer(status == QProcess::NormalExit && code == 0 ? Outcome::Opened
                                                                            : Outcome::Failed);
                         process->deleteLater();
                     });
    QObject::connect(process, &QProcess::errorOccurred, process,
                     [process, answer](QProcess::ProcessError error) {
                         // A crash or a lost pipe ends in finished() too.
                         if (error != QProcess::FailedToStart)
                             return;
                         answer(Outcome::Failed);
                         process->deleteLater();
                     });
    // Still running at the time limit: the program may be showing the
    // address (and waiting for its window to close) or may hang; nothing
    // tells which, so the answer is "no answer" and the user is told that
    // it may not have opened, with the way round it. The program keeps
    // running; its later exit is not reported.
    QTimer::singleShot(m_timeLimit, process, [answer] { answer(Outcome::NoAnswer); });
    process->start(m_program, {argumentFor(url)});
}
