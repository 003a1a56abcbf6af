#include "cli/files.h"

#include "cli/report.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/mman.h>
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

bool copyToStandardOutput(int file) {
    std::array<char, 1 << 16> block;
    ssize_t count = 0;
    while ((count = read(file, block.data(), block.size())) > 0) {
        if (std::fwrite(block.data(), 1, static_cast<std::size_t>(count), stdout) == 0) {
            return false;
        }
    }
    return count == 0 && std::fflush(stdout) == 0;
}

/// By way of a file in memory: writers take no pipe.
QString writeToStandardOutput(const std::function<QString(const QString& path)>& write) {
    const int file = memfd_create("output", MFD_CLOEXEC);
    if (file < 0) {
        return systemError();
    }
    QString error = write(QStringLiteral("/proc/self/fd/%1").arg(file));
    if (error.isEmpty() && !copyToStandardOutput(file)) {
        error = systemError();
    }
    close(file);
    return error;
}

/// A link stays, and what it leads to is replaced.
QFileInfo placeOf(const QString& path) {
    const QFileInfo info(path);
    return info.isSymLink() && info.exists() ? QFileInfo(info.canonicalFilePath()) : info;
}

struct stat statusOf(const QString& path) {
    struct stat status {};
    static_cast<void>(stat(QFile::encodeName(path).constData(), &status));
    return status;
}

/// A pipe or file that the shell has opened; there is nothing to replace.
bool isStandardOutput(const struct stat& status) {
    struct stat own {};
    return fstat(STDOUT_FILENO, &own) == 0 && own.st_dev == status.st_dev &&
           own.st_ino == status.st_ino;
}

bool isDevice(const struct stat& status) {
    return S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode);
}

/// Why nothing can be written to a path; empty: no reason.
QString obstacle(const QFileInfo& info, const struct stat& status, bool overwrite) {
    if (info.isSymLink() && !info.exists()) {
        return QStringLiteral("is a link that leads nowhere");
    }
    if (S_ISDIR(status.st_mode)) {
        return QStringLiteral("is a folder, expected a file");
    }
    if (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode)) { // with nobody at its other end
        return QStringLiteral("is a pipe or socket, expected a file");
    }
    return S_ISREG(status.st_mode) && !overwrite
               ? QStringLiteral("exists already (--force replaces it)")
               : QString();
}

} // namespace

bool saveFile(const Target& target, const std::function<QString(const QString& path)>& write) {
    const struct stat status = statusOf(target.path);
    const bool toStandardOutput = target.path == QLatin1String("-") || isStandardOutput(status);
    const bool direct = toStandardOutput || isDevice(status);
    const QString problem =
        direct ? QString() : obstacle(QFileInfo(target.path), status, target.overwrite);
    if (!problem.isEmpty()) {
        reportFile(target.path, problem);
        return false;
    }
    const QString error = toStandardOutput ? writeToStandardOutput(write)
                          : direct         ? write(target.path)
                                           : replaceFile(target, placeOf(target.path), write);
    if (!error.isEmpty()) {
        reportFile(target.path, QStringLiteral("not written: ") + error);
    }
    return error.isEmpty();
}

} // namespace cli
