#pragma once

#include <QString>

#include <array>
#include <cstdint>

namespace tintwell {

// Numbers in messages.

/// "1 entry" or "3 entries".
QString counted(std::int64_t count, const char* one, const char* several);
/// "1 sample" or "3 samples": a noun with a regular plural.
QString counted(std::int64_t count, const char* noun);

/// With up to six significant digits.
QString formatted(float value);
/// One number for three channels, or all three where they differ.
QString formatted(const std::array<float, 3>& values);
/// "0 to 1"
QString formatted(const std::array<float, 3>& from, const std::array<float, 3>& to);

} // namespace tintwell
