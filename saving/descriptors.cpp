#include "saving/descriptors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <limits>

#include <fcntl.h>
#include <unistd.h>

namespace tintwell {

namespace {

bool writeAll(int to, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t count = write(to, data, size);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        const auto written = static_cast<std::size_t>(count < 0 ? 0 : count);
        data += written;
        size -= written;
    }
    return true;
}

} // namespace

bool openMissingStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const int mode = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        // open() returns the lowest free number, which is the missing one.
        if (fcntl(descriptor, F_GETFD) == -1 && open("/dev/null", mode) != descriptor) {
            return false;
        }
    }
    return true;
}

QString systemError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

Descriptor::~Descriptor() {
    if (isOpen()) {
        const int reason = errno; // of the failure that the caller handles
        close(m_number);
        errno = reason;
    }
}

bool copyRest(int from, int to) {
    return copyUpTo(from, to, std::numeric_limits<std::int64_t>::max());
}

bool copyUpTo(int from, int to, std::int64_t most) {
    std::array<char, 1 << 16> block;
    while (most > 0) {
        const auto room = std::min(most, static_cast<std::int64_t>(block.size()));
        const ssize_t count = read(from, block.data(), static_cast<std::size_t>(room));
        if (count == 0) {
            return true;
        }
        if (count < 0 ? errno != EINTR
                      : !writeAll(to, block.data(), static_cast<std::size_t>(count))) {
            return false;
        }
        most -= std::max<std::int64_t>(count, 0);
    }
    return true;
}

bool isDelivered(int descriptor) {
    const int copy = dup(descriptor);
    return copy >= 0 && close(copy) == 0;
}

bool isOnDisk(int descriptor) {
    // EINVAL: a terminal, for example, which has no disk.
    return isDelivered(descriptor) && (fsync(descriptor) == 0 || errno == EINVAL);
}

} // namespace tintwell
