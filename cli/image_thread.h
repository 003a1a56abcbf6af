#pragma once

#include <QString>

#include <functional>

namespace cli {

/// Runs work on images in a thread of Qt's pool, because there Qt's image code uses no other
/// thread. In any other thread it splits large images among the threads of the pool, and waits
/// forever for one that cannot be started. False, with nothing done, if no thread can be started.
bool onImageThread(const std::function<void()>& work);

/// Runs \a work, which must not throw, in up to \a most such threads at a time, once in each, and
/// returns when all have ended. False, with nothing done, if not even one can be started.
bool onImageThreads(int most, const std::function<void()>& work);

/// The error message for that failure.
QString noImageThread();

} // namespace cli
