// Preloaded into a program under test: makes calls on certain files fail. Set by the environment as
// FAULT="CALL TEXT AFTER ERRNO SIGNAL":
//   CALL    read, write, close, fsync, fchown, create, tmpfile (to create a file without a name),
//           rename, or thread (to start one)
//   TEXT    for files whose path contains TEXT
//   AFTER   once this many bytes have been read or written
//   ERRNO   of the failure, if SIGNAL is 0; else that signal is sent before the call, which
//   succeeds

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

namespace {

struct Fault {
    char call[16];
    char path[256];
    long after;
    int error, signal;
};

const Fault& fault() {
    static const Fault set = [] {
        Fault read = {};
        const char* const text = std::getenv("FAULT");
        std::sscanf(text != nullptr ? text : "", "%15s %255s %ld %d %d", read.call, read.path,
                    &read.after, &read.error, &read.signal);
        return read;
    }();
    return set;
}

std::string pathOf(int file) {
    char path[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t length = readlink(link.c_str(), path, sizeof(path));
    return {path, length > 0 ? static_cast<std::size_t>(length) : 0};
}

bool isMeant(const char* call, const std::string& path) {
    return std::strcmp(call, fault().call) == 0 && path.find(fault().path) != std::string::npos;
}

/// For the call that is meant: sends the signal, or else sets errno and returns true.
bool fails(const char* call, const std::string& path) {
    if (!isMeant(call, path)) {
        return false;
    }
    if (fault().signal != 0) {
        raise(fault().signal);
        return false;
    }
    errno = fault().error;
    return true;
}

template <typename Function>
Function real(const char* name, Function /*same type*/) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/// Passes on what may succeed, which can be part of a call.
template <typename Function, typename Data>
ssize_t transfer(const char* name, Function same, int file, Data data, std::size_t size) {
    static std::atomic<long> left = fault().after;
    const std::string path = pathOf(file);
    if (!isMeant(name, path)) {
        return real(name, same)(file, data, size);
    }
    if (left <= 0 && fails(name, path)) {
        return -1;
    }
    const std::size_t most = left > 0 ? static_cast<std::size_t>(left) : size;
    const ssize_t count = real(name, same)(file, data, size < most ? size : most);
    left -= count;
    return count;
}

} // namespace

extern "C" {

ssize_t read(int file, void* data, std::size_t size) {
    return transfer("read", read, file, data, size);
}

ssize_t write(int file, const void* data, std::size_t size) {
    return transfer("write", write, file, data, size);
}

int close(int file) {
    const std::string path = pathOf(file);
    const int closed = real("close", close)(file);
    return fails("close", path) ? -1 : closed;
}

int fsync(int file) {
    return fails("fsync", pathOf(file)) ? -1 : real("fsync", fsync)(file);
}

int fchown(int file, uid_t owner, gid_t group) {
    return fails("fchown", pathOf(file)) ? -1 : real("fchown", fchown)(file, owner, group);
}

int rename(const char* from, const char* to) {
    return fails("rename", to) ? -1 : real("rename", rename)(from, to);
}

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const bool unnamed = (flags & O_TMPFILE) == O_TMPFILE;
    const bool creates = unnamed || (flags & O_CREAT) != 0;
    const mode_t mode = creates ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    const bool failed = (unnamed && fails("tmpfile", path)) || (creates && fails("create", path));
    return failed ? -1 : real("open", open)(path, flags, mode);
}

int open64(const char* path, int flags, ...) __attribute__((alias("open")));

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
                   void* argument) {
    return fails("thread", "/")
               ? EAGAIN
               : real("pthread_create", pthread_create)(thread, attributes, run, argument);
}
}
