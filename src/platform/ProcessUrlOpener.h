#pragma once

#include "UrlOpener.h"

#include <QString>
#include <chrono>

// Opens an address by running a program with it as the only argument (a
// local file as its path), the way xdg-open is run on Linux desktops. The
// program runs beside the event loop; the address counts as opened only
// when the program exits with status 0 within the time limit. A program
// that cannot be started, crashes or exits with any other status (xdg-open
// exits 3 when it finds no program for the address) has failed.
class ProcessUrlOpener final : public UrlOpener {
public:
    static constexpr std::chrono::milliseconds defaultTimeLimit{10000};

    explicit ProcessUrlOpener(QString program,
                              std::chrono::milliseconds timeLimit = defaultTimeLimit);
    void openUrl(const QUrl& url, Done done) override;

    // The argument the program is given for `url`.
    static QString argumentFor(const QUrl& url);

private:
    QString m_program;
    std::chrono::milliseconds m_timeLimit;
};
