#include "lut/bounded_read.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tintwell {

namespace {

QString systemError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

QString tooLarge(std::int64_t size) {
    return QStringLiteral("found %1 bytes, expected at most %2").arg(size).arg(MaxFileSize);
}

/// A regular file, open for reading. Its type is checked after opening: the path may lead to
/// something else a moment later.
class RegularFile {
public:
    RegularFile(const QString& path, QString& error)
        : m_file(open(QFile::encodeName(path).constData(),
                      O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {
        struct stat status {};
        if (m_file < 0 || fstat(m_file, &status) != 0) {
            error = systemError();
        } else if (S_ISDIR(status.st_mode)) {
            error = QStringLiteral("is a folder, expected a file");
        } else if (!S_ISREG(status.st_mode)) {
            error = QStringLiteral("is not a regular file");
        } else {
            m_size = status.st_size;
        }
    }
    ~RegularFile() {
        if (m_file >= 0) {
            close(m_file);
        }
    }
    RegularFile(const RegularFile&) = delete;
    RegularFile& operator=(const RegularFile&) = delete;

    /// The size that the system reports: some files report 0 and hold more. None if the file is not
    /// open.
    std::optional<std::int64_t> size() const { return m_size; }

    /// Up to \a most bytes; fewer only at the end of the file. None if reading fails. The buffer
    /// has room for \a expected bytes and a few more, so that the end is seen without growing it
    /// and a caller can append to the text.
    std::optional<QByteArray> read(int expected, int most, QString& error) const {
        constexpr int spare = 16;
        QByteArray content(std::min(expected, most) + spare, Qt::Uninitialized);
        int used = 0;
        while (used < most) {
            if (used == content.size()) {
                content.resize(2 * used); // most is less than half of the largest int
            }
            const int room = std::min(content.size(), most) - used;
            const ssize_t count =
                ::read(m_file, content.data() + used, static_cast<std::size_t>(room));
            if (count < 0 && errno == EINTR) {
                continue;
            }
            if (count < 0) {
                error = systemError();
                return std::nullopt;
            }
            if (count == 0) {
                break;
            }
            used += static_cast<int>(count);
        }
        content.truncate(used);
        return content;
    }

private:
    int m_file;
    std::optional<std::int64_t> m_size;
};

} // namespace

std::optional<QByteArray> readBounded(const QString& path, QString& error) {
    const RegularFile file(path, error);
    if (!file.size()) {
        return std::nullopt;
    }
    if (*file.size() > MaxFileSize) {
        error = tooLarge(*file.size());
        return std::nullopt;
    }
    constexpr auto most = static_cast<int>(MaxFileSize);
    std::optional<QByteArray> content = file.read(static_cast<int>(*file.size()), most + 1, error);
    if (content && content->size() > most) {
        error = tooLarge(content->size());
        return std::nullopt;
    }
    return content;
}

std::optional<QByteArray> readHead(const QString& path, int most, QString& error) {
    const RegularFile file(path, error);
    return file.size() ? file.read(most, most, error) : std::nullopt;
}

} // namespace tintwell
