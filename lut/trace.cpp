#include "lut/trace.h"

Q_LOGGING_CATEGORY(formatTrace, "tintwell.formats", QtDebugMsg)
