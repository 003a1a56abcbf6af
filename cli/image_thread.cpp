#include "cli/image_thread.h"

#include "cli/command.h"
#include "cli/report.h"

#include <QSemaphore>
#include <QThreadPool>

#include <atomic>
#include <cstdlib>
#include <exception>
#include <memory>
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

/// What a new thread shares with the one that waits for it.
struct Beginning {
    QSemaphore running;
    std::atomic<bool> isDecided = false; ///< set by the first of the two, which thus has its way
    bool isGivenUp = false;
};

/// Starts another thread of the pool, which runs as long as the program and begins with \a work.
/// False if it cannot be started; it does no work then, even if it begins later.
bool startThread(int count, const std::function<void()>& work,
                 const std::shared_ptr<Beginning>& beginning) {
    constexpr int patience = 30'000; // in milliseconds
    if (!canStartThread()) {
        return false;
    }
    QThreadPool& pool = *QThreadPool::globalInstance();
    pool.setMaxThreadCount(count);
    pool.setExpiryTimeout(-1);
    pool.start([beginning, work] {
        const bool isWanted = !beginning->isDecided.exchange(true);
        beginning->running.release();
        if (isWanted) {
            work();
        }
    });
    beginning->isGivenUp =
        !beginning->running.tryAcquire(1, patience) && !beginning->isDecided.exchange(true);
    return !beginning->isGivenUp;
}

/// Ends the program if a thread that was given up has not begun by now: another program has just
/// used up the limit. The pool would otherwise wait for this thread at exit.
void endIfLost(Beginning& beginning) {
    if (beginning.isGivenUp && !beginning.running.tryAcquire()) {
        report(noImageThread());
        std::_Exit(Failed);
    }
}

bool startFirstThread() {
    const auto beginning = std::make_shared<Beginning>();
    const bool started = startThread(
        1, [] {}, beginning);
    endIfLost(*beginning);
    return started;
}

} // namespace

bool onImageThread(const std::function<void()>& work) {
    static const bool started = startFirstThread();
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
    auto beginning = std::make_shared<Beginning>();
    while (count < most && startThread(count + 1, workToEnd, beginning)) {
        beginning = std::make_shared<Beginning>();
        ++count;
    }
    done.acquire(count);
    endIfLost(*beginning);
    return true;
}

QString noImageThread() {
    return QStringLiteral("cannot start the thread that images need");
}

} // namespace cli
