#include "Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace Clipboard {

void copyText(const QString& text)
{
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return;
    if (QClipboard* clipboard = QGuiApplication::clipboard())
        clipboard->setText(text);
}

} // namespace Clipboard
