#pragma once

#include "saving/save_file.h"

#include <QString>

namespace cli {

/// Where a result is saved and whether an existing file may be replaced.
struct Target {
    QString path;
    bool overwrite = false; ///< --force
};

/// Whether the path is a name of standard output: "-" or "/dev/stdout".
bool isStandardOutput(const QString& path);

/// Saves a file completely or not at all; "-" and other names of standard output write there.
/// False, with the error reported, if the target exists and may not be replaced, or if writing
/// fails.
bool saveFile(const Target& target, const tintwell::WriteContent& write);

} // namespace cli
