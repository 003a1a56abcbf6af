#pragma once

#include "cli/command.h"
#include "cli/files.h"
#include "lut/read_lutfile.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace cli {

/// How a table is to be written, from the options that convert, merge and identity share.
struct Output {
    QString formatName;      ///< --to
    std::optional<int> size; ///< --size
    Orders orders;           ///< --out-order
    std::int64_t scale = 0;  ///< --scale; 0: not given
    bool overwrite = false;  ///< --force
};

void addOutputOptions(CommandLine& line);

/// None, with wrong usage reported, for options that mean nothing.
std::optional<Output> outputOptions(const CommandLine& line);

/// The orders that an option names; none, with wrong usage reported, for other words.
std::optional<Orders> ordersOption(const CommandLine& line, const char* option);

/// The code of the format that a file is to be written in, of which \a from is that of its input.
/// None, with wrong usage reported, where there is none, or none that can have what was asked for.
std::optional<int> targetFormat(const CommandLine& line, const Output& output, const QString& path,
                                std::optional<int> from = std::nullopt);

/// Writes the table in the kind, size, orders and scale that the format and the options ask for.
/// \a source is the file that notes are about. False, with the error reported, when that fails.
bool writeTable(const Output& output, int formatCode, const QString& source, const QString& path,
                Read_LUTFile& lut);

} // namespace cli
