#pragma once

#include <QString>

#include <functional>

namespace cli {

/// Does work on images on a thread of the toolkit's pool, where the toolkit's image code runs in
/// that thread alone. In any other thread it splits large images among the threads of the pool, and
/// waits forever for one that cannot start. False, with nothing done, if no thread can be started.
bool onImageThread(const std::function<void()>& work);

/// The message for that.
QString noImageThread();

} // namespace cli
