#pragma once

#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <QString>

#include <string_view>

namespace tintwell {

/// A format that consists of one size line and the samples of a lattice as real numbers.
struct SizedLattice {
    std::string_view preamble; ///< written before the size line
    std::string_view keyword;  ///< at the start of the size line
    const char* sizeLine;      ///< its name in messages
    FormatCode code;
};

/// Reads such a file. The first line that begins with the keyword ends the header, whatever comes
/// before it.
bool readSizedLattice(const SizedLattice& format, const QString& path, bool probe,
                      Read_LUTFile& lut);

/// Writes such a file. These formats have no integers: a scale of 2 or more is set to 1, also in
/// the writer.
bool writeSizedLattice(const SizedLattice& format, const QString& path, const Read_LUTFile& lut,
                       Write_LUTFile& writer);

} // namespace tintwell
