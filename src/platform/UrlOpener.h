#pragma once

#include <QUrl>

// Opens a web address or a local file with the system's handler.
class UrlOpener {
public:
    virtual ~UrlOpener() = default;
    virtual bool openUrl(const QUrl& url) = 0;
};

// Where there is no desktop to hand an address to (the command line, and
// until the GUI layer installs its opener): nothing opens.
class NoDesktopUrlOpener final : public UrlOpener {
public:
    bool openUrl(const QUrl&) override { return false; }
};
