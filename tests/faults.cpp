// Preloaded into a program under test: makes calls on certain files fail. Set by the environment:
//   FAULT=CALL       read, write, close, fsync, create, rename, or thread (to start one)
//   FAULT_PATH=TEXT  for files whose path contains TEXT
//   FAULT_AFTER=N    once N bytes have been read or written
//   FAULT_ERRNO=N    the errno of the failure, or
//   FAULT_SIGNAL=N   a signal sent before the call, which then succeeds
//   FAULT_NO_TMPFILE files without a name cannot be created either

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

namespace {

const char* setting(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string pathOf(int file) {
    char path[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t length = readlink(link.c_str(), path, sizeof(path));
    return {path, length > 0 ? static_cast<std::size_t>(length) : 0};
}

bool isMeant(const char* call, const std::string& path) {
    return std::strcmp(call, setting("FAULT")) == 0 &&
           path.find(setting("FAULT_PATH")) != std::string::npos;
}

/// Sends the signal; else sets errno and returns true.
bool fails() {
    if (const int signal = std::atoi(setting("FAULT_SIGNAL")); signal != 0) {
        raise(signal);
        return false;
    }
    errno = std::atoi(setting("FAULT_ERRNO"));
    return true;
}

bool fails(const char* call, const std::string& path) {
    return isMeant(call, path) && fails();
}

template <typename Function>
Function real(const char* name, Function /*same type*/) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/// Passes on what may succeed, which can be part of a call.
template <typename Call>
ssize_t transfer(const char* name, int file, std::size_t size, Call&& call) {
    static std::atomic<long> left = std::atol(setting("FAULT_AFTER"));
    const int before = errno;
    if (!isMeant(name, pathOf(file))) {
        errno = before;
        return call(size);
    }
    if (left <= 0 && fails()) {
        return -1;
    }
    const std::size_t most = left > 0 ? static_cast<std::size_t>(left) : size;
    const ssize_t count = call(size < most ? size : most);
    left -= count;
    return count;
}

int openAs(const char* name, const char* path, int flags, mode_t mode) {
    const bool unnamed = (flags & O_TMPFILE) == O_TMPFILE;
    if (unnamed && *setting("FAULT_NO_TMPFILE") != '\0') {
        errno = EOPNOTSUPP;
        return -1;
    }
    return (unnamed || (flags & O_CREAT) != 0) && fails("create", path)
               ? -1
               : real(name, open)(path, flags, mode);
}

mode_t modeOf(va_list arguments, int flags) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

extern "C" {

ssize_t read(int file, void* data, std::size_t size) {
    return transfer("read", file, size,
                    [&](std::size_t most) { return real("read", read)(file, data, most); });
}

ssize_t write(int file, const void* data, std::size_t size) {
    return transfer("write", file, size,
                    [&](std::size_t most) { return real("write", write)(file, data, most); });
}

int close(int file) {
    const bool failed = fails("close", pathOf(file));
    const int reason = errno;
    const int closed = real("close", close)(file);
    errno = failed ? reason : errno;
    return failed ? -1 : closed;
}

int fsync(int file) {
    return fails("fsync", pathOf(file)) ? -1 : real("fsync", fsync)(file);
}

int rename(const char* from, const char* to) {
    return fails("rename", to) ? -1 : real("rename", rename)(from, to);
}

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(arguments, flags);
    va_end(arguments);
    return openAs("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(arguments, flags);
    va_end(arguments);
    return openAs("open64", path, flags, mode);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
                   void* argument) {
    return fails("thread", "")
               ? EAGAIN
               : real("pthread_create", pthread_create)(thread, attributes, run, argument);
}
}
