#pragma once

#include "formats/text/scan.h"

#include <string_view>

namespace tintwell {

/// The three numbers of a sample line. A line with fewer keeps the rest from the line before; one
/// with none is not a sample.
template <typename Number>
struct Triple {
    Number r = 0;
    Number g = 0;
    Number b = 0;

    /// Returns how many numbers the line begins with.
    int scan(std::string_view line) { return tintwell::scan(line, r, g, b); }
};

/// The scanner for a sample line of three numbers, which is all that most formats need.
inline constexpr auto scanNumbers = [](std::string_view line, auto& sample) {
    return sample.scan(line);
};

} // namespace tintwell
