#pragma once

#include <QLoggingCategory>

/// The trace lines of readers and dispatchers; on unless a logging rule turns it off.
Q_DECLARE_LOGGING_CATEGORY(formatTrace)
