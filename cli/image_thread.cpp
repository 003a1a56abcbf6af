#include "cli/image_thread.h"

#include "cli/command.h"
#include "cli/report.h"

#include <QSemaphore>
#include <QThreadPool>

#include <cstdlib>
#include <exception>
#include <system_error>
#include <thread>

namespace cli {

namespace {

bool canStartThread() {
    try {
        std::thread([] {}).join();
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

/// Starts the pool's only thread, which runs as long as the program.
bool startThread() {
    constexpr int patience = 30'000; // in milliseconds
    if (!canStartThread()) {
        return false;
    }
    QThreadPool& pool = *QThreadPool::globalInstance();
    pool.setMaxThreadCount(1);
    pool.setExpiryTimeout(-1);
    QSemaphore running;
    pool.start([&running] { running.release(); });
    if (!running.tryAcquire(1, patience)) {
        // Another program has just used up the limit. The pool would otherwise wait for this thread
        // at exit.
        report(noImageThread());
        std::_Exit(Failed);
    }
    return true;
}

} // namespace

bool onImageThread(const std::function<void()>& work) {
    static const bool started = startThread();
    if (!started) {
        return false;
    }
    std::exception_ptr failure;
    QSemaphore done;
    QThreadPool::globalInstance()->start([&] {
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
        done.release();
    });
    done.acquire();
    if (failure) {
        std::rethrow_exception(failure);
    }
    return true;
}

QString noImageThread() {
    return QStringLiteral("cannot start the thread that images need");
}

} // namespace cli
