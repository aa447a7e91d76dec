#pragma once

#include <QString>
#include <functional>

namespace Clipboard {

// The desktop's clipboard lives in the GUI layer, which installs the handler
// at start; the command line has none.
using Handler = std::function<void(const QString& text)>;
void setHandler(Handler handler);

// Puts `text` on the desktop's clipboard; does nothing without a desktop
// (the command line).
void copyText(const QString& text);

// The reading side, installed by the GUI layer beside the handler.
using Reader = std::function<QString()>;
void setReader(Reader reader);

// The text on the desktop's clipboard; empty without a desktop or text.
QString text();

} // namespace Clipboard
