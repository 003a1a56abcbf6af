#pragma once

#include "saving/new_file.h"

#include <QString>

#include <functional>
#include <optional>

namespace tintwell {

/// Writes what a file is to hold to \a path, which stands for the file and has another name,
/// without an extension. Returns what went wrong; empty: nothing.
using WriteContent = std::function<QString(const QString& path)>;

/// Why a file was not saved.
struct SaveError {
    enum Kind {
        Exists,     ///< the file is there already, and was to be kept
        Unsuitable, ///< what is there is not a file
        NotWritten,
    };
    Kind kind;
    QString reason;
};

/// Saves a file so that it holds the old content or the whole new one at any time, and tells why
/// where that fails. A link stays, and what it leads to is replaced. Owner, group and permissions
/// stay, as far as the user may give them.
///
/// Where no new file can be made beside it or put in its place, a file is written in place, once
/// the whole content is known; so are devices.
std::optional<SaveError> saveFile(const QString& path, IfExists ifExists,
                                  const WriteContent& write);

/// Removes what killed programs left when they saved to \a path or beside it, but not what a
/// running one is still writing. Returns how many files these were.
int removeLeftOversBeside(const QString& path);

/// Writes the whole content, or nothing where \a write fails, to a descriptor, which stays open.
std::optional<SaveError> writeTo(int descriptor, const WriteContent& write);

} // namespace tintwell
