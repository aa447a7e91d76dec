#pragma once

#include <QString>

namespace Clipboard {

// Puts `text` on the desktop's clipboard; does nothing without a desktop
// (the command line).
void copyText(const QString& text);

} // namespace Clipboard
