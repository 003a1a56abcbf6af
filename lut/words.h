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

/// A message about a file: "FILE: KINDwhat", or "FILE:LINE: KINDwhat" if \a what begins with a line
/// number, as errors and remarks of readers may.
QString inFile(const QString& path, const QString& what, const QString& kind = QString());

/// With up to six significant digits.
QString formatted(float value);
/// One number for three channels, or all three where they differ.
QString formatted(const std::array<float, 3>& values);
/// "0 to 1"
QString formatted(const std::array<float, 3>& from, const std::array<float, 3>& to);

} // namespace tintwell
