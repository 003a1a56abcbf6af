#pragma once

#include "saving/new_file.h"

#include <QString>

#include <functional>
#include <optional>

namespace tintwell {

/// Writes the content of a file to \a path, a stand-in that has another name, without an extension.
/// Returns what went wrong; empty on success.
using WriteContent = std::function<QString(const QString& path)>;

/// Why a file was not saved.
struct SaveError {
    enum Kind {
        Exists,     ///< the file exists and was to be kept
        Unsuitable, ///< the target is not a file
        NotWritten,
    };
    Kind kind;
    QString reason;
};

/// Why saveFile() would not even begin; none if the path is free or has a file that may be
/// replaced.
std::optional<SaveError> obstacleTo(const QString& path, IfExists ifExists);

/// Saves a file so that at any time it holds either the old content or the whole new one; returns
/// why if that fails. A link is kept, and the file it leads to is replaced. Owner, group and
/// permissions are kept as far as the user may set them.
///
/// If no new file can be created beside it or moved to its place, the file is written in place,
/// once the whole content is known. Devices are always written that way.
std::optional<SaveError> saveFile(const QString& path, IfExists ifExists,
                                  const WriteContent& write);

/// Removes what killed programs left when saving to \a path or beside it, but not what a running
/// one is still writing. Returns how many files there were.
int removeLeftOversBeside(const QString& path);

/// Writes the whole content to a descriptor, which stays open; nothing if \a write fails.
std::optional<SaveError> writeTo(int descriptor, const WriteContent& write);

} // namespace tintwell
