#pragma once

#include <QString>
#include <functional>

class QIODevice;

// Reading and writing files that someone else may have put there: a file
// is read only when it is a regular file of a sane size, without waiting on
// a pipe; and a file is written into a temporary file beside its target
// first, which takes the target's name only once it is whole, so a write
// that fails (a full disk, a file-size limit) leaves the folder as it was.
namespace SafeFiles {

// What lies at a path, the last step not followed when it is a link.
enum class Kind { Missing, Regular, Folder, Link, Pipe, Device, Socket, Other };
Kind kindOf(const QString& path);
// "a folder", "a link", "a pipe (FIFO)", "a device", ... for messages.
QString describe(Kind kind);

enum class ReadStatus { Read, Failed, NotRegular, TooLarge };
struct ReadResult {
    ReadStatus status = ReadStatus::Failed;
    QString systemError; // for Failed: the system's reason
};

// Reads the regular file at `path` whole, when it holds at most `limit`
// bytes. A link as the last step of `path` is not followed, and a pipe, a
// device, a socket or a folder is refused without being read (opening one
// never waits for a writer).
ReadResult readRegular(const QString& path, qint64 limit, QByteArray* bytes);

// Two paths lead to one file: the same name in the same folder once the
// folders' links are resolved, or the same file on disk (a hard link, or a
// link to it).
bool sameFile(const QString& a, const QString& b);

// Writes the content into `device`; false, with `error` set, when it cannot.
using Producer = std::function<bool(QIODevice* device, QString* error)>;

// Writes `path` with what `produce` writes. A new name always; an existing
// entry only when `replace` is set and it is a regular file (a folder, a
// link, a pipe or a device is never written over). Empty when written, else
// why not, in a sentence.
QString writeFile(const QString& path, bool replace, const Producer& produce);

// Writes a new file into `folder` (made when missing) under the first name
// of nameFor(1), nameFor(2), ... (up to 999) that is free, never replacing
// anything that is there. `name` gets the name used. Empty when written,
// else why not, naming the file; `cause`, when given, gets the bare reason
// ("No space left on device").
QString writeNewFile(const QString& folder, const std::function<QString(int copy)>& nameFor,
                     const Producer& produce, QString* name, QString* cause = nullptr);

} // namespace SafeFiles
