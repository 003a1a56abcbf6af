#include "saving/save_file.h"

#include "saving/descriptors.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tintwell {

namespace {

using Result = std::optional<SaveError>;

Result notWritten(const QString& reason) {
    return SaveError{SaveError::NotWritten, reason};
}

Result systemFailure() {
    return errno == EEXIST ? SaveError{SaveError::Exists, systemError()}
                           : notWritten(systemError());
}

QString pathTo(const Descriptor& file) {
    return QFile::decodeName(file.path());
}

/// Writes the content to memory first, because writers cannot write to pipes, and a failure before
/// the end must leave the target as it is. \a deliver(descriptor) copies the content to the target.
template <typename Deliver>
Result writeByMemory(const WriteContent& write, Deliver&& deliver) {
    const Descriptor memory(memfd_create("content", MFD_CLOEXEC));
    if (!memory.isOpen()) {
        return systemFailure();
    }
    const QString error = write(pathTo(memory));
    if (!error.isEmpty()) {
        return notWritten(error);
    }
    return deliver(memory.number()) ? std::nullopt : systemFailure();
}

Descriptor openToWrite(const QString& path) {
    return Descriptor(open(QFile::encodeName(path), O_WRONLY | O_CLOEXEC | O_NOCTTY));
}

/// Reserves space for \a size bytes, if the file system can. False if there is not enough.
bool reserve(int file, off_t size, off_t sizeBefore) {
    if (size == 0 || fallocate(file, FALLOC_FL_KEEP_SIZE, 0, size) == 0) {
        return true;
    }
    const int reason = errno;
    ignore(ftruncate(file, sizeBefore)); // frees what was reserved before the failure
    errno = reason;
    return reason != ENOSPC && reason != EDQUOT && reason != EFBIG;
}

/// Replaces the content of a file by that of the descriptor \a content.
bool overwrite(const QString& path, int content) {
    const Descriptor file = openToWrite(path);
    struct stat now {};
    struct stat then {};
    return file.isOpen() && fstat(file.number(), &now) == 0 && fstat(content, &then) == 0 &&
           reserve(file.number(), then.st_size, now.st_size) && copyRest(content, file.number()) &&
           ftruncate(file.number(), then.st_size) == 0 && isOnDisk(file.number());
}

bool writeDevice(const QString& path, int content) {
    const Descriptor device = openToWrite(path);
    return device.isOpen() && copyRest(content, device.number()) && isOnDisk(device.number());
}

/// Whether a new file failed because of its folder: the folder may not be written to, or the old
/// file is a mount point.
bool isFoldersFault(int reason) {
    return reason == EACCES || reason == EPERM || reason == EROFS || reason == EBUSY;
}

Result replaceFile(const QFileInfo& place, IfExists ifExists, const WriteContent& write) {
    const QString path = place.filePath();
    const bool overwrites = ifExists == IfExists::Replace && place.exists();
    NewFile file(place);
    if (!file.isOpen()) {
        return overwrites && isFoldersFault(errno)
                   ? writeByMemory(write, [&](int content) { return overwrite(path, content); })
                   : systemFailure();
    }
    const QString error = write(pathTo(file.descriptor()));
    if (!error.isEmpty()) {
        return notWritten(error);
    }
    const bool saved = file.publish(ifExists) || (overwrites && isFoldersFault(errno) &&
                                                  overwrite(path, file.descriptor().number()));
    return saved ? std::nullopt : systemFailure();
}

/// A link is kept, and the file it leads to is replaced.
QFileInfo placeOf(const QFileInfo& info) {
    return info.isSymLink() ? QFileInfo(info.canonicalFilePath()) : info;
}

struct stat statusOf(const QString& path) {
    struct stat status {};
    ignore(stat(QFile::encodeName(path).constData(), &status));
    return status;
}

/// What is at the path instead of a file; empty if it is free or has a file.
QString obstacle(const QFileInfo& info, mode_t mode) {
    if (info.isSymLink() && !info.exists()) {
        return QStringLiteral("is a link that leads nowhere");
    }
    if (S_ISDIR(mode)) {
        return QStringLiteral("is a folder, expected a file");
    }
    if (S_ISFIFO(mode) || S_ISSOCK(mode)) { // with nobody at its other end
        return QStringLiteral("is a pipe or socket, expected a file");
    }
    return {};
}

} // namespace

Result obstacleTo(const QString& path, IfExists ifExists) {
    const mode_t mode = statusOf(path).st_mode;
    const QString problem = obstacle(QFileInfo(path), mode);
    if (!problem.isEmpty()) {
        return SaveError{SaveError::Unsuitable, problem};
    }
    if (S_ISREG(mode) && ifExists == IfExists::Keep) {
        errno = EEXIST;
        return systemFailure();
    }
    return std::nullopt;
}

Result saveFile(const QString& path, IfExists ifExists, const WriteContent& write) {
    if (Result problem = obstacleTo(path, ifExists)) {
        return problem;
    }
    const mode_t mode = statusOf(path).st_mode;
    if (S_ISCHR(mode) || S_ISBLK(mode)) {
        return writeByMemory(write, [&](int content) { return writeDevice(path, content); });
    }
    return replaceFile(placeOf(QFileInfo(path)), ifExists, write);
}

int removeLeftOversBeside(const QString& path) {
    return removeLeftOvers(placeOf(QFileInfo(path)).absolutePath());
}

Result writeTo(int descriptor, const WriteContent& write) {
    return writeByMemory(write, [descriptor](int content) {
        return copyRest(content, descriptor) && isDelivered(descriptor);
    });
}

} // namespace tintwell
