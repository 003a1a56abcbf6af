#pragma once

#include <QLoggingCategory>

#include <string_view>

/// The trace lines of readers and dispatchers; on unless a logging rule turns them off.
Q_DECLARE_LOGGING_CATEGORY(formatTrace)

namespace tintwell {

/// Traces a line of a file, preceded by the \a kind it was recognised as.
void traceLine(const char* kind, std::string_view line);

} // namespace tintwell
