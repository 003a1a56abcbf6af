#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace tintwell {

/// The largest file that is read, in bytes.
inline constexpr std::int64_t MaxFileSize = std::int64_t{1} << 29;

/// The content of a regular file, whole. None, with the reason in \a error, for a file that is not
/// regular, of more than MaxFileSize bytes, or that cannot be read to its end. Never waits for
/// another program. Files that claim to be empty, such as those of /proc, are read all the same.
std::optional<QByteArray> readBounded(const QString& path, QString& error);

/// At most \a most bytes from the front of such a file.
std::optional<QByteArray> readHead(const QString& path, int most, QString& error);

} // namespace tintwell
