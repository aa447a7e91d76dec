#include "SafeFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryFile>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace SafeFiles {

namespace {

QByteArray native(const QString& path)
{
    return QFile::encodeName(path);
}

QString systemError(int code)
{
    return QString::fromLocal8Bit(std::strerror(code));
}

Kind kindOfMode(mode_t mode)
{
    if (S_ISREG(mode))
        return Kind::Regular;
    if (S_ISDIR(mode))
        return Kind::Folder;
    if (S_ISLNK(mode))
        return Kind::Link;
    if (S_ISFIFO(mode))
        return Kind::Pipe;
    if (S_ISCHR(mode) || S_ISBLK(mode))
        return Kind::Device;
    if (S_ISSOCK(mode))
        return Kind::Socket;
    return Kind::Other;
}

// More copies of one name than anyone makes by hand: past this a new file
// gives up instead of searching on.
constexpr int maxCopies = 999;

// The permissions a program gives a new file: read and write for everyone
// the user's umask lets through. The umask is read from /proc, since
// umask() can only read it by changing it, which another thread creating a
// file at that moment would feel.
mode_t newFileMode()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QIODevice::ReadOnly)) {
        for (int line = 0; line < 100 && !status.atEnd(); ++line) {
            const QByteArray text = status.readLine(256);
            if (text.startsWith("Umask:")) {
                bool ok = false;
                const uint mask = text.mid(6).trimmed().toUInt(&ok, 8);
                if (ok)
                    return 0666 & ~mode_t(mask);
            }
        }
    }
    return 0644;
}

// Writes what `produce` writes into `file`, a new temporary file, to disk,
// with the permissions `mode`. Empty when all of it landed, else why not.
QString stage(QTemporaryFile& file, const SafeFiles::Producer& produce, mode_t mode)
{
    if (!file.open())
        return file.errorString();
    QString reason;
    if (!produce(&file, &reason))
        return reason.isEmpty() ? QStringLiteral("nothing could be written") : reason;
    if (!file.flush() || file.error() != QFileDevice::NoError)
        return file.errorString();
    if (::fsync(file.handle()) != 0 || ::fchmod(file.handle(), mode) != 0)
        return systemError(errno);
    file.close();
    if (file.error() != QFileDevice::NoError)
        return file.errorString();
    return {};
}

// Gives the staged file `from` the name `to` only while that name is free:
// a rename that never replaces, or where the file system cannot do that, a
// hard link, which never replaces either. False with errno set otherwise
// (EEXIST when the name is taken).
bool placeNew(const QByteArray& from, const QByteArray& to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP)
        return false;
    if (::link(from.constData(), to.constData()) != 0)
        return false;
    ::unlink(from.constData());
    return true;
}

QTemporaryFile* stagingFileIn(const QString& folder)
{
    return new QTemporaryFile(folder + QStringLiteral("/.tallyvane-XXXXXX"));
}

} // namespace

Kind kindOf(const QString& path)
{
    struct stat info {};
    if (::lstat(native(path).constData(), &info) != 0)
        return Kind::Missing;
    return kindOfMode(info.st_mode);
}

QString describe(Kind kind)
{
    switch (kind) {
    case Kind::Missing:
        return QStringLiteral("missing");
    case Kind::Regular:
        return QStringLiteral("a regular file");
    case Kind::Folder:
        return QStringLiteral("a folder");
    case Kind::Link:
        return QStringLiteral("a link");
    case Kind::Pipe:
        return QStringLiteral("a pipe (FIFO)");
    case Kind::Device:
        return QStringLiteral("a device");
    case Kind::Socket:
        return QStringLiteral("a socket");
    case Kind::Other:
        break;
    }
    return QStringLiteral("a special file");
}

ReadResult readRegular(const QString& path, qint64 limit, QByteArray* bytes)
{
    bytes->clear();
    const QByteArray name = native(path);
    // Looked at before it is opened, so a device is never even opened.
    struct stat info {};
    if (::lstat(name.constData(), &info) != 0)
        return {ReadStatus::Failed, systemError(errno)};
    if (!S_ISREG(info.st_mode))
        return {ReadStatus::NotRegular, {}};
    if (info.st_size > limit)
        return {ReadStatus::TooLarge, {}};
    // And again once open, in case the entry was swapped meanwhile: with
    // O_NONBLOCK opening a pipe does not wait for a writer, with O_NOFOLLOW
    // a link is not followed.
    const int fd = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0)
        return errno == ELOOP ? ReadResult{ReadStatus::NotRegular, {}}
                              : ReadResult{ReadStatus::Failed, systemError(errno)};
    const auto closeFile = qScopeGuard([fd] { ::close(fd); });
    if (::fstat(fd, &info) != 0)
        return {ReadStatus::Failed, systemError(errno)};
    if (!S_ISREG(info.st_mode))
        return {ReadStatus::NotRegular, {}};
    if (info.st_size > limit)
        return {ReadStatus::TooLarge, {}};
    // A file that grows while it is read is read up to one byte past the
    // limit, so the growth is noticed; each turn takes at least one byte, so
    // there are at most limit + 1 of them (and a few interrupted ones).
    QByteArray data;
    data.reserve(qsizetype(info.st_size));
    char chunk[65536];
    int interrupted = 0;
    for (;;) {
        const qint64 room = limit + 1 - data.size();
        const ssize_t got = ::read(fd, chunk, size_t(qMin<qint64>(qint64(sizeof chunk), room)));
        if (got < 0) {
            if (errno == EINTR && ++interrupted < 100)
                continue;
            return {ReadStatus::Failed, systemError(errno)};
        }
        if (got == 0)
            break;
        data.append(chunk, qsizetype(got));
        if (data.size() > limit)
            return {ReadStatus::TooLarge, {}};
    }
    *bytes = data;
    return {ReadStatus::Read, {}};
}

bool sameFile(const QString& a, const QString& b)
{
    const auto place = [](const QString& path) {
        const QFileInfo info(path);
        const QString folder = QDir(info.absolutePath()).canonicalPath();
        return (folder.isEmpty() ? QDir::cleanPath(info.absolutePath()) : folder) +
               QLatin1Char('/') + info.fileName();
    };
    if (place(a) == place(b))
        return true;
    struct stat first {};
    struct stat second {};
    return ::stat(native(a).constData(), &first) == 0 &&
           ::stat(native(b).constData(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

QString writeFile(const QString& path, bool replace, const Producer& produce)
{
    const QFileInfo info(path);
    if (info.fileName().isEmpty())
        return QStringLiteral("%1 is not a file name.").arg(path);
    struct stat existing {};
    const bool exists = ::lstat(native(path).constData(), &existing) == 0;
    if (exists && !S_ISREG(existing.st_mode))
        return QStringLiteral("%1 is %2, not a regular file; it is never written over.")
            .arg(path, describe(kindOfMode(existing.st_mode)));
    if (exists && !replace)
        return QStringLiteral("%1 already exists.").arg(path);
    // A replaced file keeps its permissions.
    const mode_t mode = exists ? existing.st_mode & 07777 : newFileMode();
    const std::unique_ptr<QTemporaryFile> staged(stagingFileIn(info.absolutePath()));
    const QString failed = stage(*staged, produce, mode);
    if (!failed.isEmpty())
        return QStringLiteral("%1 could not be written: %2.").arg(path, failed);
    const QByteArray from = native(staged->fileName());
    const QByteArray to = native(path);
    if (replace ? ::rename(from.constData(), to.constData()) != 0 : !placeNew(from, to)) {
        const int code = errno;
        return code == EEXIST
                   ? QStringLiteral("%1 already exists.").arg(path)
                   : QStringLiteral("%1 could not be written: %2.").arg(path, systemError(code));
    }
    staged->setAutoRemove(false);
    return {};
}

QString writeNewFile(const QString& folder, const std::function<QString(int copy)>& nameFor,
                     const Producer& produce, QString* name, QString* cause)
{
    const auto fail = [cause](const QString& reason, const QString& message) {
        if (cause)
            *cause = reason;
        return message;
    };
    if (!QDir().mkpath(folder))
        return fail(QStringLiteral("the folder could not be created"),
                    QStringLiteral("The folder %1 could not be created.").arg(folder));
    const QString first = folder + QLatin1Char('/') + nameFor(1);
    const std::unique_ptr<QTemporaryFile> staged(stagingFileIn(folder));
    const QString failed = stage(*staged, produce, newFileMode());
    if (!failed.isEmpty())
        return fail(failed, QStringLiteral("%1 could not be written: %2.").arg(first, failed));
    const QByteArray from = native(staged->fileName());
    for (int copy = 1; copy <= maxCopies; ++copy) {
        const QString candidate = nameFor(copy);
        if (candidate.isEmpty() || candidate.contains(QLatin1Char('/')) ||
            candidate == QLatin1String(".") || candidate == QLatin1String(".."))
            return fail(QStringLiteral("not a file name"),
                        QStringLiteral("\"%1\" is not a file name.").arg(candidate));
        const QString path = folder + QLatin1Char('/') + candidate;
        if (placeNew(from, native(path))) {
            staged->setAutoRemove(false);
            *name = candidate;
            return {};
        }
        if (errno != EEXIST) {
            const QString reason = systemError(errno);
            return fail(reason, QStringLiteral("%1 could not be written: %2.").arg(path, reason));
        }
    }
    return fail(QStringLiteral("too many files of that name"),
                QStringLiteral("There are too many files named %1 already.").arg(first));
}

} // namespace SafeFiles
