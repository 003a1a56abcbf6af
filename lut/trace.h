#pragma once

#include <QLoggingCategory>

#include <string_view>

/// The trace lines of readers and dispatchers; on unless a logging rule turns it off.
Q_DECLARE_LOGGING_CATEGORY(formatTrace)

namespace tintwell {

/// Puts a line of a file into the trace, behind what it was taken for.
void traceLine(const char* kind, std::string_view line);

} // namespace tintwell
