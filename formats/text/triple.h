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

/// What a line turns out to be where samples are due.
enum class SampleLine {
    Whole,     ///< a sample with all its numbers
    Partial,   ///< a sample with some of them
    None,      ///< no sample, nor anything else that the format knows
    PassedOver ///< a keyword, or a line that the format skips
};

/// A line that begins with \a found of the \a numbers of a sample.
constexpr SampleLine sampleLine(int found, int numbers) {
    return found == numbers ? SampleLine::Whole
           : found > 0      ? SampleLine::Partial
                            : SampleLine::None;
}

/// The scanner for a sample line of three numbers, which is all that most formats need.
inline constexpr auto scanNumbers = [](std::string_view line, auto& sample) {
    return sampleLine(sample.scan(line), 3);
};

} // namespace tintwell
