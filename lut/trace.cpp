#include "lut/trace.h"

Q_LOGGING_CATEGORY(formatTrace, "tintwell.formats", QtDebugMsg)

void tintwell::traceLine(const char* kind, std::string_view line) {
    qCDebug(formatTrace) << kind << QString::fromUtf8(line.data(), static_cast<int>(line.size()));
}
