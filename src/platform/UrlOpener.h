#pragma once

#include <QUrl>

// Opens a web address or a local file with the system's handler.
class UrlOpener {
public:
    virtual ~UrlOpener() = default;
    virtual bool openUrl(const QUrl& url) = 0;
};

class DesktopUrlOpener final : public UrlOpener {
public:
    bool openUrl(const QUrl& url) override;
};
