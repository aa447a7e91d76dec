#include "Clipboard.h"

namespace {

Clipboard::Handler& installedHandler()
{
    static Clipboard::Handler handler;
    return handler;
}

Clipboard::Reader& installedReader()
{
    static Clipboard::Reader reader;
    return reader;
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

void setReader(Reader reader)
{
    installedReader() = std::move(reader);
}

QString text()
{
    return installedReader() ? installedReader()() : QString();
}

} // namespace Clipboard
