#include "cli/target.h"

#include "cli/report.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace cli {

namespace {

/// Includes a file that the shell has opened as standard output: it is the shell's to replace.
bool leadsToStandardOutput(const QString& path) {
    struct stat file {};
    struct stat own {};
    return isStandardOutput(path) || (stat(QFile::encodeName(path).constData(), &file) == 0 &&
                                      fstat(STDOUT_FILENO, &own) == 0 && !S_ISCHR(file.st_mode) &&
                                      file.st_dev == own.st_dev && file.st_ino == own.st_ino);
}

QString reasonOf(const tintwell::SaveError& error) {
    switch (error.kind) {
    case tintwell::SaveError::Exists:
        return existsAlready();
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
    return tintwell::saveFile(
        target.path, target.overwrite ? tintwell::IfExists::Replace : tintwell::IfExists::Keep,
        write);
}

} // namespace

bool isStandardOutput(const QString& path) {
    return path == QLatin1String("-") || path == QLatin1String("/dev/stdout");
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

QString existsAlready() {
    return QStringLiteral("exists already (--force replaces it)");
}

bool saveFile(const Target& target, const tintwell::WriteContent& write, Notes& notes) {
    const std::optional<tintwell::SaveError> error = save(target, write);
    return !error || notes.fail(target.path, reasonOf(*error));
}

} // namespace cli
