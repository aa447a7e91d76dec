#pragma once

#include "platform/UrlOpener.h"

// Hands web addresses and files to the desktop. Without a windowing system
// (offscreen runs) there is no desktop, and nothing opens.
class DesktopUrlOpener final : public UrlOpener {
public:
    bool openUrl(const QUrl& url) override;
};

// The services that need QtGui, which the models and the command line go
// without: the desktop's URL handler and clipboard, chart pictures and PDF
// layout. The app installs them once, before its first screen.
namespace DesktopServices {

void install();

} // namespace DesktopServices
