#pragma once

#include <QString>

// The outcome of a write the user asked for: it landed, or it did not and
// `error` says why in words fit for an alert or a terminal.
struct WriteResult {
    QString error;

    bool ok() const { return error.isNull(); }
    static WriteResult success() { return {}; }
    static WriteResult failure(const QString& reason)
    {
        return {reason.isEmpty() ? QStringLiteral("Unknown error.") : reason};
    }
};
