#pragma once

#include "cli/command.h"
#include "lut/read_lutfile.h"
#include "saving/save_file.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace cli {

/// How a file's channels and lattice run: where nothing is said, as its format has it.
struct Orders {
    std::optional<bool> rgb;         ///< the three numbers of a sample are R, G, B; else B, G, R
    std::optional<bool> blueFastest; ///< the last index of the lattice runs first; else red's
};

/// "bgr", "red-fastest", or one of each with a comma between them; none for anything else.
std::optional<Orders> ordersByName(const QString& text);

/// The code of a short name ("cube") or of a code number ("0"); none for what is neither.
std::optional<int> formatByName(const QString& name);

/// The help text of --from.
inline constexpr const char* fromHelp =
    "Format of the input, by short name or code (see tintwell-cli formats); else its extension and "
    "content tell.";

/// Whether --from, where it is given, names a format; false with wrong usage reported.
bool fromIsKnown(const CommandLine& line);

/// The file extensions of a format, the one of new files first.
QStringList extensionsOf(int formatCode);

/// The code of the format of a file to read: by its extension and, where that leaves a choice, by
/// its content. None, with the error reported, where neither tells.
std::optional<int> formatOfInput(const QString& path);

/// The same under --from: the format of the name, or as above when it is empty.
std::optional<int> formatOfInput(const QString& path, const QString& name);

/// The code of the format of a file to write: --to, or by extension. None, with an error in
/// \a problem, for a format that is unknown, ambiguous or not written. \a hint is the code of the
/// input's format, which decides between several; -1 for none.
std::optional<int> formatOfOutput(const QString& path, const QString& name, int hint,
                                  QString& problem);

/// Reads a table whole; false, with the error reported, where that fails or there is none. Cells
/// hold R, G, B and tables are [red][green][blue], if the orders tell the truth of the file.
bool readLut(const QString& path, int formatCode, const Orders& orders, Read_LUTFile& lut);

/// Where a result goes and whether an existing file may be replaced.
struct Target {
    QString path;
    bool overwrite = false; ///< --force
};

/// Saves a file whole or not at all, "-" and what else leads to it on standard output. False, with
/// the error reported, when the target exists and may not be replaced, and when writing fails.
bool saveFile(const Target& target, const tintwell::WriteContent& write);

/// Writes a table through saveFile().
bool saveLut(const Target& target, int formatCode, const Orders& orders, std::int64_t scale,
             Read_LUTFile& lut);

} // namespace cli
