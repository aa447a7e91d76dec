#pragma once

#include <QUrl>
#include <functional>

// Opens a web address or a local file with the system's handler.
class UrlOpener {
public:
    // What became of an address handed over. NoAnswer: the program that
    // opens it was started but had not finished within its time limit, so
    // whether anything opened is not known.
    enum class Outcome { Opened, Failed, NoAnswer };
    using Done = std::function<void(Outcome)>;

    virtual ~UrlOpener() = default;
    // Hands `url` over and calls `done` once with the outcome: at once, or
    // later from the event loop, never blocking the caller meanwhile.
    virtual void openUrl(const QUrl& url, Done done) = 0;
};

// Where there is no desktop to hand an address to (the command line, and
// until the GUI layer installs its opener): nothing opens.
class NoDesktopUrlOpener final : public UrlOpener {
public:
    void openUrl(const QUrl&, Done done) override
    {
        if (done)
            done(Outcome::Failed);
    }
};
