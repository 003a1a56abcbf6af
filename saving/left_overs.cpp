#include "saving/left_overs.h"

#include "saving/descriptors.h"

#include <QFile>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <pthread.h>
#include <sched.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tintwell {

namespace {

constexpr std::string_view prefix = ".tintwell-";

/// ".tintwell-PID-N"
bool isTemporaryName(std::string_view name) {
    return name.size() > prefix.size() && name.substr(0, prefix.size()) == prefix &&
           name.find_first_not_of("0123456789-", prefix.size()) == std::string_view::npos;
}

// Static, because a signal handler can reach nothing else. A name belongs to whoever removes it
// from its place, a thread or the handler.
using NamePlace = std::atomic<char*>;
static_assert(NamePlace::is_always_lock_free);
std::array<NamePlace, 512> namesInUse;

/// The place where the name is stored; -1 if all are occupied.
int enter(const QByteArray& name) {
    char* const copy = strdup(name.constData());
    for (std::size_t place = 0; copy != nullptr && place < namesInUse.size(); ++place) {
        char* expected = nullptr;
        if (namesInUse[place].compare_exchange_strong(expected, copy)) {
            return static_cast<int>(place);
        }
    }
    std::free(copy);
    return -1;
}

void leave(int place) {
    if (place >= 0) {
        std::free(namesInUse[static_cast<std::size_t>(place)].exchange(nullptr));
    }
}

// No name may be made that the handler does not see: neither one that is not yet in its place, nor
// one that another thread makes after the handler has looked.
std::atomic<int> namesBeingMade = 0;
std::atomic<bool> isEnding = false;

/// While a file gets its name and the name its place.
class NameMaking {
public:
    NameMaking() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
        ++namesBeingMade;
        if (isEnding) {
            --namesBeingMade;
            waitForTheEnd();
        }
    }
    ~NameMaking() {
        --namesBeingMade;
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }
    NameMaking(const NameMaking&) = delete;
    NameMaking& operator=(const NameMaking&) = delete;

private:
    [[noreturn]] static void waitForTheEnd() {
        for (;;) {
            pause();
        }
    }

    sigset_t m_before = {};
};

extern "C" void removeFilesAndEnd(int signal) {
    isEnding = true;
    while (namesBeingMade > 0) {
        sched_yield();
    }
    for (NamePlace& place : namesInUse) {
        if (const char* const name = place.exchange(nullptr)) {
            unlink(name); // freeing the name is not safe in a handler
        }
    }
    raise(signal); // the default action follows when the handler returns
}

/// Locks a file against other processes while it is open. The locked byte is far beyond any
/// content: on some network drives, locked bytes cannot be written through another descriptor.
bool lock(int file) {
    struct flock range {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    range.l_start = std::numeric_limits<off_t>::max() / 2;
    range.l_len = 1;
    return fcntl(file, F_OFD_SETLK, &range) == 0;
}

bool isSameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool removeIfAbandoned(int folder, const char* name) {
    struct stat entry {};
    if (fstatat(folder, name, &entry, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(entry.st_mode)) {
        return false;
    }
    const Descriptor file(openat(folder, name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat opened {};
    if (!file.isOpen() || fstat(file.number(), &opened) != 0 || !lock(file.number())) {
        return false;
    }
    // The file may have been renamed since, and the name may belong to the next file.
    return fstatat(folder, name, &entry, AT_SYMLINK_NOFOLLOW) == 0 && isSameFile(entry, opened) &&
           unlinkat(folder, name, 0) == 0;
}

} // namespace

TemporaryName::~TemporaryName() {
    if (isChosen()) {
        unlink(m_name.constData());
        giveUp();
    }
}

bool TemporaryName::choose(const QByteArray& folder,
                           const std::function<bool(const char* name)>& make) {
    const QByteArray begin =
        folder + '/' + prefix.data() + QByteArray::number(qlonglong{getpid()}) + '-';
    const NameMaking making;
    bool made = false;
    for (int n = 0; !made && (n == 0 || errno == EEXIST); ++n) {
        m_name = begin + QByteArray::number(n);
        made = make(m_name.constData());
    }
    if (made) {
        m_slot = enter(m_name);
    } else {
        m_name.clear();
    }
    return made;
}

void TemporaryName::giveUp() {
    leave(m_slot);
    m_slot = -1;
    m_name.clear();
}

bool claim(int file) {
    return lock(file) || (errno != EAGAIN && errno != EACCES);
}

int removeLeftOvers(const QString& folder) {
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(QFile::encodeName(folder)), closedir);
    int removed = 0;
    if (entries == nullptr) {
        return removed;
    }
    while (const dirent* const entry = readdir(entries.get())) {
        if (isTemporaryName(entry->d_name) &&
            removeIfAbandoned(dirfd(entries.get()), entry->d_name)) {
            ++removed;
        }
    }
    return removed;
}

void removeTemporaryFilesOnSignals() {
    struct sigaction action {};
    action.sa_handler = removeFilesAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigfillset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
}

} // namespace tintwell
