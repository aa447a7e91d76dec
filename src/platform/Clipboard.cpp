#include "Clipboard.h"

namespace {

Clipboard::Handler& installedHandler()
{
    static Clipboard::Handler handler;
    return handler;
}

} // namespace

namespace Clipboard {

void setHandler(Handler handler)
{
    installedHandler() = std::move(handler);
}

void copyText(const QString& text)
{
    if (installedHandler())
        installedHandler()(text);
}

} // namespace Clipboard
