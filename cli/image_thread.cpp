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

/// Starts another thread of the pool, which runs as long as the program and begins with \a work.
bool startThread(int count, const std::function<void()>& work) {
    constexpr int patience = 30'000; // in milliseconds
    if (!canStartThread()) {
        return false;
    }
    QThreadPool& pool = *QThreadPool::globalInstance();
    pool.setMaxThreadCount(count);
    pool.setExpiryTimeout(-1);
    QSemaphore running;
    pool.start([&running, work] {
        running.release();
        work();
    });
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
    static const bool started = startThread(1, [] {});
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

bool onImageThreads(int most, const std::function<void()>& work) {
    QSemaphore done;
    const auto workToEnd = [&] {
        work();
        done.release();
    };
    if (!onImageThread([] {})) {
        return false;
    }
    QThreadPool::globalInstance()->start(workToEnd);
    int count = 1;
    while (count < most && startThread(count + 1, workToEnd)) {
        ++count;
    }
    done.acquire(count);
    return true;
}

QString noImageThread() {
    return QStringLiteral("cannot start the thread that images need");
}

} // namespace cli
