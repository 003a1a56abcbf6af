#pragma once

#include <cstdint>
#include <limits>

namespace tintwell {

/// Truncates toward zero. Values outside the range of a 64-bit integer (and NaN) give the smallest
/// one.
inline std::int64_t truncated(float value) {
    constexpr float tooLarge = 9223372036854775808.0F;
    if (!(value >= -tooLarge && value < tooLarge)) {
        return std::numeric_limits<std::int64_t>::min();
    }
    return static_cast<std::int64_t>(value);
}

/// value x scale in single precision, truncated.
inline std::int64_t scaledInteger(float value, std::int64_t scale) {
    return truncated(value * static_cast<float>(scale));
}

} // namespace tintwell
