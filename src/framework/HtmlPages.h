#pragma once

#include <QString>

// The app's HTML pages (calculator descriptions, keypad help, information
// pages), by name. A page is a body fragment; the shared style is added
// here so the pages stay plain content.
namespace HtmlPages {

// The page `name` ready to show, or an empty string when there is none.
QString page(const QString& name);

} // namespace HtmlPages
