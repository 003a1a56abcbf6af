#include "cli/files.h"

#include "cli/report.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cli {

namespace {

QString systemError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// A new file beside its target. Where the file system can, it has no name before it is complete,
/// so that nothing of it remains when the program is killed.
class NewFile {
public:
    explicit NewFile(const QFileInfo& target)
        : m_folder(QFile::encodeName(target.absolutePath())),
          m_target(QFile::encodeName(target.absoluteFilePath())) {
        m_file = open(m_folder.constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
        if (m_file >= 0 && access(descriptorPath().constData(), W_OK) != 0) {
            close(m_file); // no /proc to reach it by
            m_file = -1;
        }
        if (m_file < 0) {
            giveName([&](const char* name) {
                m_file = open(name, O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
                return m_file;
            });
        }
    }
    ~NewFile() {
        if (!m_name.isEmpty()) {
            unlink(m_name.constData());
        }
        if (isOpen()) {
            close(m_file);
        }
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool isOpen() const { return m_file >= 0; }
    QString path() const { return QFile::decodeName(m_name.isEmpty() ? descriptorPath() : m_name); }

    /// Puts it on the disk and into the place of its target. False, with the reason in errno, where
    /// that fails, and where there is a target by now that must stay.
    bool publish(bool overwrite) {
        if (overwrite) {
            keepPermissions();
        }
        if (fsync(m_file) != 0 || !hasName()) {
            return false;
        }
        if ((overwrite ? rename(m_name.constData(), m_target.constData())
                       : renameToNew(m_name.constData(), m_target.constData())) != 0) {
            return false;
        }
        m_name.clear();
        syncFolder();
        return true;
    }

private:
    QByteArray descriptorPath() const { return "/proc/self/fd/" + QByteArray::number(m_file); }

    /// Tries names until \a make(name) finds one free.
    template <typename Make>
    bool giveName(Make&& make) {
        int made = -1;
        for (int n = 0; made < 0 && (n == 0 || errno == EEXIST); ++n) {
            m_name = m_folder + "/.tintwell-" + QByteArray::number(getpid()) + '-' +
                     QByteArray::number(n);
            made = make(m_name.constData());
        }
        if (made < 0) {
            m_name.clear();
        }
        return made >= 0;
    }

    bool hasName() {
        return !m_name.isEmpty() || giveName([this](const char* name) {
            return linkat(AT_FDCWD, descriptorPath().constData(), AT_FDCWD, name,
                          AT_SYMLINK_FOLLOW);
        });
    }

    static int renameToNew(const char* from, const char* to) {
        const int renamed = renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE);
        // Some file systems know no such condition; the target was not there before.
        return renamed != 0 && errno == EINVAL ? rename(from, to) : renamed;
    }

    void keepPermissions() {
        struct stat old {};
        if (stat(m_target.constData(), &old) == 0) {
            static_cast<void>(fchmod(m_file, old.st_mode & 07777));
        }
    }

    /// The new name is safe, too, once its folder is. Not every file system lets folders be synced.
    void syncFolder() {
        const int folder = open(m_folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (folder >= 0) {
            fsync(folder);
            close(folder);
        }
    }

    QByteArray m_folder;
    QByteArray m_target;
    QByteArray m_name;
    int m_file = -1;
};

/// Returns what went wrong, as the writers do.
QString replaceFile(const Target& target, const QFileInfo& place,
                    const std::function<QString(const QString& path)>& write) {
    NewFile file(place);
    if (!file.isOpen()) {
        return systemError();
    }
    QString error = write(file.path());
    if (!error.isEmpty()) {
        return error;
    }
    return file.publish(target.overwrite) ? QString() : systemError();
}

/// A link stays, and what it leads to is replaced.
QFileInfo placeOf(const QString& path) {
    const QFileInfo info(path);
    return info.isSymLink() && info.exists() ? QFileInfo(info.canonicalFilePath()) : info;
}

} // namespace

bool saveFile(const Target& target, const std::function<QString(const QString& path)>& write) {
    const QFileInfo place = placeOf(target.path);
    if (place.isDir()) {
        reportFile(target.path, QStringLiteral("is a folder, expected a file"));
        return false;
    }
    const bool isDevice = place.exists() && !place.isFile(); // nothing there can be replaced
    if (place.exists() && !isDevice && !target.overwrite) {
        reportFile(target.path, QStringLiteral("exists already (--force replaces it)"));
        return false;
    }
    const QString error = isDevice ? write(target.path) : replaceFile(target, place, write);
    if (!error.isEmpty()) {
        reportFile(target.path, QStringLiteral("not written: ") + error);
    }
    return error.isEmpty();
}

} // namespace cli
