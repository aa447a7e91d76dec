#pragma once

#include <QStringList>
#include <QTextStream>

// tallyvane-cli: `arguments` excludes the program name. Writes results to
// `out` and errors to `err`; returns the process exit code.
int runCli(const QStringList& arguments, QTextStream& out, QTextStream& err);
