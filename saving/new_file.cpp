#include "saving/new_file.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace tintwell {

namespace {

std::optional<struct stat> statusOf(const QByteArray& path) {
    struct stat status {};
    return stat(path.constData(), &status) == 0 ? std::optional(status) : std::nullopt;
}

/// A file that replaces another gets its permissions at the end; until then nobody else may read
/// it.
mode_t initialMode(bool replaces) {
    return replaces ? 0600 : 0666;
}

/// The old permissions without those that would grant too much if the owner or the group differs:
/// set-user-ID and set-group-ID, and what the old group was allowed but others were not.
mode_t suitableMode(const struct stat& old, const struct stat& own) {
    mode_t mode = old.st_mode & 07777;
    if (own.st_uid != old.st_uid) {
        mode &= ~mode_t{S_ISUID};
    }
    if (own.st_gid != old.st_gid) {
        const mode_t asOthers = (mode & S_IRWXO) << 3;
        mode &= ~mode_t{S_ISGID | S_IRWXG} | asOthers;
    }
    return mode;
}

int moveToNew(const char* from, const char* to) {
    const int moved = renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE);
    // Some file systems do not support that flag; the target did not exist before.
    return moved != 0 && errno == EINVAL ? rename(from, to) : moved;
}

} // namespace

NewFile::NewFile(const QFileInfo& target)
    : m_folder(QFile::encodeName(target.absolutePath())),
      m_target(QFile::encodeName(target.absoluteFilePath())), m_old(statusOf(m_target)),
      m_file(openWithoutName()) {
    if (!isOpen()) {
        m_file = openWithName();
    }
}

Descriptor NewFile::openWithoutName() const {
    Descriptor file(
        open(m_folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, initialMode(m_old.has_value())));
    const bool usable = file.isOpen() && access(file.path().constData(), W_OK) == 0; // needs /proc
    return usable && claim(file.number()) ? std::move(file) : Descriptor();
}

Descriptor NewFile::openWithName() {
    Descriptor file;
    m_name.choose(m_folder, [&](const char* name) {
        file = Descriptor(
            open(name, O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, initialMode(m_old.has_value())));
        if (file.isOpen() && (!claim(file.number()) || access(name, F_OK) != 0)) {
            file = Descriptor(); // removed as a left-over just before it was claimed
            errno = EEXIST;      // try the next name
        }
        return file.isOpen();
    });
    return file;
}

bool NewFile::publish(IfExists ifExists) {
    if (m_old && ifExists == IfExists::Replace) {
        takeRights();
    }
    if (!isOnDisk(m_file.number()) || !moveToTarget(ifExists)) {
        return false;
    }
    syncFolder();
    return true;
}

void NewFile::takeRights() const {
    const int file = m_file.number();
    if (fchown(file, m_old->st_uid, m_old->st_gid) != 0) {
        constexpr auto unchanged = static_cast<uid_t>(-1);
        ignore(fchown(file, unchanged, m_old->st_gid));
    }
    struct stat own {};
    if (fstat(file, &own) == 0) {
        ignore(fchmod(file, suitableMode(*m_old, own)));
    }
}

int NewFile::linkTo(const char* name) const {
    return linkat(AT_FDCWD, m_file.path().constData(), AT_FDCWD, name, AT_SYMLINK_FOLLOW);
}

bool NewFile::moveToTarget(IfExists ifExists) {
    if (!m_name.isChosen()) {
        if (linkTo(m_target.constData()) == 0) {
            return true;
        }
        if (errno != EEXIST || ifExists == IfExists::Keep ||
            !m_name.choose(m_folder, [this](const char* name) { return linkTo(name) == 0; })) {
            return false;
        }
    }
    const char* const from = m_name.name().constData();
    const char* const to = m_target.constData();
    if ((ifExists == IfExists::Replace ? rename(from, to) : moveToNew(from, to)) != 0) {
        return false;
    }
    m_name.giveUp();
    return true;
}

/// The new name is safe only when its folder is synced, too. Not every file system supports that.
void NewFile::syncFolder() const {
    const Descriptor folder(open(m_folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen()) {
        fsync(folder.number());
    }
}

} // namespace tintwell
