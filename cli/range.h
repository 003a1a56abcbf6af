#pragma once

#include "lut/catalogue.h"
#include "lut/read_lutfile.h"

#include <QString>

#include <array>

namespace cli {

/// One number a channel: R, G, B.
using Channels = std::array<float, 3>;

QString text(float value);
/// "0.5", or all three where they differ.
QString text(const Channels& values);

/// The range that a file states or its numbers imply; the table read from it is normalised.
struct StatedRange {
    Channels min = {0, 0, 0};
    Channels max = {1, 1, 1};

    bool isUnit() const { return min == Channels{0, 0, 0} && max == Channels{1, 1, 1}; }
};

/// That of the table of a kind.
StatedRange rangeOf(const Read_LUTFile& lut, tintwell::TableKind kind);

/// "0 to 1"
QString text(const StatedRange& range);

/// What the range is called: "domain", "range" or "scale". Null where there is none to tell of.
const char* nameOf(const StatedRange& range, const tintwell::Format& format);

/// What may surprise in a range; empty: nothing.
QString remarkOn(const StatedRange& range, const tintwell::Format& format);

/// Notes what may surprise in the range of a file that is worked on.
void noteRange(const QString& path, int formatCode, const Read_LUTFile& lut);

} // namespace cli
