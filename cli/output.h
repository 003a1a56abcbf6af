#pragma once

#include "cli/command.h"
#include "cli/orders.h"
#include "cli/report.h"
#include "lut/catalogue.h"
#include "lut/read_lutfile.h"

#include <QString>

#include <array>
#include <optional>

namespace cli {

/// How a table is to be written, from the options shared by convert, merge and identity.
struct Output {
    const tintwell::Format* format = nullptr; ///< --to; null: found from the extension
    std::optional<int> size;                  ///< --size
    std::optional<int> scale;                 ///< --scale
    Orders orders;                            ///< --out-order
    bool overwrite = false;                   ///< --force
    bool verify = false;                      ///< --verify
};

inline constexpr Option forceOption = {"force", nullptr,
                                       "Replace existing files. The input may be one of them."};

/// The options for output.
inline constexpr std::array outputOptionList = {
    Option{"to", "FORMAT",
           "Format of the output, by short name or code (see tintwell-cli formats); by "
           "default, found from the extension. Standard output (-) needs it.",
           Completion::WrittenFormats},
    Option{"size", "N",
           "Points per axis (3D, 2 to 256) or entries (1D, 2 to 1048576). By default, those of the "
           "input (the largest of several), or 33 (3D) and 1024 (1D) if the input is of the other "
           "kind."},
    Option{"out-order", "ORDER",
           "Orders of the output, in the words of --in-order: rgb or bgr, "
           "red-fastest or blue-fastest, or one of each, separated by a comma.",
           Completion::Orders},
    Option{"scale", "N",
           "Write integers, value x N, where the format has them. csv, which holds only integers, "
           "needs a power of two less one; 65535 by default."},
    Option{"verify", nullptr,
           "Read the result again before it takes its place, and tell how far it is off; more than "
           "the format's precision is a failure."},
    forceOption};

/// None, with wrong usage reported, if an option's value is not valid.
std::optional<Output> outputOptions(const CommandLine& line);

/// The format for an output file, where \a from is that of its input, if any. Null, with wrong
/// usage reported, if there is none or it cannot do what the options ask for.
const tintwell::Format* targetFormat(const CommandLine& line, const Output& output,
                                     const QString& path, const tintwell::Format* from = nullptr);

/// Writes the table in the kind, size, orders and scale given by the format and the options, and
/// notes what is lost; notes on the shape are about the file \a source. False, with the error
/// reported, if that fails or the notes do not allow it.
bool writeTable(const Output& output, const tintwell::Format& format, const QString& source,
                const QString& path, Read_LUTFile& lut, Notes& notes);

} // namespace cli
