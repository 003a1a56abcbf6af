#pragma once

#include "cli/report.h"
#include "saving/save_file.h"

#include <QString>

#include <ctime>
#include <optional>
#include <utility>

#include <sys/types.h>

namespace cli {

/// Where a result is saved and whether an existing file may be replaced.
struct Target {
    QString path;
    bool overwrite = false; ///< --force
};

/// Whether the path is a name of standard output: "-" or "/dev/stdout".
bool isStandardOutput(const QString& path);

/// Whether the path is such a name, or that of a file that the shell has opened as standard output:
/// it is the shell's to replace.
bool leadsToStandardOutput(const QString& path);

/// When a regular file was last modified; none if there is none.
std::optional<timespec> timeOf(const QString& path);

/// The same for a target, of which there is none if it leads to standard output.
std::optional<timespec> timeOfTarget(const QString& path);

/// Which file it is, whatever its names.
using FileId = std::pair<dev_t, ino_t>;

/// None if there is no such file.
std::optional<FileId> idOf(const QString& path);

/// Why a target cannot be saved; empty if nothing speaks against it.
QString obstacleTo(const Target& target);

/// Saves a file completely or not at all; "-" and other names of standard output write there.
/// False, with the error in \a notes, if the target exists and may not be replaced, or if writing
/// fails.
bool saveFile(const Target& target, const tintwell::WriteContent& write, Notes& notes);

} // namespace cli
