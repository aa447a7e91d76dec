#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>

// Shared by the command-line commands.
namespace CliSupport {

// A JSON string literal.
QString jsonString(const QString& text);
// A JSON number with 17 significant digits; NaN and the infinities become
// the strings "NaN", "Infinity" and "-Infinity".
QString jsonNumber(double value);
// `text` safe to print on a terminal: control characters (line breaks,
// escape sequences) and invisible direction marks are written as escapes
// ("\n", "\t", "\x1b", "\u202e"), a backslash as "\\".
QString printable(const QString& text);

} // namespace CliSupport

int calcCommand(const QStringList& args, bool json, QTextStream& out, QTextStream& err);
int listCommand(const QStringList& args, bool json, QTextStream& out);
