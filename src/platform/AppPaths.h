#pragma once

#include <QString>

// Where Tallyvane keeps its files. TALLYVANE_HOME=<dir> moves everything
// (settings, documents, outbox) under <dir>, for tests and portable use.
namespace AppPaths {

// The root of the app's own files: $TALLYVANE_HOME, or the writable
// application data location.
QString appHome();

// The folder holding the report text files.
QString documentsDirectory();

// The folder receiving e-mail drafts.
QString outboxDirectory();

// The settings file used when TALLYVANE_HOME is set; empty otherwise.
QString settingsFile();

// The folder of the app's configuration: $TALLYVANE_HOME, or the writable
// per-user configuration location.
QString configDirectory();

// The saved-reports database, in the configuration folder.
QString reportsDatabase();

} // namespace AppPaths
