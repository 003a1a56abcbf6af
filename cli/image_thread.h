#pragma once

#include <QString>

#include <functional>

namespace cli {

/// Runs work on images in a thread of Qt's pool, because there Qt's image code uses no other
/// thread. In any other thread it splits large images among the threads of the pool, and waits
/// forever for one that cannot be started. False, with nothing done, if no thread can be started.
bool onImageThread(const std::function<void()>& work);

/// The error message for that failure.
QString noImageThread();

} // namespace cli
