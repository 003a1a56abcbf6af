#include "cli/target.h"

#include "cli/report.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace cli {

namespace {

tintwell::IfExists ifExists(const Target& target) {
    return target.overwrite ? tintwell::IfExists::Replace : tintwell::IfExists::Keep;
}

QString reasonOf(const tintwell::SaveError& error) {
    switch (error.kind) {
    case tintwell::SaveError::Exists:
        return QStringLiteral("exists already (--force replaces it)");
    case tintwell::SaveError::Unsuitable:
        return error.reason;
    case tintwell::SaveError::NotWritten:
        break;
    }
    return QStringLiteral("not written: ") + error.reason;
}

std::optional<tintwell::SaveError> save(const Target& target, const tintwell::WriteContent& write) {
    if (leadsToStandardOutput(target.path)) {
        return tintwell::writeTo(STDOUT_FILENO, write);
    }
    // Once, because a run saves to one folder.
    [[maybe_unused]] static const int removed = tintwell::removeLeftOversBeside(target.path);
    return tintwell::saveFile(target.path, ifExists(target), write);
}

} // namespace

bool isStandardOutput(const QString& path) {
    return path == QLatin1String("-") || path == QLatin1String("/dev/stdout");
}

bool leadsToStandardOutput(const QString& path) {
    struct stat file {};
    struct stat own {};
    return isStandardOutput(path) || (stat(QFile::encodeName(path).constData(), &file) == 0 &&
                                      fstat(STDOUT_FILENO, &own) == 0 && !S_ISCHR(file.st_mode) &&
                                      file.st_dev == own.st_dev && file.st_ino == own.st_ino);
}

std::optional<timespec> timeOfTarget(const QString& path) {
    return leadsToStandardOutput(path) ? std::nullopt : timeOf(path);
}

std::optional<timespec> timeOf(const QString& path) {
    struct stat file {};
    return stat(QFile::encodeName(path).constData(), &file) == 0 && S_ISREG(file.st_mode)
               ? std::optional(file.st_mtim)
               : std::nullopt;
}

std::optional<FileId> idOf(const QString& path) {
    struct stat file {};
    return stat(QFile::encodeName(path).constData(), &file) == 0
               ? std::optional(FileId(file.st_dev, file.st_ino))
               : std::nullopt;
}

QString obstacleTo(const Target& target) {
    const auto error = leadsToStandardOutput(target.path)
                           ? std::nullopt
                           : tintwell::obstacleTo(target.path, ifExists(target));
    return error ? reasonOf(*error) : QString();
}

bool saveFile(const Target& target, const tintwell::WriteContent& write, Notes& notes) {
    const std::optional<tintwell::SaveError> error = save(target, write);
    return !error || notes.fail(target.path, reasonOf(*error));
}

} // namespace cli
