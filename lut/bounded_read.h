#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace tintwell {

/// The largest file that is read, in bytes.
inline constexpr std::int64_t MaxFileSize = std::int64_t{1} << 29;

/// The whole content of a regular file. None, with the reason in \a error, if the file is not
/// regular, has more than MaxFileSize bytes or cannot be read to its end. Never waits for another
/// program. Files that report a size of 0, such as those in /proc, are read all the same.
std::optional<QByteArray> readBounded(const QString& path, QString& error);

/// Up to \a most bytes from the front of such a file.
std::optional<QByteArray> readHead(const QString& path, int most, QString& error);

} // namespace tintwell
