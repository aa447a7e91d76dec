#pragma once

#include "platform/ProcessUrlOpener.h"
#include "platform/UrlOpener.h"

#include <chrono>

// Hands web addresses and files to the desktop: on Linux and the BSDs by
// running xdg-open (see ProcessUrlOpener: only its exit status 0 counts as
// opened), elsewhere through QDesktopServices. Without a windowing system
// (offscreen runs) there is no desktop, and nothing opens.
//
// TALLYVANE_URL_OPENER names another program to run instead of xdg-open,
// desktop or not: a user's own opener, or a test's script.
class DesktopUrlOpener final : public UrlOpener {
public:
    explicit DesktopUrlOpener(
        std::chrono::milliseconds timeLimit = ProcessUrlOpener::defaultTimeLimit);
    void openUrl(const QUrl& url, Done done) override;

private:
    std::chrono::milliseconds m_timeLimit;
};

// The services that need QtGui, which the models and the command line go
// without: the desktop's URL handler and clipboard, chart pictures and PDF
// layout. The app installs them once, before its first screen.
namespace DesktopServices {

void install();

} // namespace DesktopServices
